// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QTimer>

#include "execution/on_demand/DemandCommands.h"
#include "execution/on_demand/RunOnDemand.h"
#include "platform/base/convert.h"
#include "scheduler/Schedchk.h"
#include "support/raises.h"
#include "support/run_fixture.h"

namespace {

using Rows = std::vector<std::string>;
using Boxes = std::vector<fakes::Box>;

const char* const Path = "Z:\\reports\\sales.rpt";
const char* const Key =
    "select reportid from reportscheduler where reporttitle = 'Sales' and parent = 'Desktop'";

const fakes::Box Executed{"Schedule executed successfully", vbInformation, "Oxbow Courier"};

fakes::Box ErrorBox(const std::string& text) {
    return {"An error was encountered. " + text, vbExclamation, "Oxbow Courier"};
}

// A window of the root with "Sales" selected.
class ScheduleOnDemand : public fakes::RunFixture {
 protected:
    ScheduleOnDemand() : RunFixture(fakes::At(2026, 11, 21, 14, 5, 9)) {
        engine.reports[Path] = {};
        Select("Sales", "pk1");
    }
    void Row(const fakes::ScheduleRow& row, const std::string& parent = "Desktop") {
        fakes::Insert(database, row);
        database.Run("update ReportScheduler set Parent = '" + parent + "' where Parent is null");
    }
    Rows History() const {
        return database.Rows("select ReportID, LastRun, Status, ErrMsg from ReportHistory");
    }
    Rows NextRuns() const { return database.Rows("select NextRun from ReportScheduler order by ReportID"); }
    void ExpectFailure(const std::string& row, const std::string& box) {
        EXPECT_EQ(History(), Rows{row});
        EXPECT_EQ(prompts.boxes, Boxes{ErrorBox(box)});
        EXPECT_TRUE(mail.sent.empty());
    }
    // Returns the box that ends the process when the command is a click.
    Boxes EndOfTheProcess() {
        fakes::FakeProcess process;
        QTimer::singleShot(0, mnuDeskExec_Click);
        QCoreApplication::processEvents();
        EXPECT_EQ(process.ends, std::vector<int>{1});
        return prompts.boxes;
    }
};

}  // namespace

TEST_F(ScheduleOnDemand, SelectedScheduleRunsAtOnceLeavesItsRowAndTellsTheUser) {
    Row({.title = "Stock"});
    Row({.runAt = "23:59", .nextRun = "2026-12-24"});
    mnuDeskExec_Click();
    EXPECT_EQ(database.TakeStatements(), (Rows{Key, "select * from reportscheduler where reportid = 2",
                                               "select * from ReportParameter where ReportID = 2",
                                               "insert into ReportHistory(ReportID, LastRun, Status, ErrMsg) "
                                               "values(2,'2026-11-21 14:05:09','Success','None')"}));
    EXPECT_EQ(engine.calls, (Rows{"open " + std::string(Path), "switches False False", "destination 2",
                                  "mail [ann@example.com;][Subject][Body]", "format 31", "export False"}));
    EXPECT_EQ(prompts.boxes, Boxes{Executed});
}

TEST_F(ScheduleOnDemand, HistoryIsWrittenBeforeTheUserIsTold) {
    Row({});
    std::size_t rows = 0;
    prompts.onBox = [&] { rows = History().size(); };
    mnuDeskExec_Click();
    EXPECT_EQ(rows, 1U);
}

TEST_F(ScheduleOnDemand, SchedulePastItsEndDateRuns) {
    Row({.startDate = "2025-01-01", .endDate = "2026-11-20"});
    mnuDeskExec_Click();
    EXPECT_EQ(CallsWith("export").size(), 1U);
    EXPECT_EQ(prompts.boxes, Boxes{Executed});
}

TEST_F(ScheduleOnDemand, ScheduleDueTodayStillRunsAtItsTime) {
    Row({.runAt = "15:00", .nextRun = "2026-11-21"});
    mnuDeskExec_Click();
    EXPECT_EQ(NextRuns(), Rows{"2026-11-21"});
    clock.now = fakes::At(2026, 11, 21, 15, 0, 0);
    Global::Schedchk();
    EXPECT_EQ(NextRuns(), Rows{"2026-11-22"});
    EXPECT_EQ(History(), (Rows{"1|2026-11-21 14:05:09|Success|None", "1|2026-11-21 15:00:00|Success|None"}));
}

TEST_F(ScheduleOnDemand, UnknownFormatShowsNothingAtAll) {
    Row({.format = "Lotus"});
    mnuDeskExec_Click();
    EXPECT_TRUE(prompts.boxes.empty());
    EXPECT_TRUE(History().empty());
    EXPECT_TRUE(mail.sent.empty());
}

TEST_F(ScheduleOnDemand, HtmlReportIsMailedByTheSystem) {
    Row({.format = "HTML"});
    mnuDeskExec_Click();
    ASSERT_EQ(mail.sent.size(), 1U);
    EXPECT_EQ(mail.sent[0].recipients, Rows{"ann@example.com"});
    EXPECT_EQ(prompts.boxes, Boxes{Executed});
}

TEST_F(ScheduleOnDemand, MomentIsThatOfTheWriting) {
    Row({.format = "HTML"});
    const DateValue start = clock.now;
    mnuDeskExec_Click();
    ASSERT_GT(clock.now, start);
    EXPECT_EQ(History(), Rows{"1|2026-11-21 " + TimeText(clock.now) + "|Success|None"});
}

TEST_F(ScheduleOnDemand, MomentIsWrittenUnderTheRegionalSettings) {
    SetRegional({DateOrder::DayMonthYear, '/'});
    Row({});
    mnuDeskExec_Click();
    engine.reports.clear();
    mnuDeskExec_Click();
    EXPECT_EQ(database.Rows("select LastRun from ReportHistory"),
              (Rows{"21/11/2026 14:05:09", "21/11/2026 14:05:09"}));
}

TEST_F(ScheduleOnDemand, MailThatFailsHasReportedItselfAndNothingElseIsShown) {
    Row({.format = "HTML"});
    mail.sendErrors = {RuntimeError(err::MailboxFull, "full")};
    mnuDeskExec_Click();
    EXPECT_EQ(prompts.boxes, (Boxes{{"Your mailbox is over the limit or the Exchange Server is down! Sending "
                                     "mail failed",
                                     0, "Oxbow Courier"}}));
    EXPECT_TRUE(History().empty());
}

TEST_F(ScheduleOnDemand, LogonIsMadeOnlyWhenTheScheduleAsksForIt) {
    Row({.userName = "scott", .password = "tiger", .loginReq = "t"});
    mnuDeskExec_Click();
    EXPECT_TRUE(CallsWith("logon").empty());
    database.Run("update ReportScheduler set LoginReq = 'T'");
    mnuDeskExec_Click();
    EXPECT_EQ(CallsWith("logon"), Rows{"logon 1 [][][scott][tiger]"});
}

TEST_F(ScheduleOnDemand, StoredValuesAndFormulaAreHandedOver) {
    engine.reports[Path].parameterTypes = {12};
    Row({.formula = "{a} = 1"});
    database.Run("insert into ReportParameter values(1,'Region','West')");
    mnuDeskExec_Click();
    EXPECT_EQ(CallsWith("value"), Rows{"value 1 text West"});
    EXPECT_EQ(CallsWith("formula"), Rows{"formula {a} = 1"});
}

TEST_F(ScheduleOnDemand, FailureLeavesARowWithoutAStatusAndABoxAndNoAlert) {
    Row({.path = "Z:\\gone.rpt"});
    mnuDeskExec_Click();
    EXPECT_EQ(database.TakeStatements().back(),
              "insert into ReportHistory(ReportID, LastRun, Status, ErrMsg) values(1,'2026-11-21 "
              "14:05:09','','File not found: Z:\\gone.rpt')");
    ExpectFailure("1|2026-11-21 14:05:09||File not found: Z:\\gone.rpt", "File not found: Z:\\gone.rpt [53]");
    EXPECT_EQ(NextRuns(), Rows{"2002-03-07"});
}

TEST_F(ScheduleOnDemand, FailureOfTheEngineIsShownAndStored) {
    engine.reports[Path].exportError = RuntimeError(err::PathNotFound);
    Row({});
    mnuDeskExec_Click();
    ExpectFailure("1|2026-11-21 14:05:09||Path not found", "Path not found [76]");
}

TEST_F(ScheduleOnDemand, ValueThatDoesNotConvertFailsTheRun) {
    engine.reports[Path].parameterTypes = {7};
    Row({});
    database.Run("insert into ReportParameter values(1,'Year','abc')");
    mnuDeskExec_Click();
    ExpectFailure("1|2026-11-21 14:05:09||Type mismatch", "Type mismatch [13]");
}

TEST_F(ScheduleOnDemand, MailSessionThatCannotBeJoinedIsAnError) {
    Row({.format = "HTML"});
    mail.logonErrors = {RuntimeError(err::MailUserCancel, "no profile")};
    mnuDeskExec_Click();
    ExpectFailure("1|2026-11-21 14:05:10||no profile", "no profile [-2147221229]");
}

TEST_F(ScheduleOnDemand, TimerHourglassAndWindowAreLeftAlone) {
    Row({});
    mnuDeskExec_Click();
    engine.reports.clear();
    mnuDeskExec_Click();
    EXPECT_EQ(prompts.boxes.size(), 2U);
    EXPECT_TRUE(frame.timerChanges.empty());
    EXPECT_EQ(frame.hides, 0);
    EXPECT_TRUE(frame.pointers.empty());
    EXPECT_TRUE(desk.pointers.empty());
    EXPECT_TRUE(desk.refreshes.empty());
}

TEST_F(ScheduleOnDemand, ScheduleIsFoundByTitleAndFolder) {
    Row({.path = "Z:\\other.rpt"}, "North");
    Row({});
    mnuDeskExec_Click();
    EXPECT_EQ(History(), Rows{"2|2026-11-21 14:05:09|Success|None"});
    desk.caption = "North";
    engine.reports["Z:\\other.rpt"] = {};
    mnuDeskExec_Click();
    EXPECT_EQ(engine.calls.back(), "export False");
    EXPECT_EQ(History().back(), "1|2026-11-21 14:05:09|Success|None");
}

TEST_F(ScheduleOnDemand, FirstOfTwoWithOneTitleRuns) {
    Row({});
    Row({.path = "Z:\\other.rpt"});
    mnuDeskExec_Click();
    EXPECT_EQ(CallsWith("open"), Rows{"open " + std::string(Path)});
}

TEST_F(ScheduleOnDemand, MarkInAPathIsNoMarkInTheRowNorInTheBox) {
    Row({.path = "Z:\\O'Brien\\gone.rpt"});
    mnuDeskExec_Click();
    ExpectFailure("1|2026-11-21 14:05:09||File not found: Z:\\O\"Brien\\gone.rpt",
                  "File not found: Z:\\O\"Brien\\gone.rpt [53]");
}

TEST_F(ScheduleOnDemand, OddTitlesAndFoldersAreFound) {
    for (const std::string title : {"1>a:b", "5: Sales", "a^b", "\"q\"", "06:30:00", "%_[x]"}) {
        Row({.title = title}, title);
        desk.selected = {title, "pk1"};
        desk.caption = title;
        prompts.boxes.clear();
        mnuDeskExec_Click();
        EXPECT_EQ(prompts.boxes, Boxes{Executed}) << title;
    }
    EXPECT_EQ(database.Rows("select ReportID from ReportHistory"), (Rows{"1", "2", "3", "4", "5", "6"}));
}

TEST_F(ScheduleOnDemand, WindowClosedDuringTheRunIsNotMissed) {
    Row({});
    loop.onYield = [] {
        Global::DeskWindows.clear();
        Global::DeskIndex = 0;
    };
    mnuDeskExec_Click();
    EXPECT_EQ(loop.yields, 1);
    EXPECT_EQ(History(), Rows{"1|2026-11-21 14:05:09|Success|None"});
    EXPECT_EQ(prompts.boxes, Boxes{Executed});
}

TEST_F(ScheduleOnDemand, RunThatIsAskedForAgainMeanwhileIsDoneTwice) {
    Row({});
    bool again = false;
    loop.onYield = [&again] {
        if (!again) {
            again = true;
            mnuDeskExec_Click();
        }
    };
    mnuDeskExec_Click();
    EXPECT_EQ(CallsWith("export").size(), 2U);
    EXPECT_EQ(History(), (Rows{"1|2026-11-21 14:05:09|Success|None", "1|2026-11-21 14:05:09|Success|None"}));
    EXPECT_EQ(prompts.boxes, (Boxes{Executed, Executed}));
}

TEST_F(ScheduleOnDemand, ScheduleThatIsDeletedDuringItsRunLeavesItsRow) {
    Row({});
    loop.onYield = [this] { database.Run("delete from ReportScheduler"); };
    mnuDeskExec_Click();
    EXPECT_EQ(History(), Rows{"1|2026-11-21 14:05:09|Success|None"});
    EXPECT_EQ(prompts.boxes, Boxes{Executed});
}

TEST_F(ScheduleOnDemand, ScheduleThatIsGoneFailsUnderKeyZero) {
    mnuDeskExec_Click();
    const std::string text =
        "Either BOF or EOF is True, or the current record has been deleted. Requested operation requires a "
        "current record.";
    ExpectFailure("0|2026-11-21 14:05:09||" + text, text + " [3021]");
}

TEST_F(ScheduleOnDemand, KeyThatSixteenBitsDoNotHoldFailsUnderKeyZero) {
    Row({});
    database.Run("update ReportScheduler set ReportID = 32768");
    mnuDeskExec_Click();
    ExpectFailure("0|2026-11-21 14:05:09||Overflow", "Overflow [6]");
    EXPECT_TRUE(engine.calls.empty());
}

TEST_F(ScheduleOnDemand, NothingSelectedFailsUnderKeyZero) {
    desk.selected.reset();
    mnuDeskExec_Click();
    ExpectFailure("0|2026-11-21 14:05:09||Object variable or With block variable not set",
                  "Object variable or With block variable not set [91]");
}

TEST_F(ScheduleOnDemand, WithoutADesktopWindowItFailsUnderKeyZero) {
    Global::DeskIndex = 9999;
    mnuDeskExec_Click();
    ExpectFailure("0|2026-11-21 14:05:09||Subscript out of range", "Subscript out of range [9]");
}

TEST_F(ScheduleOnDemand, RunWhoseRowCannotBeWrittenIsAFailure) {
    Row({});
    database.Run(
        "create trigger Held before insert on ReportHistory when new.Status = 'Success' begin "
        "select raise(abort, 'held'); end");
    mnuDeskExec_Click();
    const std::string text = "The row breaks a rule of its table; held";
    EXPECT_EQ(History(), Rows{"1|2026-11-21 14:05:09||" + text});
    EXPECT_EQ(prompts.boxes, Boxes{ErrorBox(text + " [-2147217873]")});
}

TEST_F(ScheduleOnDemand, FailureWhoseRowCannotBeWrittenEndsTheProcessWithTheRunTimesBox) {
    Row({.path = "Z:\\gone.rpt"});
    database.Run("drop table ReportHistory");
    const Boxes boxes = EndOfTheProcess();
    ASSERT_EQ(boxes.size(), 1U);
    EXPECT_EQ(boxes[0].text.rfind("Run-time error \"-2147217865\":\n\n", 0), 0U) << boxes[0].text;
    EXPECT_EQ(boxes[0].flags, vbCritical);
}

TEST_F(ScheduleOnDemand, ResultTellsTheHistoryWindowWhetherToRefresh) {
    Row({});
    Row({.format = "Lotus"});
    EXPECT_TRUE(Global::ExecuteSchedule("1"));
    EXPECT_FALSE(Global::ExecuteSchedule("2"));
    EXPECT_EQ(NumberRaisedBy([] { Global::ExecuteSchedule("3"); }), err::NoCurrentRecord);
    EXPECT_EQ(NumberRaisedBy([] { Global::ExecuteSchedule(""); }), err::DataSyntax);
}
