// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/data/common/provider.h"

#include <gtest/gtest.h>

#include "rdl/guide.h"
#include "rdl/raises.h"
#include "rdl/values/error.h"

namespace rdl::data {
namespace {

std::string Failure(const std::string& name, const std::string& connect = "") {
    return ErrorRaisedBy([&] { FindProvider(name, connect); });
}

TEST(DataProviders, AreKnownByEveryNameOfTheirs) {
    const std::vector<std::pair<ProviderKind, std::vector<std::string>>> known{
        {ProviderKind::Sqlite, {"SQLITE", "SQLite3", "Microsoft.Data.Sqlite", "System.Data.SQLite"}},
        {ProviderKind::PostgreSql, {"PostgreSQL", "Postgres", "Npgsql", " npgsql "}},
        {ProviderKind::MySql, {"MySQL", "MariaDB", "MySqlConnector", "MySql.Data.MySqlClient"}},
        {ProviderKind::SqlServer, {"SQL", "SQLServer", "SQLAZURE", "SQLPDW", "Microsoft.Data.SqlClient"}},
        {ProviderKind::Odbc, {"ODBC", "Odbc", "System.Data.Odbc"}},
        {ProviderKind::Xml, {"XML"}},
        {ProviderKind::Json, {"JSON"}},
        {ProviderKind::Csv, {"CSV", "TXT", "FileDirectory"}},
        {ProviderKind::EnterData, {"ENTERDATA"}},
    };
    for (const auto& [kind, names] : known) {
        for (const std::string& name : names) {
            EXPECT_EQ(FindProvider(name, ""), kind) << name;
        }
    }
}

TEST(DataProviders, AreThoseOfTheGuide) {
    std::set<std::string> known;
    for (const std::string_view name : ProviderNames()) {
        AddOnce(known, name);
    }
    EXPECT_EQ(GuideNames("providers"), known);
}

TEST(DataProviders, OleDbSaysInItsConnectStringWhichOneIsMeant) {
    EXPECT_EQ(FindProvider("OLEDB", "Provider=SQLOLEDB.1;Data Source=db"), ProviderKind::SqlServer);
    EXPECT_EQ(FindProvider("OLEDB", "Provider=SQLNCLI11;Data Source=db"), ProviderKind::SqlServer);
    EXPECT_EQ(FindProvider("OLEDB", "Data Source=db;Provider=MSOLEDBSQL19"), ProviderKind::SqlServer);
    EXPECT_EQ(FindProvider("OLEDB", "Provider=MSDASQL;DSN=world"), ProviderKind::Odbc);
    EXPECT_EQ(Failure("OLEDB", "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=a.mdb"),
              "the OLE DB provider \"Microsoft.Jet.OLEDB.4.0\" cannot be used here; SQLOLEDB, SQLNCLI, "
              "MSOLEDBSQL and MSDASQL can");
    EXPECT_EQ(
        Failure("OLEDB", "Provider=MSOLAP.8;Data Source=cubes"),
        "the OLE DB provider \"MSOLAP.8\" (a cube or semantic model, asked in MDX or DAX) cannot be used "
        "here; SQLOLEDB, SQLNCLI, MSOLEDBSQL and MSDASQL can");
    EXPECT_EQ(Failure("OLEDB", "Data Source=db"), "the connect string names no OLE DB provider (Provider=)");
}

TEST(DataProviders, UnknownOneIsNamedWithThoseThatAreKnown) {
    EXPECT_EQ(Failure("Strange"),
              "the data provider \"Strange\" cannot be used here; known are SQLITE, PostgreSQL, MySQL, "
              "MariaDB, SQL, "
              "SQLAZURE, OLEDB, ODBC, XML, JSON, CSV and ENTERDATA");
    EXPECT_EQ(Failure(" "), "the data source names no data provider");
    for (const auto& [name, what] :
         {std::pair{"OLEDB-MD", "a cube, asked in MDX"}, std::pair{"DAX", "a semantic model, asked in DAX"},
          std::pair{"System.Data.DataSet", "tables in the memory of the program that had the report"}}) {
        EXPECT_EQ(Failure(name).substr(0, Failure(name).find(" cannot")),
                  "the data provider \"" + std::string(name) + "\" (" + what + ")");
    }
}

}  // namespace
}  // namespace rdl::data
