// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <string>

#include "platform/contracts/clock.h"
#include "platform/contracts/loop.h"
#include "platform/contracts/mapi.h"
#include "platform/contracts/process.h"
#include "platform/contracts/prompts.h"
#include "platform/contracts/registry.h"
#include "platform/contracts/shell.h"
#include "support/raises.h"

namespace {

class FixedClock : public Clock {
 public:
    DateValue Now() const override { return DateValue::FromDays(37322.5); }
};

TEST(Services, ClockCanBeReplacedAndRestored) {
    const FixedClock fixed;
    SetClock(&fixed);
    EXPECT_EQ(Today(), DateSerial(2002, 3, 7));
    EXPECT_EQ(TimeOfDay(), TimeSerial(12, 0, 0));
    SetClock(nullptr);
    EXPECT_GT(Now(), DateSerial(2020, 1, 1));
}

TEST(Services, OnesThatOnlyTheProgramCanGiveAreNotSet) {
    EXPECT_EQ(NumberRaisedBy([] { TheRegistry(); }), 91);
    EXPECT_EQ(NumberRaisedBy([] { TheShell(); }), 91);
    EXPECT_EQ(NumberRaisedBy([] { MAPI::TheMailSystem(); }), 91);
}

TEST(Services, BoxWithNobodyThereIsOneLineAndIsAnswered) {
    const FixedClock fixed;
    SetClock(&fixed);
    testing::internal::CaptureStderr();
    EXPECT_EQ(MsgBox("Two\nlines", vbCritical), vbOK);
    EXPECT_EQ(MsgBox("Sure?", vbYesNo + vbQuestion, ""), vbYes);
    EXPECT_EQ(InputBox("Name", "Title", "preset"), "preset");
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "2002-03-07 12:00:00 Oxbow Courier: Two lines\n2002-03-07 12:00:00 Oxbow Courier: Sure?\n"
              "2002-03-07 12:00:00 Title: Name\n");
    SetClock(nullptr);
}

TEST(Services, LoopWithoutAProgramReturns) {
    DoEvents();
    TheLoop().YieldFor(0.001);
    TheLoop().YieldFor(-1);
}

TEST(Services, CommandLineIsKept) {
    SetCommand("-sched");
    EXPECT_EQ(Command(), "-sched");
    SetCommand("");
}

TEST(Services, ProcessEndsAtOnce) {
    EXPECT_EXIT(TheProcess().End(3), testing::ExitedWithCode(3), "");
}

}  // namespace
