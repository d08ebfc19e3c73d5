// SPDX-License-Identifier: GPL-3.0-or-later
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "data_fixture.h"

namespace {

namespace fs = std::filesystem;

class DataErrors : public DataFixture {
 protected:
    int Failing(const std::string& statement) const {
        return NumberRaisedBy([&] { Execute(statement); });
    }
    int Opening(const std::string& connection) const {
        return NumberRaisedBy([&] { ADODB::Connection().Open(connection); });
    }
};

TEST_F(DataErrors, MissingFileIsUnavailableAndNeverMade) {
    EXPECT_EQ(Opening(ConnectionTo("gone.dat")), -2147467259);
    EXPECT_FALSE(fs::exists(m_folder / "gone.dat"));
    EXPECT_EQ(Opening(ConnectionTo("no-folder\\gone.dat")), -2147467259);
    EXPECT_EQ(Opening("Data Source=C:\\gone.dat"), -2147467259);
    EXPECT_EQ(Opening("Provider=X"), -2147467259);
    EXPECT_NE(
        DescriptionRaisedBy([this] { ADODB::Connection().Open(ConnectionTo("gone.dat")); }).find("gone.dat"),
        std::string::npos);
}

TEST_F(DataErrors, FileThatIsNoDatabaseIsUnavailableAndKept) {
    WriteBytes(m_folder / "text.dat", std::string(5000, 'x'));
    WriteBytes(m_folder / "empty.dat", "");
    fs::create_directory(m_folder / "folder.dat");
    EXPECT_EQ(Opening(ConnectionTo("text.dat")), -2147467259);
    EXPECT_EQ(Opening(ConnectionTo("empty.dat")), -2147467259);
    EXPECT_EQ(Opening(ConnectionTo("folder.dat")), -2147467259);
    EXPECT_EQ(ReadBytes(m_folder / "text.dat"), std::string(5000, 'x'));
    EXPECT_EQ(ReadBytes(m_folder / "empty.dat"), "");
}

TEST_F(DataErrors, DamagedFileIsUnavailable) {
    Execute("insert into Schedule(ReportTitle) values('a')");
    std::string bytes = ReadBytes(m_folder / "live.dat");
    bytes.replace(100, bytes.size() - 100, bytes.size() - 100, '\x7f');
    WriteBytes(m_folder / "live.dat", bytes);
    EXPECT_EQ(Failing("select * from Schedule"), -2147467259);
}

TEST_F(DataErrors, MissingTable) {
    EXPECT_EQ(Failing("select * from Nowhere"), -2147217865);
    EXPECT_EQ(Failing("delete from Nowhere"), -2147217865);
    EXPECT_EQ(Failing("insert into Nowhere(a) values(1)"), -2147217865);
}

TEST_F(DataErrors, MissingColumnOrValue) {
    EXPECT_EQ(Failing("select Colour from Schedule"), -2147217904);
    EXPECT_EQ(Failing("insert into Schedule(Colour) values(1)"), -2147217904);
    EXPECT_EQ(Failing("update Schedule set Colour = 1"), -2147217904);
    EXPECT_EQ(Failing("select * from Schedule where ReportID = abc"), -2147217904);
    EXPECT_EQ(Failing("select * from Schedule where ReportTitle = \"a\""), -2147217904);
    EXPECT_EQ(Failing("select * from Schedule where ReportID = ?"), -2147217904);
}

TEST_F(DataErrors, StatementThatIsNotUnderstood) {
    for (const char* statement : {"", "  ", "-- nothing", ";", "selec 1", "insert into History values(,'a')",
                                  "select 'open", "select * from", "insert into History values(1)",
                                  "select * from Schedule where ReportTitle = 'O'Brien'", "select nofunc(1)",
                                  "select top 5 percent from Schedule limit 2"}) {
        EXPECT_EQ(Failing(statement), -2147217900) << statement;
    }
    EXPECT_EQ(Failing(std::string("select 1\0 from", 14)), -2147217900);
}

TEST_F(DataErrors, BrokenRuleOfATable) {
    Execute("insert into Schedule(Folder) values(7)");
    EXPECT_EQ(Failing("insert into Schedule(Folder) values(7)"), -2147217873);
}

TEST_F(DataErrors, FullDiskHasItsOwnError) {
    ADODB::Connection connection;
    connection.Open(m_data);
    connection.Execute("pragma max_page_count = 1");
    EXPECT_EQ(NumberRaisedBy(
                  [&] { connection.Execute("insert into History(Status) values(hex(zeroblob(9000000)))"); }),
              err::DiskFull);
    connection.Execute("insert into History(Status) values('small')");
}

TEST_F(DataErrors, SecondStatementIsRefusedAndTheFirstNotRun) {
    Execute("insert into Schedule(ReportTitle) values('kept')");
    EXPECT_EQ(Failing("delete from Schedule; delete from History"), -2147217900);
    EXPECT_EQ(Failing("delete from Schedule where ReportTitle = 'x'; delete from Schedule --'"), -2147217900);
    EXPECT_EQ(NumberRaisedBy([this] { Column("select 1; select 2"); }), -2147217900);
    EXPECT_EQ(Single("select count(*) from Schedule"), "1");
    Execute("insert into History(ReportID) values(1) ; -- one only\n /* and no more */ ; ");
    EXPECT_EQ(Single("select count(*) from History"), "1");
}

TEST_F(DataErrors, NoOtherFileIsReachedByAStatement) {
    const std::string other = (m_folder / "other.dat").string();
    EXPECT_NE(Failing("attach '" + other + "' as other"), 0);
    EXPECT_NE(Failing("vacuum into '" + other + "'"), 0);
    EXPECT_FALSE(fs::exists(other));
}

TEST_F(DataErrors, ObjectsAreOpenedOnceAndUsedOpen) {
    ADODB::Connection connection;
    EXPECT_EQ(NumberRaisedBy([&] { connection.Execute("select 1"); }), 3704);
    EXPECT_EQ(NumberRaisedBy([&] { connection.Close(); }), 3704);
    connection.Open(m_data, "", "");
    EXPECT_EQ(NumberRaisedBy([&] { connection.Open(m_data); }), 3705);
    connection.Close();
    connection.Open(m_data);
}

}  // namespace
