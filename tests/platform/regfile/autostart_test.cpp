#include "platform/regfile/autostart.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>
#include <string>
#include <utility>
#include <vector>

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

namespace {

// The region of the process, and nothing of it afterwards.
class Region {
 public:
    Region(const char* all, const char* time, const char* lang) {
        Set("LC_ALL", all);
        Set("LC_TIME", time);
        Set("LANG", lang);
    }
    ~Region() {
        for (const auto& [name, value] : m_before) {
            value ? setenv(name, value->c_str(), 1) : unsetenv(name);
        }
    }
    Region(const Region&) = delete;
    Region& operator=(const Region&) = delete;

 private:
    void Set(const char* name, const char* value) {
        const char* before = std::getenv(name);
        m_before.emplace_back(name, before == nullptr ? std::nullopt : std::optional<std::string>(before));
        value == nullptr ? unsetenv(name) : setenv(name, value, 1);
    }
    std::vector<std::pair<const char*, std::optional<std::string>>> m_before;
};

constexpr const char* Own = R"("Z:\app\oxc.exe" -sched)";

}  // namespace

TEST(Autostart, SchedulerStartsInTheRegionOfTheEditor) {
    const auto exec = [](const char* all, const char* time, const char* lang) {
        const Region region(all, time, lang);
        return RegionForExec(Own);
    };
    EXPECT_EQ(exec("en_US.UTF-8", "de_DE.UTF-8", "tr_TR.UTF-8"), "env LC_ALL=en_US.UTF-8 ");
    EXPECT_EQ(exec(nullptr, "de_DE.UTF-8", "tr_TR.UTF-8"), "env LC_TIME=de_DE.UTF-8 LANG=tr_TR.UTF-8 ");
    EXPECT_EQ(exec("", nullptr, "de_DE@euro"), "env LANG=de_DE@euro ");
    EXPECT_EQ(exec(nullptr, nullptr, nullptr), "env LC_ALL=C.UTF-8 ");
    EXPECT_EQ(exec("x y\"$z\nTerminal=true", nullptr, nullptr), R"(env "LC_ALL=x y\\"\\$z Terminal=true" )");
}

TEST(Autostart, RegionIsTheSystemsOwnProgramsOnly) {
    const Region region("en_US.UTF-8", nullptr, nullptr);
    EXPECT_EQ(RegionForExec(R"(Z:\bin\other -x)"), "");
    EXPECT_EQ(RegionForExec(""), "");
}

TEST(Autostart, EntryNamesTheRegion) {
    const Region region(nullptr, nullptr, "en_US.UTF-8");
    const TemporaryFolder folder;
    WriteAutostart(folder / "autostart", "OXC", Own);
    const std::string entry = ReadBytes(folder / "autostart/OXC.desktop");
    EXPECT_NE(entry.find("\nExec=env LANG=en_US.UTF-8 "), std::string::npos) << entry;
    EXPECT_NE(entry.find("oxc -sched\n"), std::string::npos) << entry;
}

TEST(Autostart, FolderThatTheProgramWouldNotFindIsNamed) {
    EXPECT_EQ(HomeForExec(R"("Z:\srv\press room\oxc.exe" -sched)", "/opt/oxc/bin/oxc"),
              "env \"OXC_HOME=/srv/press room\" ");
    EXPECT_EQ(HomeForExec("oxc.exe -sched", "/opt/oxc/bin/oxc"), "");
    EXPECT_EQ(HomeForExec(R"(Z:\bin\other -x)", "/opt/oxc/bin/oxc"), "");
    EXPECT_EQ(HomeForExec("\"" + paths::FromMachine(DataHome() / "oxbow-courier" / "oxc.exe") + "\" -sched",
                          "/opt/oxc/bin/oxc"),
              "");
}
