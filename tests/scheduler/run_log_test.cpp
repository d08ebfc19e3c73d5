// SPDX-License-Identifier: GPL-3.0-or-later
#include "scheduler/RunLog.h"

#include <gtest/gtest.h>

#include <regex>

#include "scheduler/BatchReport.h"
#include "scheduler/NextDue.h"
#include "scheduler/Schedchk.h"
#include "support/run_fixture.h"

namespace {

class RunLog : public fakes::RunFixture {
 protected:
    RunLog() : RunFixture(fakes::At(2026, 11, 21, 14, 0, 0)) {}
    void SetUp() override {
        engine.reports["Z:\\reports\\sales.rpt"] = {};
        journal::WriteEvents(true);
        Global::RunLog::Instance().PollBegins();
        testing::internal::CaptureStderr();
    }
    void TearDown() override {
        Global::RunLog::Instance().PollEnds();
        journal::WriteEvents(false);
        if (m_isCaptured) {
            testing::internal::GetCapturedStderr();
        }
    }
    // What was written, with a dash for every time that a run took.
    std::string Lines() {
        m_isCaptured = false;
        return std::regex_replace(testing::internal::GetCapturedStderr(),
                                  std::regex("seconds=[0-9]+\\.[0-9]{3}"), "seconds=-");
    }

 private:
    bool m_isCaptured = true;
};

}  // namespace

TEST_F(RunLog, RunThatIsDoneIsOneLine) {
    fakes::Insert(database, fakes::ScheduleRow{.nextRun = "2026-11-21"});
    Global::Schedchk();
    EXPECT_EQ(Lines(),
              "2026-11-21 14:00:00 info run-done schedule=1 title=Sales outcome=delivered seconds=-\n");
}

TEST_F(RunLog, FailedRunNamesItsScheduleAndSoDoesTheAlert) {
    engine.reports["Z:\\reports\\sales.rpt"].exportError = RuntimeError(7, "Too much");
    fakes::Insert(database, fakes::ScheduleRow{.nextRun = "2026-11-21"});
    Global::AlertWho = "boss";
    Global::Schedchk();
    EXPECT_EQ(Lines(),
              "2026-11-21 14:00:00 error run-failed schedule=1 title=Sales outcome=error routine=Schedchk "
              "error=\"Too much\" number=7 seconds=-\n"
              "2026-11-21 14:00:00 notice alert-sent schedule=1 title=Sales to=boss\n");
}

TEST_F(RunLog, PollThatFailsAtARowNamesItsSchedule) {
    fakes::Insert(database, fakes::ScheduleRow{.nextRun = "soon"});
    Global::AlertWho = "boss";
    Global::Schedchk();
    EXPECT_EQ(Lines(),
              "2026-11-21 14:00:00 error poll-failed schedule=1 outcome=error routine=Schedchk "
              "error=\"Type mismatch\" number=13\n"
              "2026-11-21 14:00:00 notice alert-sent schedule=1 to=boss\n");
}
