#include "platform/regfile/autostart.h"

#include <gtest/gtest.h>

#include "platform/paths.h"

#include "support/temporary_folder.h"

namespace {

TEST(Autostart, OwnProgramIsTheInstalledOne) {
    EXPECT_EQ(DesktopExec(R"("Z:\home\ann\app\oxc.exe" -sched)", "/opt/oxc/bin/oxc"),
              "/opt/oxc/bin/oxc -sched");
    EXPECT_EQ(DesktopExec(R"(Z:\app\OXC.EXE -sched)", "/opt/oxc"), "/opt/oxc -sched");
}

TEST(Autostart, ArgumentsAreQuotedByTheRulesOfDesktopEntries) {
    EXPECT_EQ(DesktopExec(R"(oxc.exe "a b" 5% $x `y`)", "/my programs/oxc"),
              R"("/my programs/oxc" "a b" "5%%" "\\$x" "\\`y\\`")");
    EXPECT_EQ(DesktopExec(R"(oxc.exe a\b)", "/oxc"), R"(/oxc "a\\\\b")");
    EXPECT_EQ(DesktopExec("oxc.exe a\nExec=evil", "/oxc"), "/oxc \"a Exec=evil\"");
}

TEST(Autostart, OtherProgramsKeepTheirPath) {
    EXPECT_EQ(DesktopExec(R"(Z:\no-such\tool -x)", "/oxc"), "/no-such/tool -x");
    EXPECT_EQ(DesktopExec("", "/oxc"), "");
}

TEST(Autostart, EntryIsWholeAndReplaced) {
    const TemporaryFolder folder;
    WriteAutostart(folder / "autostart", "OXC", "oxc.exe -old");
    WriteAutostart(folder / "autostart", "OXC", "\"Z:\\app\\oxc.exe\" -sched");
    const std::string entry = ReadBytes(folder / "autostart/OXC.desktop");
    EXPECT_EQ(entry.find("[Desktop Entry]\nType=Application\nName=Oxbow Courier\n"), 0U);
    EXPECT_NE(entry.find("oxc -sched\n"), std::string::npos) << entry;
    EXPECT_EQ(entry.find("-old"), std::string::npos);
}

}  // namespace

TEST(Autostart, FolderThatTheProgramWouldNotFindIsNamed) {
    EXPECT_EQ(HomeForExec(R"("Z:\srv\press room\oxc.exe" -sched)", "/opt/oxc/bin/oxc"),
              "env \"OXC_HOME=/srv/press room\" ");
    EXPECT_EQ(HomeForExec("oxc.exe -sched", "/opt/oxc/bin/oxc"), "");
    EXPECT_EQ(HomeForExec(R"(Z:\bin\other -x)", "/opt/oxc/bin/oxc"), "");
    EXPECT_EQ(HomeForExec("\"" + paths::FromMachine(DataHome() / "oxbow-courier" / "oxc.exe") + "\" -sched",
                          "/opt/oxc/bin/oxc"),
              "");
}
