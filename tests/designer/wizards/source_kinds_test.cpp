// SPDX-License-Identifier: GPL-3.0-or-later
// Connect strings and queries of the kinds of data sources, and rows as texts.
#include "designer/dialogs/source_kinds.h"

#include <gtest/gtest.h>

#include "designer/dialogs/row_text.h"

namespace designer {
namespace {

TEST(SourceKinds, AFileIsQuotedWhereItsNameNeedsThat) {
    EXPECT_EQ(ConnectStringOf(KindOf("SQLITE"), {.file = "/srv/sales.db"}), "Data Source=/srv/sales.db");
    EXPECT_EQ(ConnectStringOf(KindOf("CSV"), {.file = "/srv/a;b.csv"}), "Data Source=\"/srv/a;b.csv\"");
}

TEST(SourceKinds, TheLogonIsWrittenOnlyIfItIsKept) {
    SourceFields fields{
        .server = "db", .port = "5433", .database = "sales", .user = "ann", .password = "a;b"};
    EXPECT_EQ(ConnectStringOf(KindOf("PostgreSQL"), fields), "Host=db;Port=5433;Database=sales");
    fields.keepsLogon = true;
    EXPECT_EQ(ConnectStringOf(KindOf("PostgreSQL"), fields),
              "Host=db;Port=5433;Database=sales;Username=ann;Password=\"a;b\"");
    EXPECT_EQ(ConnectStringOf(KindOf("MySQL"), fields),
              "Server=db;Port=5433;Database=sales;Uid=ann;Pwd=\"a;b\"");
}

TEST(SourceKinds, SqlServerHasItsPortAfterAComma) {
    EXPECT_EQ(ConnectStringOf(KindOf("SQL"), {.server = "db", .port = "1444", .database = "sales"}),
              "Data Source=db,1444;Initial Catalog=sales");
    EXPECT_EQ(ConnectStringOf(KindOf("SQL"), {.server = "db", .database = "sales"}),
              "Data Source=db;Initial Catalog=sales");
}

TEST(SourceKinds, FieldsGiveTheSameConnectStringAgain) {
    const struct {
        const char *provider, *text;
    } samples[] = {
        {"SQLITE", "Data Source=/srv/sales.db"},
        {"CSV", "Data Source=\"/srv/a;b.csv\""},
        {"PostgreSQL", "Host=db;Port=5433;Database=sales;Username=ann;Password=\"a;b\""},
        {"SQL", "Data Source=db,1444;Initial Catalog=sales"},
        {"MySQL", "Server=db;Database=sales"},
        {"ODBC", "DSN=sales;Uid=ann"},
    };
    for (const auto& [provider, text] : samples) {
        const auto fields = FieldsOf(KindOf(provider), text);
        ASSERT_TRUE(fields) << text;
        EXPECT_EQ(ConnectStringOf(KindOf(provider), *fields), text);
    }
    const SourceFields fields = *FieldsOf(KindOf("SQL"), "Data Source=db,1444;Initial Catalog=sales;");
    EXPECT_EQ(fields.server + " " + fields.port + " " + fields.database, "db 1444 sales");
    EXPECT_FALSE(FieldsOf(KindOf("PostgreSQL"), "Host=db;Database=sales;SSL Mode=require"));
    EXPECT_FALSE(FieldsOf(KindOf("SQLITE"), "=Parameters!File.Value"));
}

TEST(SourceKinds, AProviderHasItsKindWhateverItsCase) {
    EXPECT_EQ(KindOf("postgresql").title, "PostgreSQL");
    EXPECT_EQ(KindOf("OLEDB").title, "Another provider");
    EXPECT_EQ(&KindOf(""), &SourceKinds().back());
}

TEST(SourceKinds, NamesOfTablesAreQuotedAsTheServerDoes) {
    EXPECT_EQ(QueryOfTable(KindOf("SQLITE"), "", "my \"orders\""), "select * from \"my \"\"orders\"\"\"");
    EXPECT_EQ(QueryOfTable(KindOf("PostgreSQL"), "public", "Orders"), "select * from \"public\".\"Orders\"");
    EXPECT_EQ(QueryOfTable(KindOf("MySQL"), "", "a`b"), "select * from `a``b`");
    EXPECT_EQ(QueryOfTable(KindOf("SQL"), "dbo", "a]b"), "select * from [dbo].[a]]b]");
}

TEST(RowText, RowsAreACsvFile) {
    using rdl::Value;
    const rdl::QueryRows rows{{"a", "b", "c"},
                              {Value(), Value::Text("x \"y\", z"), Value::Bytes("??"), Value::Real(0.1),
                               Value::DateTime(rdl::TicksPerDay * 31 + rdl::TicksPerSecond), Value()}};
    EXPECT_EQ(CsvOf(rows, {"A", "B", ""}, 10),
              "\"A\",\"B\"\r\n,\"x \"\"y\"\", z\"\r\n0.1,0001-02-01 00:00:01\r\n");
    EXPECT_EQ(CsvOf(rows, {"A", "", ""}, 0), "\"A\"\r\n");
    EXPECT_EQ(TypeOf(rows, 0), "Number");
    EXPECT_EQ(TypeOf(rows, 1), "Mixed");
}

}  // namespace
}  // namespace designer
