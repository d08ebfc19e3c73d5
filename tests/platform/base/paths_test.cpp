// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/base/paths.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>
#include <string>

#include "platform/base/convert.h"
#include "support/raises.h"
#include "support/temporary_folder.h"

namespace {

namespace fs = std::filesystem;

TEST(Paths, BackslashesAndTheDriveAreTheMachinesRoot) {
    EXPECT_EQ(paths::ToMachine("Z:\\no-such\\Out\\a.pdf"), "/no-such/Out/a.pdf");
    EXPECT_EQ(paths::ToMachine("z:/no-such/a"), "/no-such/a");
    EXPECT_EQ(paths::ToMachine("\\no-such\\a"), "/no-such/a");
    EXPECT_EQ(paths::ToMachine("/no-such/out/"), "/no-such/out/");
    EXPECT_EQ(paths::ToMachine("\\\\no-such\\\\share"), "/no-such/share");
    EXPECT_EQ(paths::ToMachine("no-such-folder\\b"), "no-such-folder/b");
}

TEST(Paths, OtherDrivesAreNotFound) {
    EXPECT_EQ(NumberRaisedBy([] { paths::ToMachine("C:\\Reports\\o'neill.rpt"); }), 76);
    EXPECT_NE(DescriptionRaisedBy([] { paths::ToMachine("C:\\a.rpt"); }).find("C:\\a.rpt"),
              std::string::npos);
    EXPECT_EQ(NumberRaisedBy([] { paths::ToMachine(std::string("Z:\\a\0b", 6)); }), 76);
}

TEST(Paths, NamesAreFoundWithoutRegardToCase) {
    const TemporaryFolder folder;
    fs::create_directories(folder / "Reports/Übersicht");
    WriteBytes(folder / "Reports/Übersicht/Sales.RPT", "x");
    const std::string start = paths::FromMachine(folder.Path());
    EXPECT_EQ(paths::ToMachine(start + "\\reports\\üBERSICHT\\sales.rpt"),
              folder / "Reports/Übersicht/Sales.RPT");
    EXPECT_EQ(paths::ToMachine(start + "\\REPORTS\\new.rpt"), folder / "Reports/new.rpt");
    EXPECT_EQ(paths::ToMachine(start + "\\REPORTS\\"), folder / "Reports/");
}

TEST(Paths, SpellingOnDiskWinsOverLikeNames) {
    const TemporaryFolder folder;
    WriteBytes(folder / "b.rpt", "lower");
    WriteBytes(folder / "B.rpt", "upper");
    const std::string start = paths::FromMachine(folder.Path());
    EXPECT_EQ(paths::ToMachine(start + "\\b.rpt"), folder / "b.rpt");
    EXPECT_EQ(paths::ToMachine(start + "\\B.rpt"), folder / "B.rpt");
    EXPECT_EQ(paths::ToMachine(start + "\\b.RPT"), folder / "B.rpt");
}

TEST(Paths, MachinePathsBecomeTheSystems) {
    EXPECT_EQ(paths::FromMachine("/home/ann/sales.rpt"), "Z:\\home\\ann\\sales.rpt");
    EXPECT_EQ(paths::FromMachine("/srv/out/"), "Z:\\srv\\out\\");
    EXPECT_EQ(paths::FromMachine("a.rpt"), paths::FromMachine(fs::current_path() / "a.rpt"));
}

TEST(Paths, PeopleReadAndWriteThemAsTheMachineDoes) {
    EXPECT_EQ(paths::ForUser("Z:\\home\\ann\\sales.rpt"), "/home/ann/sales.rpt");
    EXPECT_EQ(paths::ForUser("Z:\\srv\\out\\"), "/srv/out/");
    EXPECT_EQ(paths::ForUser("Z:\\"), "/");
    EXPECT_EQ(paths::FromUser("/home/ann/sales.rpt"), "Z:\\home\\ann\\sales.rpt");
    EXPECT_EQ(paths::FromUser("/"), "Z:\\");
}

TEST(Paths, TextsThatWouldNotComeBackAsTheyWereAreShownUnchanged) {
    for (const char* text :
         {"", "Z:", "z:\\a", "\\srv\\out\\", "C:\\Reports\\a.rpt", "Z:\\a/b", "Cache\\a.rpt"}) {
        EXPECT_EQ(paths::ForUser(text), text);
        EXPECT_EQ(paths::FromUser(text), text);
    }
}

class Environment : public testing::Test {
 protected:
    Environment() {
        for (const char* name : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "OXC_HOME"}) {
            unsetenv(name);
        }
        setenv("HOME", m_folder.Path().c_str(), 1);
        SetAppPath("");
    }
    ~Environment() override { SetAppPath(""); }

    TemporaryFolder m_folder;
};

TEST_F(Environment, ConfigFolderIsMadeForItsOwnerOnly) {
    EXPECT_EQ(ConfigFolder(), m_folder / ".config/oxbow-courier");
    struct stat status {};
    ASSERT_EQ(stat(ConfigFolder().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0700U);
}

TEST_F(Environment, BaseFoldersOfTheDesktopCountWhenTheyAreAbsolute) {
    setenv("XDG_CONFIG_HOME", (m_folder / "conf").c_str(), 1);
    setenv("XDG_DATA_HOME", "relative/data", 1);
    EXPECT_EQ(ConfigFolder(), m_folder / "conf/oxbow-courier");
    EXPECT_EQ(DataHome(), m_folder / ".local/share");
}

TEST_F(Environment, AppPathIsTheGivenFolderWithoutABackslashAtItsEnd) {
    setenv("OXC_HOME", (m_folder.Path().string() + "/app/").c_str(), 1);
    EXPECT_EQ(AppPath(), paths::FromMachine(m_folder / "app"));
}

TEST_F(Environment, AppPathIsMadeInTheUsersDataWhenNoneIsGiven) {
    EXPECT_EQ(AppPath(), paths::FromMachine(m_folder / ".local/share/oxbow-courier"));
    EXPECT_TRUE(fs::is_directory(m_folder / ".local/share/oxbow-courier/Cache"));
    EXPECT_TRUE(fs::is_directory(m_folder / ".local/share/oxbow-courier/output"));
    struct stat status {};
    ASSERT_EQ(stat((m_folder / ".local/share/oxbow-courier").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0700U);
}

TEST_F(Environment, TestsMaySetTheAppPath) {
    SetAppPath("Z:\\srv\\app\\");
    EXPECT_EQ(AppPath(), "Z:\\srv\\app");
}

}  // namespace
