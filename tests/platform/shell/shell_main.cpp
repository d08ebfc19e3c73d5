// SPDX-License-Identifier: GPL-3.0-or-later
// The desktop of the tests: applications and associations in folders that only the tests see. A process reads
// them once, so they are set before the first test.
#include <gtest/gtest.h>

#include <QApplication>
#include <cstdlib>

#include "support/temporary_folder.h"

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    const TemporaryFolder desktop;
    std::filesystem::permissions(desktop.Path(), std::filesystem::perms(0755));
    setenv("OXC_TEST_DESKTOP", desktop.Path().c_str(), 1);
    setenv("HOME", desktop.Path().c_str(), 1);
    setenv("XDG_DATA_HOME", (desktop / "data").c_str(), 1);
    setenv("XDG_CONFIG_HOME", (desktop / "config").c_str(), 1);
    setenv("XDG_CONFIG_DIRS", (desktop / "none").c_str(), 1);
    // Only the machine's file types, not its applications.
    setenv("XDG_DATA_DIRS", (desktop / "share").c_str(), 1);
    std::filesystem::create_directory(desktop / "share");
    std::filesystem::create_directory_symlink("/usr/share/mime", desktop / "share/mime");
    unsetenv("XDG_CURRENT_DESKTOP");
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    const auto applications = desktop / "data/applications";
    std::filesystem::create_directories(applications);
    std::filesystem::create_directories(desktop / "config");
    // Writes its arguments, its folder and the given files; the output appears complete or not at all.
    WriteBytes(
        desktop / "viewer",
        "#!/bin/sh\n"
        "out=\"" +
            (desktop / "opened").string() +
            "\"\n"
            "{ echo \"$1\"; pwd; ls /proc/$$/fd | tr '\\n' ' '; echo; echo \"$$\"; ps -o ppid=,sid= -p $$; "
            "} > \"$out.part\"\n"
            "mv \"$out.part\" \"$out\"\n"
            "[ -z \"$2\" ] || sleep \"$2\"\n");
    std::filesystem::permissions(desktop / "viewer", std::filesystem::perms(0755));
    const auto entry = [&](const std::string& name, const std::string& types, const std::string& command) {
        WriteBytes(applications / (name + ".desktop"), "[Desktop Entry]\nType=Application\nName=" + name +
                                                           "\nExec=" + command + "\nMimeType=" + types +
                                                           "\n");
    };
    entry("viewer", "text/csv;x-scheme-handler/https;", (desktop / "viewer").string() + " %u");
    entry("gone", "image/x-tga;", (desktop / "no-such-program").string() + " %f");
    entry("unclosed", "image/bmp;", (desktop / "viewer").string() + " \"%f");
    entry("nothing", "image/gif;", "");
    WriteBytes(desktop / "config/mimeapps.list",
               "[Default Applications]\ntext/csv=viewer.desktop\nx-scheme-handler/https=viewer.desktop\n"
               "image/x-tga=gone.desktop\nimage/bmp=unclosed.desktop\nimage/gif=nothing.desktop\n");
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
