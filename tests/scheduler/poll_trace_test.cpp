// SPDX-License-Identifier: GPL-3.0-or-later
#include "scheduler/PollTrace.h"

#include <gtest/gtest.h>

#include "scheduler/RunLog.h"
#include "shared/Global.h"
#include "support/database.h"
#include "support/fakes.h"
#include "support/temporary_folder.h"

namespace {

class PollTraceFile : public testing::Test {
 protected:
    PollTraceFile() { Global::PollSeconds = 15; }

    std::filesystem::path File() const { return database.Folder() / "PressroomLive.polled"; }

    fakes::FakeClock clock{fakes::At(2026, 11, 21, 7, 0, 3)};
    fakes::TestDatabase database;
};

}  // namespace

TEST_F(PollTraceFile, HoldsTheEndOfThePollAndTheInterval) {
    EXPECT_FALSE(Global::ReadPollTrace().has_value());
    Global::WritePollTrace();
    const std::string seconds = std::to_string(clock.Moment().seconds);
    EXPECT_EQ(ReadBytes(File()), seconds + " 15 0\n");
    const auto trace = Global::ReadPollTrace();
    ASSERT_TRUE(trace.has_value());
    EXPECT_EQ(trace->moment, clock.Moment().seconds);
    EXPECT_EQ(trace->seconds, 15);
    EXPECT_EQ(trace->undelivered, 0);
    EXPECT_TRUE(database.TakeStatements().empty());
}

TEST_F(PollTraceFile, ThatCannotBeWrittenEndsNoPoll) {
    std::filesystem::create_directories(File() / "taken");
    Global::WritePollTrace();
    EXPECT_FALSE(Global::ReadPollTrace().has_value());
}

TEST_F(PollTraceFile, CountsTheMailsOfThisPollThatFailed) {
    Global::RunLog::Instance().PollBegins();
    Global::RunLog::Instance().Undelivered();
    Global::RunLog::Instance().Undelivered();
    Global::WritePollTrace();
    ASSERT_TRUE(Global::ReadPollTrace().has_value());
    EXPECT_EQ(Global::ReadPollTrace()->undelivered, 2);
    Global::RunLog::Instance().PollBegins();
    Global::WritePollTrace();
    EXPECT_EQ(Global::ReadPollTrace()->undelivered, 0);
    Global::RunLog::Instance().PollEnds();
}

TEST_F(PollTraceFile, IsReadWithFewerAndMoreNumbers) {
    WriteBytes(File(), "1000 15\n");
    EXPECT_EQ(Global::ReadPollTrace()->undelivered, 0);
    WriteBytes(File(), "1000 15 3 7\n");
    EXPECT_EQ(Global::ReadPollTrace()->undelivered, 3);
    for (const char* text : {"1000 15 \n", "1000 15 x\n", "1000 15 3", "1000 15 ", "1000 15x\n"}) {
        WriteBytes(File(), text);
        EXPECT_FALSE(Global::ReadPollTrace().has_value()) << text;
    }
}
