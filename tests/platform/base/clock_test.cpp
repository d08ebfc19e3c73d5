// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/contracts/clock.h"

#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cmath>
#include <cstdlib>
#include <ctime>
#include <string>

namespace {

// Restores the time zone of the tests.
class MachineClock : public testing::Test {
 protected:
    void SetUp() override {
        const char* const given = std::getenv("TZ");
        m_hadZone = given != nullptr;
        m_zone = m_hadZone ? given : "";
    }
    void TearDown() override {
        m_hadZone ? setenv("TZ", m_zone.c_str(), 1) : unsetenv("TZ");
        tzset();
    }
    // Returns by how many minutes the machine's clock is ahead of UTC.
    static double MinutesAhead() {
        const DateValue epoch = DateSerial(1970, 1, 1);
        return (Now().Seconds() - epoch.Seconds() - std::time(nullptr)) / 60.0;
    }

 private:
    bool m_hadZone = false;
    std::string m_zone;
};

TEST_F(MachineClock, ChangedTimeZoneIsSeenAtTheNextLook) {
    setenv("TZ", "UTC0", 1);
    EXPECT_NEAR(MinutesAhead(), 0, 0.1);
    setenv("TZ", "Asia/Kolkata", 1);
    EXPECT_NEAR(MinutesAhead(), 330, 0.1);
    setenv("TZ", "America/Phoenix", 1);
    EXPECT_NEAR(MinutesAhead(), -420, 0.1);
}

// The machine's own zone is put in place of another for this test alone, in a file system of its own.
TEST_F(MachineClock, ChangedZoneOfTheMachineIsSeenAtTheNextLook) {
    constexpr int NoMount = 77;
    const auto change = [] {
        unsetenv("TZ");
        const auto put = [](const char* zone) {
            const std::string file = std::string("/usr/share/zoneinfo/") + zone;
            return mount(file.c_str(), "/etc/localtime", nullptr, MS_BIND, nullptr) == 0;
        };
        if (unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0 || !put("Asia/Kolkata")) {
            std::_Exit(NoMount);
        }
        const double before = MinutesAhead();
        const bool isPut = put("America/Phoenix");
        const double after = MinutesAhead();
        std::_Exit(!isPut ? NoMount : std::lround(before) == 330 && std::lround(after) == -420 ? 0 : 1);
    };
    const pid_t child = fork();
    if (child == 0) {
        change();
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    if (WIFEXITED(status) && WEXITSTATUS(status) == NoMount) {
        GTEST_SKIP() << "needs a mount of its own, which is not allowed here";
    }
    EXPECT_EQ(status, 0);
}

TEST_F(MachineClock, MomentsAreInTheZoneThatHolds) {
    setenv("TZ", "UTC0", 1);
    EXPECT_EQ(InMachineZone(0).offset, 0);
    setenv("TZ", "Asia/Kolkata", 1);
    EXPECT_EQ(InMachineZone(0).offset, 330 * 60);
}

}  // namespace
