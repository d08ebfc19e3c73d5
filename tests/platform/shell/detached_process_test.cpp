// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/shell/detached_process.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <fstream>
#include <thread>

#include "support/temporary_folder.h"

namespace {

namespace fs = std::filesystem;

class DetachedProcess : public testing::Test {
 protected:
    fs::path Program(const std::string& text, int mode = 0755) const {
        WriteBytes(folder / "program", text);
        fs::permissions(folder / "program", fs::perms(mode));
        return folder / "program";
    }
    // Returns what a program wrote into `out`, once it exists.
    std::string Written() const {
        for (int tries = 0; tries < 500 && !fs::exists(folder / "out"); ++tries) {
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        return ReadBytes(folder / "out");
    }
    // A script that runs `commands` with its output in `out`, which appears complete.
    fs::path Script(const std::string& commands) const {
        const std::string out = (folder / "out").string();
        return Program("#!/bin/sh\n{ " + commands + "; } > " + out + ".part 2>&1\nmv " + out + ".part " +
                       out + "\n");
    }
    TemporaryFolder folder;
};

}  // namespace

TEST_F(DetachedProcess, GetsItsArgumentsAsTheyAre) {
    ASSERT_EQ(StartDetached(Script("printf '%s|' \"$@\""), {"a b", "", "$HOME;'x'"}, {}), 0);
    EXPECT_EQ(Written(), "a b||$HOME;'x'|");
}

TEST_F(DetachedProcess, GetsVariablesBesideThoseOfItsParent) {
    setenv("OXC_TEST_KEPT", "kept", 1);
    setenv("OXC_TEST_OTHER", "before", 1);
    ASSERT_EQ(
        StartDetached(Script("echo $OXC_TEST_KEPT; echo $OXC_TEST_OTHER"), {}, {}, {"OXC_TEST_OTHER=a b"}),
        0);
    EXPECT_EQ(Written(), "kept\na b\n");
    unsetenv("OXC_TEST_KEPT");
    unsetenv("OXC_TEST_OTHER");
}

TEST_F(DetachedProcess, StartsInTheFolderGiven) {
    ASSERT_EQ(StartDetached(Script("pwd"), {}, "/usr"), 0);
    EXPECT_EQ(Written(), "/usr\n");
}

TEST_F(DetachedProcess, HasASessionOfItsOwnAndNoFileOfItsParent) {
    // Two files without CLOEXEC, which a child would inherit.
    const int low = open("/dev/null", O_RDONLY);
    const int high = fcntl(low, F_DUPFD, 200);
    ASSERT_EQ(StartDetached(Script("cut -d' ' -f6 /proc/$$/stat; readlink /proc/$$/fd/0; "
                                   "for n in " +
                                   std::to_string(low) + " " + std::to_string(high) +
                                   "; do [ -e /proc/$$/fd/$n ] && echo inherited; done; true"),
                            {}, {}),
              0);
    close(low);
    close(high);
    const std::string lines = Written();
    EXPECT_NE(lines.substr(0, lines.find('\n')), std::to_string(getsid(0)));
    EXPECT_EQ(lines.substr(lines.find('\n')), "\n/dev/null\n");
}

TEST_F(DetachedProcess, LeavesNoZombie) {
    ASSERT_EQ(StartDetached(Script("true"), {}, {}), 0);
    Written();
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
    EXPECT_EQ(errno, ECHILD);
}

TEST_F(DetachedProcess, SaysWhyItCouldNotStart) {
    EXPECT_EQ(StartDetached(folder / "missing", {}, {}), ENOENT);
    EXPECT_EQ(StartDetached(Program("neither script nor program"), {}, {}), ENOEXEC);
    EXPECT_EQ(StartDetached(Program("#!/bin/sh\n", 0644), {}, {}), EACCES);
    EXPECT_EQ(StartDetached(Program("#!/no/such/interpreter\n"), {}, {}), ENOENT);
    EXPECT_EQ(StartDetached(Script("true"), {}, "/no/such/folder"), ENOENT);
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "a failed start leaves no zombie either";
}
