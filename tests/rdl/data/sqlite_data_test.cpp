// SPDX-License-Identifier: GPL-3.0-or-later

#include <sqlite3.h>
#include <sys/resource.h>

#include <csignal>
#include <cstdlib>

#include "data_fixture.h"
#include "rdl/format/format.h"
#include "support/sanitizer.h"

namespace rdl::data {
namespace {

class SqliteData : public DataFixture {
 protected:
    void SetUp() override {
        Execute(
            "create table orders (id integer primary key, placed datetime, total decimal, paid boolean, "
            "customer text, picture blob);"
            "insert into orders values (1, '2024-02-29 13:05:00', 12.5, 1, 'Ann', x'00ff'),"
            "(2, '2025-01-31', 8, 0, 'O''Neill', null), (3, null, null, null, 'Zoë', null);");
        AddSource("SQLITE", "Data Source=sales.db");
    }
};

TEST_F(SqliteData, ValuesHaveTheirTypes) {
    AddSet("select * from orders order by id", {"id", "placed", "total", "paid", "customer", "picture"});
    const Table table = Load();
    ASSERT_EQ(table.RowCount(), 3u);
    EXPECT_EQ(table.At(0, 0).kind(), Kind::Integer);
    EXPECT_EQ(table.At(0, 1).AsTicks(), MakeTicks(2024, 2, 29, 13, 5, 0));
    EXPECT_EQ(table.At(1, 1).AsTicks(), MakeTicks(2025, 1, 31));
    EXPECT_EQ(ToText(table.At(0, 2), FindCulture("")), "12.5");
    EXPECT_EQ(table.At(0, 3).kind(), Kind::Boolean);
    EXPECT_TRUE(table.At(0, 3).AsBoolean());
    EXPECT_EQ(table.At(1, 4).AsText(), "O'Neill");
    EXPECT_EQ(table.At(0, 5).kind(), Kind::Bytes);
    EXPECT_EQ(table.At(0, 5).AsText(), std::string_view("\0\xff", 2));
    EXPECT_TRUE(table.At(2, 1).IsNull());
}

TEST_F(SqliteData, DeclaredFieldTypeReadsTexts) {
    AddSet("select '2024-05-06' as d, '12' as n, 8 as r, 1 as b",
           {"d:System.DateTime", "n:System.Int32", "r:System.Decimal", "b:System.Boolean"});
    const Table table = Load();
    EXPECT_EQ(table.At(0, 0).AsTicks(), MakeTicks(2024, 5, 6));
    EXPECT_EQ(table.At(0, 1).AsInteger(), 12);
    EXPECT_EQ(table.At(0, 2).kind(), Kind::Decimal);
    EXPECT_EQ(table.At(0, 3).kind(), Kind::Boolean);
}

TEST_F(SqliteData, DeclaredColumnsOfMoneyAreDecimals) {
    Execute(
        "create table sums (a numeric, b decimal(10,2), c money, d smallmoney, e NUMERIC (8, 3),"
        " f real, g double, h float, i, j integer, k text, l dec_code, m datetime);"
        "insert into sums values (0.1, 12.50, -1234567.89, 5, 1e-10, 0.1, 0.1, 0.1, 0.1, 1, '1', 'x', null),"
        "(null, 'n/a', 1e300, 0.1 + 0.2, 9007199254740993, 1, 1, 1, 1, 1, 1, 1, 1);");
    AddSet("select a, b, c, d, e, f, g, h, i, j, k from sums",
           {"a", "b", "c", "d", "e", "f", "g", "h", "i", "j", "k"});
    const Table table = Load();
    const char* const shown[] = {"0.1", "12.5", "-1234567.89", "5", "0.0000000001"};
    for (std::size_t column = 0; column < 5; ++column) {
        EXPECT_EQ(table.At(0, column).kind(), Kind::Decimal) << column;
        EXPECT_EQ(ToText(table.At(0, column), FindCulture("")), shown[column]);
    }
    for (std::size_t column = 5; column < 9; ++column) {
        EXPECT_EQ(table.At(0, column).kind(), Kind::Real) << column;
    }
    EXPECT_EQ(table.At(0, 9).kind(), Kind::Integer);
    EXPECT_EQ(table.At(0, 10).kind(), Kind::Text);
    EXPECT_TRUE(table.At(1, 0).IsNull());
    EXPECT_EQ(table.At(1, 1).AsText(), "n/a");
    EXPECT_EQ(table.At(1, 2).AsReal(), 1e300);  // has no place in a Decimal
    EXPECT_EQ(ToText(table.At(1, 3), FindCulture("")), "0.3");
    EXPECT_EQ(ToText(table.At(1, 4), FindCulture("")), "9007199254740993");
}

TEST_F(SqliteData, DecimalsAreBound) {
    AddParameter("Total", Value::Decimal(Decimal::OfText("12.50").value()));
    AddSet("select id from orders where total = @Total", {"id"}).parameters = {
        {"@Total", ExprOf("=Parameters!Total.Value")}};
    EXPECT_EQ(Rows(), "1");
}

TEST_F(SqliteData, ParametersAreBound) {
    AddParameter("Name", Value::Text("O'Neill"));
    AddParameter("Ids", Value::List({Value::Integer(2), Value::Integer(3)}));
    AddParameter("From", Value::DateTime(MakeTicks(2025, 1, 31)));
    DataSet& set =
        AddSet("select id from orders where customer = @Name and id in (@Ids) and placed >= :From", {"id"});
    set.parameters = {{"@Name", ExprOf("=Parameters!Name.Value")},
                      {"@Ids", ExprOf("=Parameters!Ids.Value")},
                      {"From", ExprOf("=Parameters!From.Value")}};
    EXPECT_EQ(Rows(), "2");
}

TEST_F(SqliteData, QueryMayBeAnExpression) {
    AddParameter("Column", Value::Text("customer"));
    AddSet("=\"select \" & Parameters!Column.Value & \" as v from orders where id = 1\"", {"v"});
    EXPECT_EQ(Rows(), "Ann");
}

TEST_F(SqliteData, ColumnsAreFoundWithoutRegardToCaseAndMissingOnesAreNull) {
    AddSet("select ID, customer from orders where id = 1", {"id", "nowhere", "Customer"});
    const Table table = Load();
    EXPECT_EQ(table.missing, (std::vector<bool>{false, true, false}));
    EXPECT_EQ(Rows(), "1||Ann");
}

TEST_F(SqliteData, RowsWithNoneOfTheFieldsAreAnError) {
    AddSet("select id, customer from orders", {"order", "name"});
    EXPECT_EQ(Failure(),
              "Data set \"Set1\", data source \"Main\": the query gives none of the fields; it gives \"id\", "
              "\"customer\"");
    definition.dataSets[0].commandText = ExprOf("select id, customer from orders where id < 0");
    EXPECT_EQ(Rows(), "") << "without rows nothing goes out wrong";
}

TEST_F(SqliteData, CalculatedFieldsStandAfterTheOthersAndMayBuildOnEachOther) {
    DataSet& set = AddSet("select id from orders order by id", {});
    AddCalculated(set, "Twice", "=Fields!Next.Value * 2");
    AddCalculated(set, "Next", "=Fields!id.Value + 1");
    set.fields.push_back({"id", "id", {}, ""});
    EXPECT_EQ(Load().fieldNames, (std::vector<std::string>{"id", "Twice", "Next"}));
    EXPECT_EQ(Rows(), "1|4|2 2|6|3 3|8|4");
}

TEST_F(SqliteData, FieldCalculatedFromItselfIsAnErrorValue) {
    DataSet& set = AddSet("select id from orders where id = 1", {"id"});
    AddCalculated(set, "A", "=Fields!B.Value");
    AddCalculated(set, "B", "=Fields!A.Value");
    EXPECT_EQ(Load().At(0, 1).kind(), Kind::Error);
}

TEST_F(SqliteData, DataSetWithoutFieldsHasThoseOfItsQuery) {
    AddSet("select id, customer from orders where id = 3", {});
    EXPECT_EQ(Load().fieldNames, (std::vector<std::string>{"id", "customer"}));
    EXPECT_EQ(Rows(), "3|Zoë");
}

TEST_F(SqliteData, TableDirectReadsTheTable) {
    AddSet("orders", {"id"}).commandType = QueryKind::Table;
    EXPECT_EQ(Rows(), "1 2 3");
}

TEST_F(SqliteData, TooManyOpenFilesAreToldAsSuch) {
    if (ChecksNeedDescriptors) {
        GTEST_SKIP() << "the sanitizers need file descriptors of their own";
    }
    AddSet("select id from orders", {"id"});
    EXPECT_EXIT(FailWithoutFiles(), testing::ExitedWithCode(0),
                "sales.db\" cannot be opened: Too many open files$");
}

// Twenty megabytes of rows that are sorted: more than the library keeps in memory without a file.
constexpr const char* SortedRows =
    "with recursive n(i) as (select 1 union all select i + 1 from n where i < 20000) "
    "select hex(zeroblob(500)) || i as id from n order by 1";

TEST_F(SqliteData, MissingMemoryIsNotBlamedOnTheQuery) {
    AddSet(SortedRows, {"id"});
    const std::string expected =
        "Data set \"Set1\", data source \"Main\": there is not enough memory for the query";
    for (const int kilobytes : {40, 400, 2000}) {
        sqlite3_hard_heap_limit64(sqlite3_memory_used() + kilobytes * 1024);
        const std::string failure = Failure();
        sqlite3_hard_heap_limit64(0);
        EXPECT_EQ(failure, expected) << kilobytes;
    }
}

TEST_F(SqliteData, ParameterForWhichThereIsNoMemoryDoesNotBecomeNull) {
    AddSet("select count(*) as id from orders where @Text is null", {"id"}).parameters = {
        {"@Text", ExprOf("=Parameters!Text.Value")}};
    AddParameter("Text", Value::Text(std::string(4 << 20, 'x')));
    sqlite3_hard_heap_limit64(sqlite3_memory_used() + (1 << 20));
    const std::string failure = Failure();
    sqlite3_hard_heap_limit64(0);
    EXPECT_EQ(failure, "Data set \"Set1\", data source \"Main\": there is not enough memory for the query");
}

// The rows that are sorted go to a temporary file.
TEST_F(SqliteData, FullTemporaryFolderIsNotBlamedOnTheQuery) {
    AddSet(SortedRows, {"id"});
    std::filesystem::create_directory(folder / "tmp");
    setenv("SQLITE_TMPDIR", (folder / "tmp").c_str(), 1);
    const rlimit small{1 << 20, RLIM_INFINITY};
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const auto former = std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &small);
    const std::string failure = Failure();
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, former);
    unsetenv("SQLITE_TMPDIR");
    EXPECT_EQ(
        failure,
        "Data set \"Set1\", data source \"Main\": the temporary file of the query cannot be written: File "
        "too large");
}

TEST_F(SqliteData, FailuresAreToldApart) {
    AddSet("select id from orders", {"id"});
    definition.dataSources[0].connectString = ExprOf("Data Source=missing.db");
    EXPECT_EQ(Failure(), "Data set \"Set1\", data source \"Main\": the database file \"" +
                             (folder / "missing.db").string() + "\" does not exist");
    EXPECT_FALSE(std::filesystem::exists(folder / "missing.db"));

    Write("bad.db", std::string(5000, 'x'));
    definition.dataSources[0].connectString = ExprOf("Data Source=bad.db");
    EXPECT_NE(Failure().find("is no database or is damaged"), std::string::npos);

    definition.dataSources[0].connectString = ExprOf("Data Source=sales.db");
    definition.dataSets[0].commandText = ExprOf("select id from orderz");
    EXPECT_NE(Failure().find("a table is missing: no such table: orderz"), std::string::npos);

    definition.dataSets[0].commandText = ExprOf("selekt id from 'orders'");
    EXPECT_NE(Failure().find("the query is wrong: near \"selekt\": syntax error"), std::string::npos);

    definition.dataSources[0].provider = "ORACLE";
    EXPECT_NE(Failure().find("the data provider \"ORACLE\" cannot be used here"), std::string::npos);

    definition.dataSets[0].dataSourceName = "Gone";
    EXPECT_NE(Failure().find("the report has no data source \"Gone\""), std::string::npos);
}

TEST_F(SqliteData, ParameterThatTheDataSetLacksIsAnError) {
    AddSet("select id from orders where id = @Id", {"id"});
    EXPECT_NE(Failure().find("the parameter \"@Id\", which the data set does not have"), std::string::npos);
}

TEST_F(SqliteData, QueryOnlyReadsThisFile) {
    DataSet& set = AddSet("delete from orders", {"id"});
    EXPECT_NE(Failure().find("does more than read"), std::string::npos);
    set.commandText = ExprOf("attach 'other.db' as o");
    EXPECT_NE(Failure().find("does more than read"), std::string::npos);
    set.commandText = ExprOf("select id from orders; select 1");
    EXPECT_NE(Failure().find("more than one statement"), std::string::npos);
    set.commandText = ExprOf("select count(*) as id from orders; -- all");
    EXPECT_EQ(Rows(), "3");
    set.commandText = ExprOf("select count(*) as id from orders; ; /* all; */ -- of them\n;");
    EXPECT_EQ(Rows(), "3");
    set.commandText = ExprOf("select id from orders; -- a\n delete from orders");
    EXPECT_NE(Failure().find("more than one statement"), std::string::npos);
    set.commandText = ExprOf("=\"select id from orders;\" & Chr(0) & \"x\"");
    EXPECT_NE(Failure().find("more than one statement"), std::string::npos);
}

TEST_F(SqliteData, EndlessQueryIsBounded) {
    AddSet("with recursive n(id) as (select 1 union all select id + 1 from n) select id from n", {"id"});
    request.limits.rows = 1000;
    EXPECT_NE(Failure().find("more than 1000 rows"), std::string::npos);
    request.limits = Limits();
    request.limits.bytes = 1 << 20;
    EXPECT_NE(Failure().find("more than 1 MB of data"), std::string::npos);
    request.limits = Limits();
    request.limits.querySeconds = 0;
    definition.dataSets[0].commandText = ExprOf(
        "with recursive n(id) as (select 1 union all select id + 1 from n) select max(id) as id from n");
    EXPECT_NE(Failure().find("the query took longer than 0 seconds and was given up"), std::string::npos);
}

TEST_F(SqliteData, OverrideReplacesProviderAndConnectString) {
    AddSet("select id from orders where id = 2", {"id"});
    definition.dataSources[0].provider = "SQL";
    definition.dataSources[0].connectString = ExprOf("Server=nowhere");
    request.overrides["Main"] = {"Microsoft.Data.Sqlite", "Data Source=|DataDirectory|\\SALES.DB"};
    EXPECT_EQ(Rows(), "2");
}

TEST_F(SqliteData, OneDataSetCanBeReadAlone) {
    AddSet("select id from orders where id = 2", {"id"});
    AddSet("select nothing", {"id"});
    EXPECT_EQ(LoadTable(request, "Set1").At(0, 0).AsInteger(), 2);
    EXPECT_THROW(LoadTable(request, "Set9"), Error);
}

}  // namespace
}  // namespace rdl::data
