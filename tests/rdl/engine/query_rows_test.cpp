// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/api/query_rows.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <chrono>
#include <thread>

#include "rdl/api/failure.h"
#include "support/temporary_folder.h"

namespace rdl {
namespace {

class QueryRowsOf : public testing::Test {
 protected:
    QueryRowsOf() { WriteBytes(m_folder / "a.csv", "Name,Pieces\nAnn,1\nBo,\nCy,3\n"); }

    QueryRequest Request(const std::string& provider, const std::string& connectString,
                         const std::string& query = {}) const {
        return {
            .provider = provider, .connectString = connectString, .query = query, .folder = m_folder.Path()};
    }
    static std::string Refusal(const QueryRequest& request) {
        try {
            ReadQueryRows(request);
        } catch (const Failure& failure) {
            EXPECT_EQ(failure.stage(), Stage::Data);
            return failure.what();
        }
        return {};
    }

    TemporaryFolder m_folder;
};

TEST_F(QueryRowsOf, AFileAreThoseOfTheFile) {
    const QueryRows rows = ReadQueryRows(Request("csv", "a.csv"));
    EXPECT_EQ(rows.columns, (std::vector<std::string>{"Name", "Pieces"}));
    ASSERT_EQ(rows.RowCount(), 3U);
    EXPECT_EQ(rows.At(0, 0).AsText(), "Ann");
    EXPECT_EQ(rows.At(2, 1).AsInteger(), 3);
    EXPECT_TRUE(rows.At(1, 1).IsNull());
}

TEST_F(QueryRowsOf, AQueryAreTheFirstOnes) {
    WriteBytes(m_folder / "empty.db", "");
    QueryRequest request =
        Request("SQLITE", "Data Source=empty.db",
                "with recursive n(i) as (select 1 union all select i + 1 from n) select i from n");
    request.mostRows = 5;
    const QueryRows rows = ReadQueryRows(request);  // the query itself has no end
    ASSERT_EQ(rows.RowCount(), 5U);
    EXPECT_EQ(rows.At(4, 0).AsInteger(), 5);
}

TEST_F(QueryRowsOf, AQueryHaveTheTypesThatTheDatabaseDeclares) {
    sqlite3* database = nullptr;
    ASSERT_EQ(sqlite3_open((m_folder / "typed.db").c_str(), &database), SQLITE_OK);
    sqlite3_exec(
        database,
        "create table t (a integer, b BIGINT, c varchar(9), d blob, e double precision, f numeric(9,2), "
        "g date, h boolean, i, j anything)",
        nullptr, nullptr, nullptr);
    sqlite3_close(database);
    const QueryRows rows =
        ReadQueryRows(Request("SQLITE", "Data Source=typed.db", "select *, a + 1 as k from t"));
    EXPECT_EQ(rows.RowCount(), 0U);
    EXPECT_THAT(rows.types, testing::ElementsAre("System.Int64", "System.Int64", "System.String",
                                                 "System.Byte[]", "System.Double", "System.Decimal",
                                                 "System.DateTime", "System.Boolean", "", "", ""));
}

TEST_F(QueryRowsOf, AQueryWithParametersAreThoseForNull) {
    WriteBytes(m_folder / "empty.db", "");
    QueryRequest request =
        Request("SQLITE", "empty.db", "select coalesce(@Day, 'none') as day where @day is null");
    EXPECT_EQ(Refusal(request), "the query uses the parameter \"@day\", which the data set does not have");
    request.parameters = {{"@Day"}};
    const QueryRows rows = ReadQueryRows(request);
    ASSERT_EQ(rows.RowCount(), 1U);
    EXPECT_EQ(rows.At(0, 0).AsText(), "none");
}

TEST_F(QueryRowsOf, AQueryHaveTheValuesOfItsParameters) {
    WriteBytes(m_folder / "empty.db", "");
    QueryRequest request = Request("SQLITE", "empty.db", "select typeof(@A) || @A, typeof(@B) || @B");
    request.parameters = {{"@A", "5"}, {"@B", "=2+3"}};
    const QueryRows rows = ReadQueryRows(request);
    EXPECT_EQ(rows.At(0, 0).AsText(), "text5");
    EXPECT_EQ(rows.At(0, 1).AsText(), "integer5");
    request.parameters[1].value = "=Fields!A.Value";
    EXPECT_THAT(Refusal(request), testing::HasSubstr("@B"));
}

TEST_F(QueryRowsOf, ATableAreThoseOfItsName) {
    WriteBytes(m_folder / "empty.db", "");
    QueryRequest request = Request("SQLITE", "empty.db", "sqlite_schema");
    request.kind = QueryKind::Table;
    EXPECT_EQ(ReadQueryRows(request).columns.front(), "type");
}

TEST_F(QueryRowsOf, ASharedSourceIsReadBesideTheReport) {
    WriteBytes(m_folder / "Shop.rds",
               "<RptDataSource Name=\"Shop\"><ConnectionProperties><Extension>CSV</Extension>"
               "<ConnectString>Data Source=shop.csv</ConnectString></ConnectionProperties></RptDataSource>");
    const SharedSourceText source = ReadSharedSource("/Sales/Shop", m_folder.Path());
    EXPECT_EQ(source.provider + " " + source.connectString, "CSV Data Source=shop.csv");
    EXPECT_THROW(ReadSharedSource("Stock", m_folder.Path()), Failure);
}

TEST_F(QueryRowsOf, AQueryThatTakesLongerThanItMayAreRefused) {
    WriteBytes(m_folder / "empty.db", "");
    QueryRequest request =
        Request("SQLITE", "empty.db",
                "with recursive n(i) as (select 1 union all select i + 1 from n) select count(*) from n");
    request.seconds = 1;
    EXPECT_EQ(Refusal(request), "the query took longer than 1 second and was given up");
}

TEST_F(QueryRowsOf, AreRefusedWhenTheQueryIsStopped) {
    WriteBytes(m_folder / "empty.db", "");
    QueryRequest request =
        Request("SQLITE", "empty.db",
                "with recursive n(i) as (select 1 union all select i + 1 from n) select count(*) from n");
    request.seconds = 60;
    const auto stop = std::make_shared<StopSignal>();
    request.stop = stop;
    const auto begin = std::chrono::steady_clock::now();
    std::thread other([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
        stop->Give();
    });
    EXPECT_EQ(Refusal(request), "The run was stopped");
    other.join();
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(20));
}

TEST_F(QueryRowsOf, ASourceWithoutAFolderStartsAtTheCurrentOne) {
    QueryRequest request = Request("SQLITE", (m_folder / "empty.db").string(), "select 7 as a");
    WriteBytes(m_folder / "empty.db", "");
    request.folder.clear();
    EXPECT_EQ(ReadQueryRows(request).At(0, 0).AsInteger(), 7);
}

TEST_F(QueryRowsOf, AQueryWithLongTextsAreFewer) {
    WriteBytes(m_folder / "empty.db", "");
    const QueryRows rows = ReadQueryRows(Request("SQLITE", "empty.db",
                                                 "with recursive n(i) as (select 1 union all select i + 1 "
                                                 "from n) select hex(zeroblob(1048576)) from n"));
    EXPECT_EQ(rows.RowCount(), 32U);  // of 2 MB
}

TEST_F(QueryRowsOf, AFaultySourceAreRefusedWithTheReason) {
    WriteBytes(m_folder / "empty.db", "");
    EXPECT_EQ(
        Refusal(Request("http", "x")),
        "the data provider \"http\" cannot be used here; known are SQLITE, PostgreSQL, MySQL, MariaDB, SQL, "
        "SQLAZURE, OLEDB, ODBC, XML, JSON, CSV and ENTERDATA");
    EXPECT_EQ(Refusal(Request("SQLITE", "empty.db")), "the query is empty");
    EXPECT_NE(Refusal(Request("SQLITE", "empty.db", "delete from x")), "");
    EXPECT_NE(Refusal(Request("CSV", "none.csv")), "");
}

// The file has its own fields, parameters and filters; its source is a shared one, or the report's of that
// name.
TEST_F(QueryRowsOf, ASharedDataSetAreThoseOfItsFile) {
    WriteBytes(m_folder / "Files.rds",
               "<RptDataSource Name=\"Files\"><ConnectionProperties><Extension>csv</Extension>"
               "<ConnectString>a.csv</ConnectString></ConnectionProperties></RptDataSource>");
    WriteBytes(m_folder / "b.csv", "Name,Pieces\nDan,9\n");
    WriteBytes(
        m_folder / "People.rsd",
        "<SharedDataSet><DataSet Name=\"\"><Query><DataSourceReference>Files</DataSourceReference>"
        "<DataSetParameters><DataSetParameter "
        "Name=\"@Least\"><DefaultValue>2</DefaultValue></DataSetParameter>"
        "<DataSetParameter Name=\"@Kept\"><ReadOnly>true</ReadOnly><DefaultValue>1</DefaultValue>"
        "</DataSetParameter></DataSetParameters><CommandText/></Query><Fields>"
        "<Field Name=\"Who\"><DataField>Name</DataField></Field>"
        "<Field Name=\"Count\"><DataField>Pieces</DataField></Field></Fields><Filters><Filter>"
        "<FilterExpression>=Fields!Count.Value</FilterExpression><Operator>GreaterThanOrEqual</Operator>"
        "<FilterValues><FilterValue>=CInt(Parameters!Least.Value)</FilterValue></FilterValues></Filter></"
        "Filters>"
        "</DataSet></SharedDataSet>");
    const SharedSetText text = ReadSharedSet("/Team/People", m_folder.Path());
    EXPECT_EQ(text.source, "Files");
    ASSERT_EQ(text.parameters.size(), 1U);
    EXPECT_EQ(text.parameters[0].name + " " + text.parameters[0].value, "@Least 2");
    QueryRequest request{.provider = {}, .connectString = {}, .folder = m_folder.Path()};
    request.sharedSet = "People";
    QueryRows rows = ReadQueryRows(request);
    EXPECT_EQ(rows.columns, (std::vector<std::string>{"Who", "Count"}));
    ASSERT_EQ(rows.RowCount(), 1U);
    EXPECT_EQ(rows.At(0, 0).AsText(), "Cy");
    request.parameters = {{"@Least", "1"}};
    EXPECT_EQ(ReadQueryRows(request).RowCount(), 2U);
    request.mostRows = 1;
    EXPECT_EQ(ReadQueryRows(request).RowCount(), 1U);
    request.source = "Files";
    request.provider = "csv";
    request.connectString = "b.csv";
    rows = ReadQueryRows(request);
    ASSERT_EQ(rows.RowCount(), 1U);
    EXPECT_EQ(rows.At(0, 0).AsText(), "Dan");
    request.sharedSet = "Nobody";
    EXPECT_THAT(Refusal(request), testing::HasSubstr("Nobody"));
}

}  // namespace
}  // namespace rdl
