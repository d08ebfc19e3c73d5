// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/contracts/stop_gate.h"

#include <gtest/gtest.h>

#include <unistd.h>
#include <string>

#include "platform/contracts/process.h"

namespace {

// A stop cannot be taken back, so each case has a process of its own. Its exit code is 0 when the gate ended
// it.
class StopGateDeath : public testing::Test {
 protected:
    static void Say(const char* word) {
        [[maybe_unused]] const auto written = ::write(STDERR_FILENO, word, 1);
    }
};

TEST_F(StopGateDeath, WithoutAMailAStopEndsAtOnce) {
    const auto run = [] {
        const StopGate::Work work;
        ::_exit(TheStopGate().Ask() ? 7 : 8);
    };
    EXPECT_EXIT(run(), testing::ExitedWithCode(7), "");
}

TEST_F(StopGateDeath, MailOutsideOfWorkHoldsNothingUp) {
    const auto run = [] {
        TheStopGate().MailBegins();
        ::_exit(TheStopGate().Ask() ? 7 : 8);
    };
    EXPECT_EXIT(run(), testing::ExitedWithCode(7), "");
}

TEST_F(StopGateDeath, MailHoldsTheStopUntilItIsRecorded) {
    const auto run = [] {
        StopGate::Work work;
        TheStopGate().MailBegins();
        Say(TheStopGate().Ask() ? "n" : "w");
        Say("r");
        work.Recorded();
        ::_exit(8);
    };
    EXPECT_EXIT(run(), testing::ExitedWithCode(0), "^wr$");
}

TEST_F(StopGateDeath, EndOfTheWorkEndsTheProcessToo) {
    const auto run = [] {
        {
            const StopGate::Work work;
            TheStopGate().MailBegins();
            TheStopGate().Ask();
            TheStopGate().MailBegins();  // the alert about the first
            Say("a");
        }
        ::_exit(8);
    };
    EXPECT_EXIT(run(), testing::ExitedWithCode(0), "^a$");
}

TEST_F(StopGateDeath, WorkInsideOfOtherWorkLeavesTheMailOfTheOuterOneHeld) {
    const auto run = [] {
        StopGate::Work work;
        TheStopGate().MailBegins();
        {
            StopGate::Work inner;
            inner.Recorded();
        }
        Say(TheStopGate().Ask() ? "n" : "w");
        work.Recorded();
        ::_exit(8);
    };
    EXPECT_EXIT(run(), testing::ExitedWithCode(0), "^w$");
}

TEST_F(StopGateDeath, RecordedMailHoldsNothingUpAnyMore) {
    const auto run = [] {
        StopGate::Work work;
        TheStopGate().MailBegins();
        work.Recorded();
        ::_exit(TheStopGate().Ask() ? 7 : 8);
    };
    EXPECT_EXIT(run(), testing::ExitedWithCode(7), "");
}

TEST_F(StopGateDeath, TheProgramSaysHowItEnds) {
    const auto run = [] {
        TheStopGate().OnEnd([] { ::_exit(9); });
        StopGate::Work work;
        TheStopGate().MailBegins();
        TheStopGate().Ask();
        work.Recorded();
    };
    EXPECT_EXIT(run(), testing::ExitedWithCode(9), "");
}

}  // namespace
