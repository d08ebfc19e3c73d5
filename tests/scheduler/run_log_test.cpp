// SPDX-License-Identifier: GPL-3.0-or-later
#include "scheduler/RunLog.h"

#include <gtest/gtest.h>

#include <regex>

#include "scheduler/BatchReport.h"
#include "scheduler/Schedchk.h"
#include "support/run_fixture.h"

namespace {

class RunLog : public fakes::PackageRunFixture {
 protected:
    RunLog() : PackageRunFixture(fakes::At(2026, 11, 21, 14, 0, 0)) {}
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

TEST_F(RunLog, DeliveredPackageIsItsMailAndItsRun) {
    Package();
    Detail(1, "1>a.rpt", "Acrobat");
    Global::BatchReport();
    EXPECT_EQ(
        Lines(),
        "2026-11-21 14:00:00 info mail-sent package=1 title=Pack subject=Subject recipients=2 seconds=-\n"
        "2026-11-21 14:00:00 info package-done package=1 title=Pack outcome=delivered seconds=-\n");
}

TEST_F(RunLog, FailedMailOfAPackageIsNoErrorOfItsOwn) {
    Package();
    mail.sendErrors = {RuntimeError(500, "refused")};
    Global::BatchReport();
    EXPECT_EQ(Lines(),
              "2026-11-21 14:00:00 The mail \"Subject\" did not go out: refused [500]\n"
              "2026-11-21 14:00:00 notice alert-sent package=1 title=Pack to=boss@example.com\n"
              "2026-11-21 14:00:00 error run-failed package=1 title=Pack outcome=not-delivered seconds=-\n"
              "2026-11-21 14:00:00 notice alert-sent package=1 title=Pack to=boss@example.com\n");
}

TEST_F(RunLog, StateHasTheRunsAndTheLastPoll) {
    const auto value = [](const std::string& name) {
        for (const journal::Fact& fact : Global::RunLog::Instance().State()) {
            if (fact.name == name) {
                return fact.value;
            }
        }
        return std::string("none");
    };
    const std::string before = value("delivered");
    fakes::Insert(database, fakes::ScheduleRow{.nextRun = "2026-11-21"});
    engine.onExport = [&value](const std::string&) { EXPECT_EQ(value("running"), "schedule"); };
    Global::Schedchk();
    EXPECT_EQ(value("running"), "none");
    EXPECT_EQ(std::stoi(value("delivered")), std::stoi(before) + 1);
    Global::RunLog::Instance().PollEnds();
    EXPECT_EQ(value("last-poll"), "2026-11-21 14:00:00");
}
