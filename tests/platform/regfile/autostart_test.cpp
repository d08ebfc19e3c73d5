#include "platform/regfile/autostart.h"

#include <gio/gdesktopappinfo.h>
#include <gtest/gtest.h>

#include <chrono>
#include <thread>

#include "platform/paths.h"
#include "support/temporary_folder.h"

namespace {

// What a program in a folder of this name is given when the desktop starts its entry: the folder of the
// application, and the arguments a line each. Empty when the desktop does not load the entry.
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
                             "\xC3\xBC", "-x", "%= $x"}) {
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
