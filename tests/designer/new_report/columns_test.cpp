// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/new_report/columns.h"

#include <gtest/gtest.h>

#include "support/raises.h"
#include "support/temporary_folder.h"

namespace designer {
namespace {

class NewReportColumns : public testing::Test {
 protected:
    std::vector<ReportColumn> Read(const std::string& csv) const {
        WriteBytes(m_folder / "rows.csv", csv);
        return ColumnsOf(rdl::ReadQueryRows(
            {.provider = "CSV", .connectString = "Data Source=rows.csv", .folder = m_folder.Path()}));
    }
    ReportColumn First(const std::string& csv) const { return Read(csv).front(); }

    TemporaryFolder m_folder;
};

TEST_F(NewReportColumns, KindsAreThoseOfTheValues) {
    const std::vector<ReportColumn> columns = Read(
        "Name,Pieces,Price,Day,Moment,Zip,Empty\n"
        "Ann,1200,2.5,2025-03-01,2025-03-01 10:30:00,01099,\n"
        "Bo,-3,10,2024-02-29,2025-03-02 00:00:00,80331,\n"
        ",,,,,,\n");
    const std::vector<ColumnKind> kinds = {ColumnKind::Text, ColumnKind::Whole,  ColumnKind::Number,
                                           ColumnKind::Date, ColumnKind::Moment, ColumnKind::Text,
                                           ColumnKind::Text};
    const std::vector<std::string> types = {"System.String",   "System.Int64",    "System.Decimal",
                                            "System.DateTime", "System.DateTime", "System.String",
                                            "System.String"};
    const std::vector<std::string> formats = {"", "N0", "N2", "d", "g", "", ""};
    ASSERT_EQ(columns.size(), 7U);
    for (std::size_t i = 0; i < columns.size(); ++i) {
        EXPECT_EQ(columns[i].kind, kinds[i]) << columns[i].name;
        EXPECT_EQ(columns[i].typeName, types[i]) << columns[i].name;
        EXPECT_EQ(FormatOf(columns[i]), formats[i]) << columns[i].name;
    }
    EXPECT_EQ(columns[0].different, 2U);
    EXPECT_EQ(columns[6].different, 0U);
}

TEST_F(NewReportColumns, KeysAndYearsHaveNoSeparators) {
    for (const char* name : {"OrderID", "order_no", "Year", "Zip code", "id"}) {
        EXPECT_EQ(First(std::string(name) + ",x\n10248,1\n").kind, ColumnKind::Code) << name;
    }
    for (const char* name : {"Paid", "Pieces", "Number of pieces"}) {
        EXPECT_EQ(First(std::string(name) + ",x\n10248,1\n").kind, ColumnKind::Whole) << name;
    }
}

TEST_F(NewReportColumns, NumbersHaveTheDecimalsOfTheirValues) {
    EXPECT_EQ(First("a,b\n1.5,1\n").decimals, 2);
    EXPECT_EQ(First("a,b\n1.125,1\n2.1,1\n").decimals, 3);
    EXPECT_EQ(First("a,b\n1.125,1\n10,1\n").decimals, 2);
    EXPECT_EQ(First("a,b\n0.1234,1\n").typeName, "System.Decimal");
    EXPECT_EQ(First("a,b\n0.12345678,1\n").decimals, 6);
    EXPECT_EQ(First("a,b\n0.12345678,1\n").typeName, "System.Double");
}

TEST_F(NewReportColumns, ATextThatIsNoDayIsNoDate) {
    for (const char* value : {"2025-13-01", "2025-00-10", "2025-01-32", "0000-01-01", "2025-1-1",
                              "2025-01-01x", "2025-01-01 1:00"}) {
        EXPECT_EQ(First(std::string("a,b\n") + value + ",1\n").kind, ColumnKind::Text) << value;
    }
    EXPECT_EQ(First("a,b\n2025-01-01T00:00:00,1\n").kind, ColumnKind::Date);
    EXPECT_EQ(First("a,b\n2025-01-01T00:01:00.5,1\n").kind, ColumnKind::Moment);
}

TEST_F(NewReportColumns, OnlyTheFirstRowsDecide) {
    std::string csv = "a,b\n";
    for (int row = 0; row < 1000; ++row) {
        csv += "2025-01-01,1\n";
    }
    EXPECT_EQ(First(csv + "later,1\n").kind, ColumnKind::Date);
}

TEST_F(NewReportColumns, FieldsDiffer) {
    const std::vector<ReportColumn> columns = Read("Order date,order-date,1st\na,b,c\n");
    EXPECT_EQ(columns[0].field, "Order_date");
    EXPECT_EQ(columns[1].field, "order_date_2");
    EXPECT_EQ(columns[2].field, "_1st");
}

TEST_F(NewReportColumns, TwoOfOneNameInAFileDiffer) {
    const std::vector<ReportColumn> columns = Read("id,name,ID\n1,a,2\n");
    EXPECT_EQ(columns[2].name, "ID_2");
    EXPECT_FALSE(columns[2].hasNulls);
}

TEST_F(NewReportColumns, WithNamesThatAReportCannotHaveAreRefused) {
    EXPECT_EQ(DescriptionRaisedBy([&] {
                  ColumnsOf({.columns = {"id", "name", "ID"}, .cells = {}});
              }),
              "The query gives two columns \"ID\": each needs a name of its own");
    EXPECT_EQ(DescriptionRaisedBy([&] { Read("a,,b\n1,,2\n,3,4\n"); }),
              "The column 2 of the query has values, but no name");
    EXPECT_EQ(Read("a,,b,\n1,,2,\n").size(), 2U);
    EXPECT_EQ(
        DescriptionRaisedBy([&] { Read("a,\"b\nc\"\n1,2\n"); }),
        "The column \"b c\" needs another name: without control characters, and without blanks at its ends");
    EXPECT_EQ(DescriptionRaisedBy([&] { Read(""); }), "The query gives no columns");
}

}  // namespace
}  // namespace designer
