#include "platform/rdl/data/connect_string.h"

#include <gtest/gtest.h>

#include "platform/rdl/data/odbc_connection.h"
#include "platform/rdl/error.h"

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

std::string Odbc(const std::string& text) {
    const ConnectString pairs(text);
    return OdbcConnection(ProviderKind::Odbc, pairs, ReadServerAddress(pairs));
}

TEST(OdbcConnections, DsnGoesFirstAndLogonLast) {
    EXPECT_EQ(Odbc("dsn=world;UID=ann;PWD=x;Trusted_Connection=no"),
              "world;Trusted_Connection=no;UID=ann;PWD=x;");
}

TEST(OdbcConnections, ValuesCannotAddPairs) {
    const ConnectString pairs("Driver={FreeTDS};Server=db;Database=s");
    ServerAddress address = ReadServerAddress(pairs);
    address.user = "ann";
    address.password = "x;SERVER=evil}";
    EXPECT_NE(OdbcConnection(ProviderKind::SqlServer, pairs, address).find("PWD={x;SERVER=evil}}};"),
              std::string::npos);
}

TEST(OdbcConnections, DriverIsANameAndNoLibrary) {
    EXPECT_THROW(Odbc("Driver=/tmp/x.so;Server=db"), Error);
    EXPECT_THROW(Odbc("FILEDSN=/tmp/x.dsn"), Error);
    EXPECT_THROW(Odbc("dsn=world;SAVEFILE=/tmp/x"), Error);
}

}  // namespace
}  // namespace rdl::data
