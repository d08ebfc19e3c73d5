// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/regfile/autostart.h"

#include <gio/gdesktopappinfo.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "platform/base/paths.h"
#include "support/temporary_folder.h"

namespace {

// Returns what a program in a folder of this name gets when the desktop starts its entry: the application's
// folder, then one argument on each line. Returns an empty text if the desktop does not load the entry.
std::string StartedByTheDesktop(const std::string& folderName) {
    const TemporaryFolder folder;
    const std::filesystem::path programs = folder / folderName;
    std::filesystem::create_directory(programs);
    const std::filesystem::path said = folder / "said";
    WriteBytes(programs / "oxc", "#!/bin/sh\nprintf '%s\\n' \"$OXC_HOME\" \"$0\" \"$@\" >'" + said.string() +
                                     ".part' && mv '" + said.string() + ".part' '" + said.string() + "'\n");
    std::filesystem::permissions(programs / "oxc", std::filesystem::perms::owner_all);
    const std::string command = "\"" + paths::FromMachine(programs / "oxc.exe") + "\" -sched";
    const std::string entry = (folder / "OXC.desktop").string();
    WriteBytes(entry,
               "[Desktop Entry]\nType=Application\nName=x\nExec=" + HomeForExec(command, programs / "oxc") +
                   DesktopExec(command, programs / "oxc") + "\n");
    GDesktopAppInfo* const info = g_desktop_app_info_new_from_filename(entry.c_str());
    if (info == nullptr) {
        return "not loaded: " + ReadBytes(entry);
    }
    const bool isStarted = g_app_info_launch(G_APP_INFO(info), nullptr, nullptr, nullptr) != FALSE;
    g_object_unref(info);
    for (int turn = 0; isStarted && turn < 500 && !std::filesystem::exists(said); ++turn) {
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    std::string text = ReadBytes(said);
    for (const std::string& known : {(programs / "oxc").string(), programs.string()}) {
        for (std::size_t at = text.find(known); at != std::string::npos; at = text.find(known)) {
            text.replace(at, known.size(), known == programs.string() ? "FOLDER" : "PROGRAM");
        }
    }
    return text;
}

TEST(Autostart, DesktopStartsTheProgramInAFolderOfAnyName) {
    for (const char* name : {"plain", "50% off", "100%", "%f%u%%", "a=b", "a;b c", "it's", "$HOME `id`",
                             "\xC3\xBC", "-x", "%= $x", "say \"x\"", "\"", "a\" -x \"b", "\"%\" `$`"}) {
        EXPECT_EQ(StartedByTheDesktop(name), "FOLDER\nPROGRAM\n-sched\n") << name;
    }
}

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

TEST(Autostart, QuoteMarkInTheFolderEndsNoPath) {
    EXPECT_EQ(DesktopExec(R"("Z:\a"b\oxc.exe" -sched)", "/opt/a\"b/oxc"), R"("/opt/a\\"b/oxc" -sched)");
    EXPECT_EQ(DesktopExec(R"("Z:\a" b\OXC.exe" -sched "x y")", "/oxc"), R"(/oxc -sched "x y")");
    EXPECT_EQ(HomeForExec(R"("Z:\no\a" b\oxc.exe" -sched)", "/oxc"), R"(env "OXC_HOME=/no/a\\" b" )");
}

TEST(Autostart, OtherProgramsKeepTheirPath) {
    EXPECT_EQ(DesktopExec(R"(Z:\no-such\tool -x)", "/oxc"), "/no-such/tool -x");
    EXPECT_EQ(DesktopExec("", "/oxc"), "");
}

TEST(Autostart, FolderThatNoEntryCanHoldIsToldAndNoEntryIsWritten) {
    for (const char* name : {"a\tb", "a\nb", "a\rb", "\x01", "\xE4"}) {
        const TemporaryFolder folder;
        testing::internal::CaptureStderr();
        WriteAutostart(folder.Path(), "OXC", "\"Z:\\" + std::string(name) + "\\oxc.exe\" -sched");
        const std::string said = testing::internal::GetCapturedStderr();
        EXPECT_NE(said.find(" The scheduler will not start with the desktop: "), std::string::npos) << said;
        EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), 1) << said;
        EXPECT_FALSE(std::filesystem::exists(folder / "autostart/OXC.desktop")) << name;
    }
    EXPECT_EQ(StartedByTheDesktop("\x7F"), "FOLDER\nPROGRAM\n-sched\n");
}

TEST(Autostart, MachinesConfigurationIsOfAServiceAndGetsNoEntry) {
    const std::filesystem::path entry = "/etc/autostart/oxbow-courier-test.desktop";
    WriteAutostart("/etc", "oxbow-courier-test", "oxc.exe -sched");
    EXPECT_FALSE(std::filesystem::remove(entry));
}

TEST(Autostart, EntryIsWholeAndReplaced) {
    const TemporaryFolder folder;
    WriteAutostart(folder.Path(), "OXC", "oxc.exe -old");
    WriteAutostart(folder.Path(), "OXC", "\"Z:\\app\\oxc.exe\" -sched");
    const std::string entry = ReadBytes(folder / "autostart/OXC.desktop");
    EXPECT_EQ(entry.find("[Desktop Entry]\nType=Application\nName=Oxbow Courier\n"), 0U);
    EXPECT_NE(entry.find("oxc -sched\n"), std::string::npos) << entry;
    EXPECT_EQ(entry.find("-old"), std::string::npos);
}

}  // namespace

namespace {

// Sets the region of the process and removes it again.
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
    WriteAutostart(folder.Path(), "OXC", Own);
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
