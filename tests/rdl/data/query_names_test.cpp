// SPDX-License-Identifier: GPL-3.0-or-later
// The parameters that a query asks for.
#include "rdl/data/sql/query_names.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "rdl/api/query_rows.h"

namespace rdl::data {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr ProviderKind Servers[] = {ProviderKind::Sqlite, ProviderKind::PostgreSql, ProviderKind::MySql,
                                    ProviderKind::SqlServer, ProviderKind::Odbc};

TEST(QueryNames, AreThoseWithAMarkEachOnce) {
    for (const ProviderKind server : Servers) {
        EXPECT_THAT(NamesInQuery("select * from t where y = @Year and m in (@M_1) or y > @YEAR", server),
                    ElementsAre("@Year", "@M_1"));
        EXPECT_THAT(NamesInQuery("select * from t where y = :Year", server), ElementsAre(":Year"));
        EXPECT_THAT(NamesInQuery("select 1", server), IsEmpty());
        EXPECT_THAT(NamesInQuery("", server), IsEmpty());
    }
    EXPECT_THAT(NamesInQuery("select $Year, $1", ProviderKind::Sqlite), ElementsAre("$Year"));
    EXPECT_THAT(NamesInQuery("select $Year", ProviderKind::SqlServer), IsEmpty());
}

TEST(QueryNames, AreNotInStringsNamesAndComments) {
    for (const ProviderKind server : Servers) {
        EXPECT_THAT(NamesInQuery("select '@a', 'it''s @b', \"@c\" -- @d\n /* @e */ , @f", server),
                    ElementsAre("@f"));
    }
    EXPECT_THAT(NamesInQuery("select [@a], @b", ProviderKind::SqlServer), ElementsAre("@b"));
    EXPECT_THAT(NamesInQuery("select `@a`, @b # @c", ProviderKind::MySql), ElementsAre("@b"));
    EXPECT_THAT(NamesInQuery("select $x$ @a $x$, @b", ProviderKind::PostgreSql), ElementsAre("@b"));
}

TEST(QueryNames, AreNoVariablesOperatorsCastsAndPlaces) {
    for (const ProviderKind server : Servers) {
        EXPECT_THAT(NamesInQuery("select @@version, a@b, x::text, 10:30", server), IsEmpty());
    }
    EXPECT_THAT(NamesInQuery("select a @> b, @ -5, c[1:2]", ProviderKind::PostgreSql), IsEmpty());
    EXPECT_THAT(NamesInQuery("select @row := @row + 1, @Year from t", ProviderKind::MySql),
                ElementsAre("@Year"));
    EXPECT_THAT(
        NamesInQuery("declare @a int = @Year, @t table (i int); insert into @t select @a; select * from "
                     "@t where m = @Month",
                     ProviderKind::SqlServer),
        ElementsAre("@Year", "@Month"));
    EXPECT_THAT(NamesInQuery("DECLARE @a int\nselect @b, @a", ProviderKind::SqlServer), ElementsAre("@b"));
}

TEST(QueryNames, WithoutOneAreTheMarks) {
    EXPECT_THAT(NamesInQuery("select * from t where a = ? and b = ? and c = '?'", ProviderKind::Odbc),
                ElementsAre("?", "?"));
    EXPECT_THAT(NamesInQuery("select ?, @a", ProviderKind::Sqlite), ElementsAre("@a"));
    EXPECT_THAT(NamesInQuery("select data ? 'key'", ProviderKind::PostgreSql), IsEmpty());
}

TEST(QueryNames, AreKnownForServersOnly) {
    EXPECT_THAT(ParametersOfQuery("SQLITE", "Data Source=a.db", "select @a"), ElementsAre("@a"));
    EXPECT_THAT(ParametersOfQuery("XML", "Data Source=a.xml", "Row{@a}"), IsEmpty());
    EXPECT_THAT(ParametersOfQuery("no such", "", "select @a"), IsEmpty());
}

}  // namespace
}  // namespace rdl::data
