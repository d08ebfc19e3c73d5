// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/data/common/server_address.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <iostream>

#include "rdl/data/sql/odbc_connection.h"
#include "rdl/raises.h"
#include "rdl/values/error.h"
#include "support/temporary_folder.h"

namespace rdl::data {
namespace {

TEST(ConnectStrings, KeysHaveNeitherCaseNorBlanks) {
    const ConnectString text("Data Source = db1 ;INITIAL CATALOG=Sales;User Id=ann;Pwd=x");
    EXPECT_EQ(text.Get({"datasource"}), "db1");
    EXPECT_EQ(text.Get({"Initial Catalog"}), "Sales");
    EXPECT_TRUE(text.Has({"password", "PWD"}));
}

TEST(ConnectStrings, QuotedValuesKeepSemicolonsAndDoubledMarks) {
    const ConnectString text("Password=\"a;b\"\"c\";Host='x''y';App={p;}}q};Last=1");
    EXPECT_EQ(text.Get({"password"}), "a;b\"c");
    EXPECT_EQ(text.Get({"host"}), "x'y");
    EXPECT_EQ(text.Get({"app"}), "p;}q");
    EXPECT_EQ(text.Get({"last"}), "1");
}

TEST(ConnectStrings, BareTextIsTheFile) {
    EXPECT_EQ(ConnectString("data\\sales.db").Get({"data source"}), "data\\sales.db");
}

TEST(ConnectStrings, ServerMayCarryItsPort) {
    EXPECT_EQ(ReadServerAddress(ConnectString("Server=db,1444;Database=s")).port, 1444);
    EXPECT_EQ(ReadServerAddress(ConnectString("Host=db:5433")).host, "db");
    EXPECT_EQ(ReadServerAddress(ConnectString("Server=(local)")).host, "localhost");
    EXPECT_EQ(ReadServerAddress(ConnectString("Host=db;Port=5432")).port, 5432);
    EXPECT_THROW(ReadServerAddress(ConnectString("Host=db;Port=banana")), Error);
    EXPECT_THROW(ReadServerAddress(ConnectString("Host=db;Port=99999")), Error);
}

TEST(ConnectStrings, ThisMachineHasManyNames) {
    EXPECT_EQ(ReadServerAddress(ConnectString("Server=.")).host, "localhost");
    EXPECT_EQ(ReadServerAddress(ConnectString("Server=.\\SALES")).host, "localhost\\SALES");
    EXPECT_EQ(ReadServerAddress(ConnectString("Server=lpc:(local)\\SALES")).host, "localhost\\SALES");
    EXPECT_EQ(ReadServerAddress(ConnectString("Database=s")).host, "localhost");
}

// On a machine with these drivers.
class OdbcConnections : public testing::Test {
 protected:
    void Install(const OdbcDriverNames& drivers) { m_installed = drivers; }
    OdbcTarget Target(const std::string& text, ProviderKind provider = ProviderKind::Odbc) const {
        const ConnectString pairs(text);
        return OdbcConnection(provider, pairs, ReadServerAddress(pairs), m_installed);
    }
    std::string Odbc(const std::string& text) const { return Target(text).text; }
    std::string SqlServer(const std::string& text) const {
        return Target(text, ProviderKind::SqlServer).text;
    }
    std::string Failure(const std::string& text) const {
        return ErrorRaisedBy([&] { Target(text); });
    }

 private:
    OdbcDriverNames m_installed{"SQLite3", "FreeTDS"};
};

constexpr const char* FreeTdsStart =
    "DRIVER=FreeTDS;SERVER=db;PORT=1433;TDS_Version=7.4;ClientCharset=UTF-8;";

TEST_F(OdbcConnections, DsnGoesFirstAndLogonLast) {
    EXPECT_EQ(Odbc("dsn=world;UID=ann;PWD=x;Trusted_Connection=no"),
              "world;Trusted_Connection=no;UID=ann;PWD=x;");
    EXPECT_EQ(Odbc("Server=db;dsn=world"), "DSN=world;Server=db;");
    EXPECT_EQ(Odbc("dsn=world;UID=ann;PWD=server=x"), "DSN=world;UID=ann;PWD={server=x};");
    EXPECT_EQ(Target("dsn=world").place, "the ODBC data source \"world\"");
}

TEST_F(OdbcConnections, DriverIsOneOfTheMachines) {
    EXPECT_EQ(Odbc("Driver={sqlite3};Database=/srv/a.db"), "DRIVER=SQLite3;Database=/srv/a.db;NoCreat=1;");
    EXPECT_EQ(Target("Driver={SQLite3};Database=a").place, "the database by the ODBC driver \"SQLite3\"");
    EXPECT_EQ(Failure("Driver={Wonder};Server=db"),
              "the ODBC driver \"Wonder\" is not installed; there are: SQLite3, FreeTDS");
    Install({});
    EXPECT_EQ(Failure("Driver={Wonder};Server=db"),
              "the ODBC driver \"Wonder\" is not installed; there is none");
    EXPECT_EQ(Failure("Database=x"), "the connect string names neither a DSN nor a driver");
}

TEST_F(OdbcConnections, ValuesCannotAddPairs) {
    const ConnectString pairs("Driver={FreeTDS};Server=db;Database=s");
    ServerAddress address = ReadServerAddress(pairs);
    address.user = "ann";
    address.password = "x;SERVER=evil}";
    EXPECT_EQ(OdbcConnection(ProviderKind::SqlServer, pairs, address, {"FreeTDS"}).text,
              FreeTdsStart + std::string("DATABASE=s;UID=ann;PWD={x;SERVER=evil}}};"));
}

TEST_F(OdbcConnections, NeitherLibrariesNorFilesAreNamedByAReport) {
    EXPECT_EQ(Failure("Driver=SQLite3;Enable_Local_Infile=1"),
              "\"Enable_Local_Infile\" of the connect string is not for a report");
    EXPECT_EQ(Failure("dsn=world;ConnSettings=delete from a"),
              "\"ConnSettings\" of the connect string is not for a report");
    EXPECT_EQ(Failure("Driver=SQLite3;Database=FILE:/tmp/a.db?mode=rwc"),
              "\"Database\" of the connect string is an address; give the file");
    for (const char* text : {"Driver=/tmp/x.so;Server=db", "FILEDSN=/tmp/x.dsn", "dsn=world;SAVEFILE=/tmp/x",
                             "dsn=a.dsn", "dsn=world;UID=u;PWD=a.dsn", "Driver=SQLite3;LoadExt=/tmp/x.so",
                             "Driver=FreeTDS;DumpFile=/tmp/x"}) {
        EXPECT_FALSE(Failure(text).empty()) << text;
    }
}

TEST_F(OdbcConnections, SqlServerTakesTheWordsOfSqlClient) {
    EXPECT_EQ(SqlServer("Data Source=db;Initial Catalog=sales;User ID=ann;Password=x"),
              FreeTdsStart + std::string("DATABASE=sales;UID=ann;PWD=x;"));
    EXPECT_EQ(SqlServer("Server=tcp:db,1444;Database=sales;Integrated Security=SSPI;User ID=ann"),
              "DRIVER=FreeTDS;SERVER=db;PORT=1444;TDS_Version=7.4;ClientCharset=UTF-8;DATABASE=sales;"
              "Trusted_Connection=yes;");
    EXPECT_EQ(SqlServer("Server=db\\SALES"),
              "DRIVER=FreeTDS;SERVER=db\\SALES;TDS_Version=7.4;ClientCharset=UTF-8;Trusted_Connection=yes;");
    EXPECT_EQ(SqlServer("Server=db;Encrypt=True;Uid=a"),
              FreeTdsStart + std::string("Encryption=require;UID=a;PWD=;"));
    EXPECT_EQ(SqlServer("Server=db;Encrypt=Optional;Uid=a"),
              FreeTdsStart + std::string("Encryption=off;UID=a;PWD=;"));
    EXPECT_EQ(Target("Server=db\\SALES", ProviderKind::SqlServer).place,
              "the server \"db\\SALES\" by the ODBC driver \"FreeTDS\"");
}

TEST_F(OdbcConnections, NewestDriverForSqlServerIsTaken) {
    Install({"FreeTDS", "ODBC Driver 17 for SQL Server", "ODBC Driver 18 for SQL Server", "SQLite3"});
    EXPECT_EQ(SqlServer("Data Source=db\\SALES;Initial Catalog=sales;User ID=ann;Password=x;Encrypt=Strict;"
                        "TrustServerCertificate=True;ApplicationIntent=ReadOnly"),
              "DRIVER={ODBC Driver 18 for SQL Server};SERVER=db\\SALES;Encrypt=strict;"
              "TrustServerCertificate=yes;DATABASE=sales;ApplicationIntent=ReadOnly;UID=ann;PWD=x;");
    EXPECT_EQ(SqlServer("Server=db\\SALES,1444"),
              "DRIVER={ODBC Driver 18 for SQL Server};SERVER={db,1444};Trusted_Connection=yes;");
    Install({"SQLite3"});
    EXPECT_THROW(SqlServer("Server=db"), Error);
}

// Writes the drivers of two lists below `folder`, the machine's and the user's, to standard error.
[[noreturn]] void PrintDriversOf(const std::filesystem::path& folder) {
    ::setenv("ODBCSYSINI", folder.c_str(), 1);
    ::setenv("HOME", folder.c_str(), 1);
    for (const std::string& name : InstalledOdbcDrivers()) {
        std::cerr << name << ";";
    }
    std::filesystem::remove_all(folder);  // the process ends without the destructor of its owner
    _Exit(0);
}

TEST(OdbcDrivers, ThoseOfTheUserAndOfTheMachineAreKnown) {
    // The driver manager keeps where its lists are for the life of a process, so it reads them in another
    // one.
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const TemporaryFolder folder;
    WriteBytes(folder / "odbcinst.ini", "[ODBC]\nTrace=no\n[SQLite3]\nDriver=x.so\n[FreeTDS]\nDriver=x.so\n");
    WriteBytes(folder / ".odbcinst.ini", "[Mine]\nDriver=/usr/lib/mine.so\n");
    EXPECT_EXIT(PrintDriversOf(folder.Path()), testing::ExitedWithCode(0), "^SQLite3;FreeTDS;Mine;$");
}

}  // namespace
}  // namespace rdl::data
