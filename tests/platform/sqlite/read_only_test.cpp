// SPDX-License-Identifier: GPL-3.0-or-later
// A data file that the user may not write, opened to read.
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "data_fixture.h"

namespace {

namespace fs = std::filesystem;

// Root may write everywhere, so it becomes nobody for a while.
class OtherUser {
 public:
    OtherUser() : m_isRoot(geteuid() == 0) { Become(65534); }
    ~OtherUser() { Become(0); }
    OtherUser(const OtherUser&) = delete;
    OtherUser& operator=(const OtherUser&) = delete;

 private:
    void Become(uid_t user) const {
        if (m_isRoot) {
            EXPECT_EQ(seteuid(user), 0);
        }
    }
    bool m_isRoot;
};

class ReadOnlyFile : public DataFixture {
 protected:
    ReadOnlyFile() {
        m_data = ConnectionTo(Name);
        fs::rename(m_folder / "live.dat", m_folder / Name);
        Execute("insert into Schedule(ReportTitle) values('a'), ('b')");
        Allow(0555, 0444);
    }
    ~ReadOnlyFile() override { Allow(0755, 0644); }
    void Allow(mode_t folder, mode_t file) const {
        chmod(m_folder.Path().c_str(), folder);
        chmod((m_folder / Name).c_str(), file);
    }
    std::size_t FilesInFolder() const {
        return static_cast<std::size_t>(std::distance(fs::directory_iterator(m_folder.Path()), {}));
    }
    std::string ToRead() const { return "Mode=Read;" + m_data; }

    static constexpr const char* Name = "100% odd?mode=rw#1.dat";
};

TEST_F(ReadOnlyFile, IsReadUnderAnyName) {
    const OtherUser nobody;
    ADODB::Recordset rows;
    rows.Open("select count(*) from Schedule", ToRead());
    EXPECT_EQ(rows.Fields(0).Value.Text(), "2");
    EXPECT_EQ(FilesInFolder(), 1U);
}

TEST_F(ReadOnlyFile, IsNotWritten) {
    const OtherUser nobody;
    ADODB::Connection connection;
    connection.Open(ToRead());
    EXPECT_EQ(DescriptionRaisedBy([&] { connection.Execute("delete from Schedule"); }),
              "The data file \"" + (m_folder / Name).string() +
                  "\" is write-protected; attempt to write a readonly database");
    EXPECT_EQ(FilesInFolder(), 1U);
}

TEST_F(ReadOnlyFile, IsReportedIfItIsWrittenMeanwhile) {
    ADODB::Recordset rows;
    {
        const OtherUser nobody;
        rows.Open("select ReportTitle from Schedule", ToRead());
    }
    Allow(0755, 0644);
    Execute("insert into Schedule(ReportTitle) values('c')");
    rows.MoveNext();
    EXPECT_EQ(DescriptionRaisedBy([&] { rows.MoveNext(); }),
              "The data file \"" + (m_folder / Name).string() +
                  "\" was written by another program while it was read");
}

TEST_F(ReadOnlyFile, IsOpenedToWriteByAUserWhoMay) {
    Allow(0755, 0644);
    ADODB::Connection connection;
    connection.Open(ToRead());
    connection.Execute("delete from Schedule");
    connection.Close();
    EXPECT_EQ(Single("select count(*) from Schedule"), "0");
}

}  // namespace
