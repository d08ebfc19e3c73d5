// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/data/common/connect_string.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>

#include "rdl/data/sql/odbc_connection.h"
#include "rdl/raises.h"
#include "rdl/values/error.h"

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

// A list of drivers of its own.
class OdbcConnections : public testing::Test {
 protected:
    void SetUp() override {
        std::string pattern = (std::filesystem::temp_directory_path() / "odbc-list-XXXXXX").string();
        ASSERT_NE(::mkdtemp(pattern.data()), nullptr);
        m_folder = pattern;
        ::setenv("ODBCSYSINI", m_folder.c_str(), 1);
        Install({"SQLite3", "FreeTDS"});
    }
    void TearDown() override {
        ::unsetenv("ODBCSYSINI");
        std::filesystem::remove_all(m_folder);
    }
    void Install(const std::vector<std::string>& drivers) const {
        std::ofstream list(m_folder / "odbcinst.ini");
        list << "[ODBC]\nTrace=no\n";
        for (const std::string& driver : drivers) {
            list << "[" << driver << "]\nDriver=x.so\n";
        }
    }
    const std::filesystem::path& Folder() const { return m_folder; }
    static OdbcTarget Target(const std::string& text, ProviderKind provider = ProviderKind::Odbc) {
        const ConnectString pairs(text);
        return OdbcConnection(provider, pairs, ReadServerAddress(pairs));
    }
    static std::string Odbc(const std::string& text) { return Target(text).text; }
    static std::string SqlServer(const std::string& text) {
        return Target(text, ProviderKind::SqlServer).text;
    }
    static std::string Failure(const std::string& text) {
        return ErrorRaisedBy([&] { Target(text); });
    }

 private:
    std::filesystem::path m_folder;
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
    EXPECT_EQ(OdbcConnection(ProviderKind::SqlServer, pairs, address).text,
              FreeTdsStart + std::string("DATABASE=s;UID=ann;PWD={x;SERVER=evil}}};"));
}

TEST_F(OdbcConnections, DriversOfTheUserAreKnown) {
    const std::string home = std::getenv("HOME");
    ::setenv("HOME", Folder().c_str(), 1);
    std::ofstream(Folder() / ".odbcinst.ini") << "[Mine]\nDriver=/usr/lib/mine.so\n";
    EXPECT_EQ(Odbc("Driver={mine};Database=a"), "DRIVER=Mine;Database=a;");
    ::setenv("HOME", home.c_str(), 1);
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

}  // namespace
}  // namespace rdl::data
