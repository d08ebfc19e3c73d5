// SPDX-License-Identifier: GPL-3.0-or-later
#include <sys/stat.h>

#include <filesystem>

#include "data_fixture.h"
#include "platform/contracts/files.h"

namespace {

namespace fs = std::filesystem;

class DataFile : public DataFixture {
 protected:
    void CopyBlank(const std::string& to) const {
        Scripting::FileSystemObject().GetFile(Name("blank.dat")).Copy(Name(to));
    }
    std::string Name(const std::string& name) const { return paths::FromMachine(m_folder / name); }
};

TEST_F(DataFile, KeysAreNeverUsedTwice) {
    Execute("insert into Schedule(ReportTitle) values('a')");
    Execute("insert into Schedule(ReportTitle) values('b')");
    Execute("delete from Schedule");
    Execute("insert into Schedule(ReportTitle) values('c')");
    EXPECT_EQ(Single("select max(ReportID) from Schedule"), "3");
}

TEST_F(DataFile, LiesInOneFileOnceItIsClosed) {
    Execute("insert into Schedule(ReportTitle) values('a')");
    EXPECT_FALSE(fs::exists(m_folder / "live.dat-wal"));
    EXPECT_NE(ReadBytes(m_folder / "live.dat").find("SQLite format 3"), std::string::npos);
}

TEST_F(DataFile, LogBesideItIsForItsOwnerOnlyAsItIs) {
    fs::permissions(m_folder / "live.dat", fs::perms::owner_read | fs::perms::owner_write);
    ADODB::Connection connection;
    connection.Open(m_data);
    connection.Execute("insert into Schedule(ReportTitle) values('a')");
    struct stat status {};
    ASSERT_EQ(stat((m_folder / "live.dat-wal").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600U);
}

// The process that used the live file is killed, a user deletes the file, and a blank one is copied again.
TEST_F(DataFile, FreshCopyDoesNotMeetTheRowsOfTheOneBefore) {
    MakeFile("blank.dat", "create table T(A text collate nocase)");
    CopyBlank("new.dat");
    m_data = ConnectionTo("new.dat");
    {
        ADODB::Connection open;
        open.Open(m_data);
        open.Execute("insert into T values('old')");
        fs::copy(m_folder / "new.dat-wal", m_folder / "kept-wal");
    }
    fs::remove(m_folder / "new.dat");
    fs::rename(m_folder / "kept-wal", m_folder / "new.dat-wal");
    CopyBlank("new.dat");
    EXPECT_EQ(Single("select count(*) from T"), "0");
}

TEST_F(DataFile, OpenReaderOfADeletedFileDoesNotHarmTheFreshCopy) {
    MakeFile("blank.dat", "create table T(A text collate nocase)");
    CopyBlank("new.dat");
    m_data = ConnectionTo("new.dat");
    ADODB::Connection former;
    former.Open(m_data);
    former.Execute("insert into T values('old')");
    fs::remove(m_folder / "new.dat");
    CopyBlank("new.dat");
    Execute("insert into T values('fresh')");
    former.Close();
    EXPECT_EQ(Single("select A from T"), "fresh");
    EXPECT_EQ(Single("pragma integrity_check"), "ok");
}

}  // namespace
