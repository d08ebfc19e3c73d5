// SPDX-License-Identifier: GPL-3.0-or-later
#include "scheduler/Schedchk.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "mail/Delivery.h"
#include "platform/contracts/process.h"
#include "scheduler/RunHistory.h"
#include "support/run_fixture.h"

namespace {

using Rows = std::vector<std::string>;

class Schedchk : public fakes::RunFixture {
 protected:
    Schedchk() : RunFixture(fakes::At(2026, 11, 21, 14, 0, 0)) {}
    void SetUp() override {
        SetCommand("-sched");
        engine.reports["Z:\\reports\\sales.rpt"] = {};
    }
    void TearDown() override { SetCommand({}); }
    void Row(const fakes::ScheduleRow& row) { fakes::Insert(database, row); }
    Rows NextRuns() const { return database.Rows("select NextRun from ReportScheduler order by ReportID"); }
    Rows History() const {
        return database.Rows("select ReportID, LastRun, Status, ErrMsg from ReportHistory");
    }
    int Exports() const {
        return static_cast<int>(std::count(engine.calls.begin(), engine.calls.end(), "export False"));
    }
};

}  // namespace

TEST_F(Schedchk, EmptyTableTurnsTheTimerOffAndOnAndNothingElse) {
    Global::Schedchk();
    EXPECT_EQ(frame.timerChanges, (std::vector<bool>{false, true}));
    EXPECT_TRUE(History().empty());
    EXPECT_EQ(
        database.TakeStatements(),
        Rows{"Select * from ReportScheduler Where StartDate <= '2026-11-21' and EndDate >= '2026-11-21'"});
}

TEST_F(Schedchk, DueRowRunsMovesOnAndLeavesItsRow) {
    Row({.nextRun = "2026-11-21"});
    Global::Schedchk();
    EXPECT_EQ(Exports(), 1);
    EXPECT_EQ(NextRuns(), Rows{"2026-11-22"});
    EXPECT_EQ(History(), Rows{"1|2026-11-21 14:00:00|Success|None"});
    EXPECT_EQ(
        database.TakeStatements(),
        (Rows{"Select * from ReportScheduler Where StartDate <= '2026-11-21' and EndDate >= '2026-11-21'",
              "select * from ReportParameter where ReportID = 1",
              "update ReportScheduler set NextRun = '2026-11-22' Where ReportID = 1",
              "insert into ReportHistory(ReportID, LastRun, Status, ErrMsg) values(1,'2026-11-21 "
              "14:00:00','Success','None')"}));
}

TEST_F(Schedchk, TimeOfDayIsTestedByItself) {
    Row({.runAt = "14:00", .nextRun = "2026-11-20"});
    clock.now = fakes::At(2026, 11, 21, 13, 59, 59);
    Global::Schedchk();
    EXPECT_EQ(Exports(), 0);
    clock.now = fakes::At(2026, 11, 21, 14, 0, 0);
    Global::Schedchk();
    EXPECT_EQ(Exports(), 1);
}

TEST_F(Schedchk, LaterTimeOfTodayIsSkippedAndStays) {
    Row({.runAt = "14:01", .nextRun = "2026-11-21"});
    Global::Schedchk();
    EXPECT_EQ(NextRuns(), Rows{"2026-11-21"});
    EXPECT_TRUE(History().empty());
}

TEST_F(Schedchk, DatesAreComparedAsDatesAndNotAsTexts) {
    Row({.runAt = "9:05", .nextRun = "2026-3-7"});
    Global::Schedchk();
    EXPECT_EQ(Exports(), 1);
}

TEST_F(Schedchk, StartDateOfTomorrowIsNotSelected) {
    Row({.startDate = "2026-11-22", .nextRun = "2026-11-21"});
    Global::Schedchk();
    EXPECT_EQ(Exports(), 0);
}

TEST_F(Schedchk, DaysOfStartAndEndAreWithin) {
    Row({.startDate = "2026-11-21", .endDate = "2026-11-21", .nextRun = "2026-11-21"});
    Row({.endDate = "2026-11-20", .nextRun = "2026-11-20"});
    Global::Schedchk();
    EXPECT_EQ(NextRuns(), (Rows{"2026-11-22", "2026-11-20"}));
}

TEST_F(Schedchk, MissedRunsAreCaughtUpOneAPoll) {
    Row({.nextRun = "2026-11-11"});
    for (int poll = 0; poll < 20; ++poll) {
        Global::Schedchk();
    }
    EXPECT_EQ(Exports(), 11);
    EXPECT_EQ(NextRuns(), Rows{"2026-11-22"});
}

TEST_F(Schedchk, WeeklyThreeWeeksBackRunsFourTimes) {
    Row({.frequency = "Weekly", .nextRun = "2026-10-31"});
    for (int poll = 0; poll < 6; ++poll) {
        Global::Schedchk();
    }
    EXPECT_EQ(Exports(), 4);
    EXPECT_EQ(NextRuns(), Rows{"2026-11-28"});
}

TEST_F(Schedchk, UnknownWordTakesTheDateOfTheRowBefore) {
    Row({.frequency = "Daily", .nextRun = "2026-11-20"});
    Row({.frequency = "WeekDays", .nextRun = "2026-11-02"});
    Global::Schedchk();
    EXPECT_EQ(NextRuns(), (Rows{"2026-11-21", "2026-11-21"}));
}

TEST_F(Schedchk, UnknownWordAloneGetsTheZeroDateAndRunsAtEveryPoll) {
    Row({.frequency = "Quartely", .nextRun = "2026-11-21"});
    Global::Schedchk();
    EXPECT_EQ(NextRuns(), Rows{"1899-12-30"});
    const Rows statements = database.TakeStatements();
    EXPECT_NE(std::find(statements.begin(), statements.end(),
                        "update ReportScheduler set NextRun = '1899-12-30' Where ReportID = 1"),
              statements.end());
    Global::Schedchk();
    EXPECT_EQ(Exports(), 2);
}

TEST_F(Schedchk, FailedMailMovesNothingAndIsTriedAgain) {
    Row({.nextRun = "2026-11-21", .format = "DHTML"});
    mail.sendErrors = {RuntimeError(500, "refused")};
    Global::Schedchk();
    EXPECT_EQ(NextRuns(), Rows{"2026-11-21"});
    EXPECT_TRUE(History().empty());
    Global::Schedchk();
    EXPECT_EQ(NextRuns(), Rows{"2026-11-22"});
}

TEST_F(Schedchk, LostServerShowsItsBoxAndMovesNothing) {
    Row({.nextRun = "2026-11-21", .format = "DHTML"});
    mail.sendErrors = {RuntimeError(err::MailboxOrServer, "gone")};
    Global::Schedchk();
    EXPECT_EQ(NextRuns(), Rows{"2026-11-21"});
    EXPECT_EQ(prompts.boxes,
              (std::vector<fakes::Box>{
                  {"Your mailbox is over the limit or the Exchange Server is down! Sending mail failed", 0,
                   "Oxbow Courier"}}));
    EXPECT_TRUE(History().empty());
    EXPECT_TRUE(mail.sent.empty());
    EXPECT_TRUE(frame.timerEnabled);
}

TEST_F(Schedchk, LogonIsPassedOnlyWithT) {
    Row({.nextRun = "2026-11-21", .userName = "u", .password = "p", .loginReq = "T"});
    Row({.nextRun = "2026-11-21", .userName = "u", .password = "p", .loginReq = "t"});
    Global::Schedchk();
    EXPECT_EQ(std::count(engine.calls.begin(), engine.calls.end(), "logon 1 [][][u][p]"), 1);
}

TEST_F(Schedchk, FirstFailureEndsThePollWithItsRowAndTheAlert) {
    Row({.nextRun = "2026-11-21"});
    Row({.path = "Z:\\none.rpt", .nextRun = "2026-11-21"});
    Row({.path = "Z:\\none.rpt", .nextRun = "2026-11-21"});
    Global::Schedchk();
    EXPECT_EQ(History(), (Rows{"1|2026-11-21 14:00:00|Success|None",
                               "2|2026-11-21 14:00:00|Failure|File not found: Z:\\none.rpt"}));
    EXPECT_EQ(NextRuns(), (Rows{"2026-11-22", "2026-11-21", "2026-11-21"}));
    ASSERT_EQ(mail.sent.size(), 1U);
    EXPECT_EQ(mail.sent[0].text, "An error occured in Schedchk. File not found: Z:\\none.rpt [53]");
    EXPECT_EQ(mail.sent[0].subject, "Pressroom Error");
    EXPECT_EQ(mail.sent[0].recipients, Rows{"boss@example.com"});
    EXPECT_EQ(mail.sent[0].importance, 2);
    EXPECT_EQ(frame.timerChanges, (std::vector<bool>{false, true}));
}

TEST_F(Schedchk, EmptyAlertAddressStillWritesTheRowFirst) {
    Global::AlertWho.clear();
    Row({.path = "Z:\\none.rpt", .nextRun = "2026-11-21"});
    mail.resolveErrors = {RuntimeError(500, "nobody")};
    Global::Schedchk();
    EXPECT_EQ(History().size(), 1U);
    EXPECT_TRUE(frame.timerEnabled);
}

TEST_F(Schedchk, RowsCarryTheMomentThatThePollBegan) {
    Row({.nextRun = "2026-11-21"});
    engine.onExport = [this](const std::string&) { clock.now = fakes::At(2026, 11, 21, 14, 5, 0); };
    Global::Schedchk();
    EXPECT_EQ(History(), Rows{"1|2026-11-21 14:00:00|Success|None"});
}

TEST_F(Schedchk, DateThatIsNoneTakesTheFailureRoad) {
    Row({.nextRun = "soon"});
    Global::Schedchk();
    EXPECT_EQ(History(), Rows{"1|2026-11-21 14:00:00|Failure|Type mismatch"});
}

TEST_F(Schedchk, TimeThatIsNoneCountsOnlyOnceTheDateHasCome) {
    Row({.runAt = "__:__", .nextRun = "2026-11-22"});
    Global::Schedchk();
    EXPECT_TRUE(History().empty());
    clock.now = fakes::At(2026, 11, 22, 0, 0, 0);
    Global::Schedchk();
    EXPECT_EQ(History(), Rows{"1|2026-11-22 00:00:00|Failure|Type mismatch"});
}

TEST_F(Schedchk, FailedMailIsTriedAtEveryPollOfTheDayAfterItsTime) {
    Row({.runAt = "13:30", .nextRun = "2026-11-21", .format = "DHTML"});
    for (int hour = 14; hour < 20; ++hour) {
        clock.now = fakes::At(2026, 11, 21, hour, 0, 0);
        mail.sendErrors = {RuntimeError(err::MailboxFull, "full")};
        Global::Schedchk();
    }
    EXPECT_EQ(Exports(), 6);
    EXPECT_EQ(NextRuns(), Rows{"2026-11-21"});
}

TEST_F(Schedchk, MissingTableFailsTheHandlerTooAndLeavesTheTimerOff) {
    database.Run("drop table ReportScheduler");
    EXPECT_THROW(Global::Schedchk(), RuntimeError);
    EXPECT_FALSE(frame.timerEnabled);
    EXPECT_TRUE(mail.sent.empty());
    EXPECT_TRUE(History().empty());
}

TEST_F(Schedchk, UnknownFormatWritesNoRowAndStaysDue) {
    Row({.nextRun = "2026-11-21", .format = "Text"});
    testing::internal::CaptureStderr();
    Global::Schedchk();
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "2026-11-21 14:00:00 Schedule 1 is not run: its format \"Text\" is not known\n");
    EXPECT_TRUE(History().empty());
    EXPECT_EQ(NextRuns(), Rows{"2026-11-21"});
}

TEST_F(Schedchk, AlertThatCannotLogOnPassesOutWithTheRowWritten) {
    Row({.path = "Z:\\none.rpt", .nextRun = "2026-11-21"});
    mail.logonErrors = {RuntimeError(77, "no profile")};
    EXPECT_THROW(Global::Schedchk(), RuntimeError);
    EXPECT_EQ(History().size(), 1U);
    EXPECT_FALSE(frame.timerEnabled);
}

TEST_F(Schedchk, MarkInADescriptionCostsTheRowAndTheAlert) {
    // The platform makes no such description; a caller's own text may.
    EXPECT_THROW(Global::WriteRunHistory(1, "2026-11-21 14:00:00", "Failure", "can't"), RuntimeError);
    EXPECT_TRUE(History().empty());
}

// It lets a server or a reader recognize copies of one run.
TEST_F(Schedchk, RunThatIsTriedAgainKeepsItsIdentityAndTheNextHasAnother) {
    Row({.nextRun = "2026-11-20", .format = "DHTML"});
    Row({.nextRun = "2026-11-21", .format = "DHTML"});
    mail.sendErrors = {RuntimeError(err::MailboxOrServer, "gone"),
                       RuntimeError(err::MailboxOrServer, "gone")};
    Global::Schedchk();
    Global::Schedchk();
    Global::Schedchk();
    const std::vector<std::string>& made = mail.identities;
    ASSERT_EQ(made.size(), 5U);
    EXPECT_EQ(made[2], made[0]);
    EXPECT_EQ(made[3], made[1]);
    EXPECT_NE(made[1], made[0]);
    EXPECT_NE(made[4], made[0]);
    EXPECT_NE(made[4], made[1]);
    EXPECT_NE(made[0].find("2026-11-20"), std::string::npos);
}

// Its date does not move, so all its runs would look like copies.
TEST_F(Schedchk, RunsOfAnUnknownFrequencyWordBearNoIdentity) {
    Row({.frequency = "WeekDays", .nextRun = "2026-11-21", .format = "DHTML"});
    Global::Schedchk();
    EXPECT_EQ(mail.identities, std::vector<std::string>{""});
}

TEST_F(Schedchk, AlertOfARefusalWaitsUntilTheRunIsRecorded) {
    Row({.nextRun = "2026-11-21"});
    std::size_t before = 99;
    engine.onExport = [&](const std::string&) {
        Global::ReportRefusals("Figures", {{"bob@example.com", "550 unknown"}});
        before = mail.sent.size();
    };
    testing::internal::CaptureStderr();
    Global::Schedchk();
    testing::internal::GetCapturedStderr();
    EXPECT_EQ(before, 0U);
    EXPECT_EQ(NextRuns(), Rows{"2026-11-22"});
    ASSERT_EQ(mail.sent.size(), 1U);
    EXPECT_EQ(
        mail.sent[0].text,
        "The mail \"Figures\" has gone out, but not to everybody: the server refuses bob@example.com (550 "
        "unknown)");
}

TEST_F(Schedchk, AlertOfAFailedRunIsNoCopyOfIt) {
    Row({.nextRun = "2026-11-21", .format = "DHTML"});
    mail.sendErrors = {RuntimeError(500, "refused")};
    Global::Schedchk();
    ASSERT_EQ(mail.identities.size(), 2U);
    EXPECT_NE(mail.identities[0], "");
    EXPECT_EQ(mail.identities[1], "");
    engine.reports.clear();
    Global::Schedchk();
    ASSERT_EQ(mail.identities.size(), 3U);
    EXPECT_EQ(mail.identities[2], "");
}
