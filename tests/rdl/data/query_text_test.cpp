// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/data/sql/query_text.h"

#include <gtest/gtest.h>

#include "rdl/values/error.h"

namespace rdl::data {
namespace {

const std::vector<NamedValue> Year{{"@Year", Value::Integer(2025)}};

std::string Text(const std::string& query, const std::vector<NamedValue>& values = Year,
                 ProviderKind provider = ProviderKind::Sqlite) {
    return BindParameters(query, values, provider).text;
}

TEST(QueryParameters, EveryMarkAndCaseIsTheSameParameter) {
    const BoundQuery query = BindParameters("a=@Year or b=:year or c=$YEAR", Year, ProviderKind::Sqlite);
    EXPECT_EQ(query.text, "a=? or b=? or c=?");
    ASSERT_EQ(query.binds.size(), 3u);
    EXPECT_EQ(query.binds[2].AsInteger(), 2025);
}

TEST(QueryParameters, TextsNamesAndCommentsAreLeftAlone) {
    for (const char* text : {"'@Year ''@Year'", "\"@Year\"", "[@Year]", "`@Year`"}) {
        EXPECT_EQ(Text(std::string(text) + "\n= @Year"), std::string(text) + "\n= ?");
    }
    EXPECT_EQ(Text("'it''s' = /* it's @Year */ @Year"), "'it''s' =   ?");
    EXPECT_EQ(Text("1 -- it's @Year\n= @Year"), "1  = ?");
    EXPECT_EQ(Text("/*+ hint */ @Year", Year, ProviderKind::MySql), "/*+ hint */ ?");
    EXPECT_EQ(Text("5--@Year", Year, ProviderKind::MySql), "5--?");
    EXPECT_EQ(Text("? -- @Year or ?"), "?  ");
}

TEST(QueryParameters, ParameterThatStandsTwiceHasOneMarkInPostgres) {
    const std::vector<NamedValue> two{{"@a", Value::Integer(1)},
                                      {"@b", Value::List({Value::Integer(2), Value::Integer(3)})}};
    const BoundQuery query =
        BindParameters("@a in (@b) or @A is null or 7 in (@b)", two, ProviderKind::PostgreSql);
    EXPECT_EQ(query.text, "$1 in ($2, $3) or $1 is null or 7 in ($2, $3)");
    EXPECT_EQ(query.binds.size(), 3u);
}

TEST(QueryParameters, MySqlCallTakesVariables) {
    const BoundQuery query = BindParameters("call p(@Year, @Other)", Year, ProviderKind::MySql);
    EXPECT_EQ(query.text, "call p(@oxc_1, @Other)");
    EXPECT_EQ(query.binds.size(), 1u);
    EXPECT_TRUE(IsCall(" CALL p()"));
    EXPECT_FALSE(IsCall("callers"));
    EXPECT_FALSE(IsCall("call"));
}

TEST(QueryParameters, LongerNamesAndOwnVariablesAreOthers) {
    EXPECT_EQ(Text("@Years, @Year, @@Year, x@Year"), "@Years, ?, @@Year, x@Year");
    EXPECT_EQ(Text("a::Year = :Year", Year, ProviderKind::PostgreSql), "a::Year = $1");
    EXPECT_EQ(Text("$q$ @Year $q$ @Year", Year, ProviderKind::PostgreSql), "$q$ @Year $q$ $1");
    EXPECT_EQ(Text("'it\\'s @Year' @Year", Year, ProviderKind::MySql), "'it\\'s @Year' ?");
}

TEST(QueryParameters, ListBecomesOneBindForEachValue) {
    const std::vector<NamedValue> list{{"@p", Value::List({Value::Integer(1), Value::Integer(2)})}};
    EXPECT_EQ(Text("x in (@p)", list), "x in (?, ?)");
    EXPECT_EQ(Text("x in @p", list), "x in (?, ?)");
    EXPECT_EQ(Text("x in (0, @p)", list), "x in (0, ?, ?)");
    EXPECT_EQ(Text("x in (@p)", {{"@p", Value::List({})}}), "x in (NULL)");
    EXPECT_EQ(BindParameters("x in (@p)", list, ProviderKind::Sqlite).binds.size(), 2u);
}

TEST(QueryParameters, MarksAreTakenInOrder) {
    const BoundQuery query =
        BindParameters("a = ? and b = '?' and c = ?", {{"?", Value::Integer(1)}, {"?", Value::Integer(2)}},
                       ProviderKind::Odbc);
    EXPECT_EQ(query.text, "a = ? and b = '?' and c = ?");
    ASSERT_EQ(query.binds.size(), 2u);
    EXPECT_EQ(query.binds[1].AsInteger(), 2);
    EXPECT_THROW(Text("a = ? and b = ?"), Error);
}

TEST(QueryParameters, ValueIsNeverPartOfTheText) {
    const BoundQuery query =
        BindParameters("x = @n", {{"@n", Value::Text("'; drop table t; --")}}, ProviderKind::Sqlite);
    EXPECT_EQ(query.text, "x = ?");
}

TEST(QueryParameters, SecondStatementIsSeen) {
    const auto one = [](std::string_view text) { return IsOneStatement(text, ProviderKind::PostgreSql); };
    EXPECT_TRUE(one("select ';' -- ; x"));
    EXPECT_TRUE(one("select 1; ; /* x */ -- y\n "));
    EXPECT_TRUE(one("select $a$ ; delete $a$"));
    EXPECT_FALSE(one("select 1; delete from t"));
    EXPECT_FALSE(one("select 1;'x'"));
    EXPECT_FALSE(one("select E'\\''; delete from t; --'"));
    EXPECT_TRUE(one("select E'it\\'s; '"));
}

TEST(StoredProcedures, AreCalledInTheServersOwnWay) {
    EXPECT_EQ(ProcedureCall("dbo.Sales", Year, ProviderKind::SqlServer).text, "EXEC dbo.Sales @Year = ?");
    EXPECT_EQ(ProcedureCall("sales", Year, ProviderKind::PostgreSql).text, "SELECT * FROM sales($1)");
    EXPECT_EQ(ProcedureCall("sales", Year, ProviderKind::MySql).text, "CALL sales(@oxc_1)");
    EXPECT_EQ(ProcedureCall("sales", Year, ProviderKind::Odbc).text, "{CALL sales(?)}");
    const std::vector<NamedValue> list{{"@p", Value::List({Value::Integer(1), Value::Integer(2)})}};
    EXPECT_EQ(ProcedureCall("sales", list, ProviderKind::SqlServer).binds.at(0).AsText(), "1,2");
    EXPECT_THROW(ProcedureCall("sales; drop table t", Year, ProviderKind::SqlServer), Error);
    EXPECT_THROW(ProcedureCall("sales", Year, ProviderKind::Sqlite), Error);
}

TEST(TableNames, AreQuoted) {
    EXPECT_EQ(TableQuery("order \"lines\"", ProviderKind::Sqlite), "SELECT * FROM \"order \"\"lines\"\"\"");
    EXPECT_EQ(TableQuery("dbo.Order", ProviderKind::SqlServer), "SELECT * FROM \"dbo\".\"Order\"");
    EXPECT_EQ(TableQuery("[my.db].[a]", ProviderKind::SqlServer), "SELECT * FROM \"my.db\".\"a\"");
    EXPECT_EQ(TableQuery("shop.titles", ProviderKind::MySql), "SELECT * FROM `shop`.`titles`");
    EXPECT_EQ(TableQuery("a.b", ProviderKind::Sqlite), "SELECT * FROM \"a.b\"");
}

}  // namespace
}  // namespace rdl::data
