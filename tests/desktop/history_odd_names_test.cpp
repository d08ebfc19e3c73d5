// SPDX-License-Identifier: GPL-3.0-or-later
// Odd and hostile names, and commands at the wrong moment, in the Schedule History window.
#include "package_fixture.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const char* const Path = "Z:\\reports\\sales.rpt";
const fakes::Box Executed{"Schedule executed successfully", vbInformation, "Oxbow Courier"};
const char* const Gone =
    "Either BOF or EOF is True, or the current record has been deleted. Requested operation requires a "
    "current record.";

fakes::Box ExecuteError(const std::string& text) {
    return {"An error was encountered, " + text, vbExclamation, "Oxbow Courier"};
}

class HistoryOddNames : public PackageTest {
 protected:
    Texts Runs() { return database.Rows("select ReportID, LastRun, Status, ErrMsg from ReportHistory"); }
    Texts Schedules() { return database.Rows("select ReportTitle from ReportScheduler order by ReportID"); }
};

const Texts OddTitles = {"1>a>b.rpt",  "a:b",   "7: Sales", "a^b^1", "\"q\"",
                         "<b>R&D</b>", "%_[x]", "12:30",    ""};

}  // namespace

TEST_F(HistoryOddNames, SchedulesOfOddTitlesRunAndGoUnderTheirOwnNumbers) {
    for (const std::string& title : OddTitles) {
        Schedule(title);
    }
    frmViewer& viewer = Open();
    for (std::size_t i = 0; i < OddTitles.size(); ++i) {
        const std::string key = std::to_string(i + 1);
        prompts.boxes.clear();
        SelectAndChoose(*viewer.tvReports, key + ": " + OddTitles[i], "mnuExec");
        EXPECT_EQ(prompts.boxes, Boxes{Executed}) << OddTitles[i];
        EXPECT_EQ(Runs().back(), key + "|2026-11-21 14:00:00|Success|None");
        database.Run("delete from ReportHistory");
    }
    ClickEntry("mnuRefHis");
    for (std::size_t i = 0; i < OddTitles.size(); ++i) {
        prompts.answers = {vbYes};
        SelectAndChoose(*viewer.tvReports, std::to_string(i + 1) + ": " + OddTitles[i], "mnuDel");
        EXPECT_EQ(Schedules(),
                  Texts(OddTitles.begin() + static_cast<std::ptrdiff_t>(i) + 1, OddTitles.end()));
    }
}

TEST_F(HistoryOddNames, TimeInTheTitleOfAScheduleThatNeverRanDoesNoHarm) {
    Schedule("At 06:30:00");
    frmViewer& viewer = Open();
    database.TakeStatements();
    SelectAndChoose(*viewer.tvReports, "1: At 06:30:00", "mnuExec");
    EXPECT_EQ(database.TakeStatements()[0], "select * from reportscheduler where reportid = 1");
    EXPECT_EQ(prompts.boxes, Boxes{Executed});
    EXPECT_EQ(Runs(), Texts{"1|2026-11-21 14:00:00|Success|None"});
}

TEST_F(HistoryOddNames, TimeInTheTitleOfAScheduleThatHasRunDoesNoHarm) {
    Run(Schedule("At 06:30:00"), "2026-11-20 06:30:05");
    frmViewer& viewer = Open();
    SelectAndChoose(*viewer.tvReports, "2026-11-20 06:30:05 [Success]", "mnuExec");
    EXPECT_EQ(prompts.boxes, Boxes{Executed});
    EXPECT_EQ(Runs().back(), "1|2026-11-21 14:00:00|Success|None");
}

TEST_F(HistoryOddNames, HourglassIsUpDuringARunAndUntilItsBoxIsAnswered) {
    Schedule("Sales");
    frmViewer& viewer = Open();
    int seen = 0;
    engine.onExport = [&](const std::string&) { seen += frame.BusyShown() ? 1 : 0; };
    prompts.onBox = [&] {
        seen += frame.BusyShown() ? 10 : 0;
        EXPECT_EQ(Runs().size(), 1U);
    };
    SelectAndChoose(*viewer.tvReports, "1: Sales", "mnuExec");
    EXPECT_EQ(seen, 11);
    EXPECT_FALSE(frame.BusyShown());
}

TEST_F(HistoryOddNames, FailureIsWrittenThenToldWithoutTheHourglassThenShown) {
    Schedule("Sales");
    frmViewer& viewer = Open();
    engine.reports[Path].exportError = RuntimeError(err::PathNotFound);
    database.TakeStatements();
    prompts.onBox = [&] {
        EXPECT_FALSE(frame.BusyShown());
        EXPECT_EQ(database.TakeStatements().back(),
                  "insert into ReportHistory(ReportID, LastRun, Status, ErrMsg) values(1,'2026-11-21 "
                  "14:00:00','','Path not found')");
    };
    SelectAndChoose(*viewer.tvReports, "1: Sales", "mnuExec");
    EXPECT_EQ(prompts.boxes, Boxes{ExecuteError("Path not found [76]")});
    EXPECT_TRUE(mail.sent.empty());
    EXPECT_EQ(database.TakeStatements()[0], "select distinct frequency from reportscheduler");
}

TEST_F(HistoryOddNames, RunThatIsAskedForAgainMeanwhileIsDoneTwice) {
    Schedule("Sales");
    frmViewer& viewer = Open();
    Click(*viewer.tvReports, "1: Sales");
    bool again = false;
    engine.onExport = [&](const std::string&) {
        if (!again) {
            again = true;
            ClickEntry("mnuExec");
        }
    };
    ClickEntry("mnuExec");
    EXPECT_EQ(prompts.boxes, (Boxes{Executed, Executed}));
    EXPECT_EQ(Runs().size(), 2U);
    EXPECT_EQ(viewer.tvReports->Nodes().Count(), 5);
    EXPECT_FALSE(frame.BusyShown());
}

TEST_F(HistoryOddNames, WindowClosedDuringARunThatFailsComesBackWithTheRow) {
    Schedule("Sales");
    frmViewer& viewer = Open();
    engine.reports[Path].exportError = RuntimeError(err::PathNotFound);
    engine.onExport = [&](const std::string&) { CloseViewer(*OnScreen()); };
    SelectAndChoose(*viewer.tvReports, "1: Sales", "mnuExec");
    EXPECT_EQ(prompts.boxes, Boxes{ExecuteError("Path not found [76]")});
    ASSERT_NE(OnScreen(), nullptr);
    EXPECT_THAT(Nodes(*OnScreen()->tvReports), testing::Contains("..2026-11-21 14:00:00 []"));
}

TEST_F(HistoryOddNames, ScheduleThatIsGoneMeanwhileFailsUnderItsNumberAndLeavesTheTree) {
    Schedule("Sales");
    Schedule("Stock");
    frmViewer& viewer = Open();
    database.Run("delete from ReportScheduler where ReportID=1");
    SelectAndChoose(*viewer.tvReports, "1: Sales", "mnuExec");
    EXPECT_EQ(prompts.boxes, Boxes{ExecuteError(std::string(Gone) + " [3021]")});
    EXPECT_THAT(Runs(), ElementsAre("1|2026-11-21 14:00:00||" + std::string(Gone)));
    EXPECT_THAT(Nodes(*viewer.tvReports), ElementsAre("Daily", ".2: Stock"));
}

// The key's number starts after the first ^, so the part of a title after a ^ of its own is lost.
TEST_F(HistoryOddNames, TitleOfAPackagesReportEndsAtItsFirstMark) {
    AddPackage("Month end", {"1>a^b.rpt"});
    Store(1, 1, {"North"});
    frmViewer& viewer = OpenHistory();
    prompts.answers = {vbYes};
    SelectAndChoose(*viewer.tvBatch, "1>a^b.rpt", "mnuDir");
    const Texts statements = database.TakeStatements();
    ASSERT_GE(statements.size(), 1U);
    EXPECT_EQ(statements[0], "delete from reportbatchdtls where ReportTitle = '1>a' and  ReportId = 1");
    EXPECT_THAT(Reports(), ElementsAre("1|1>a^b.rpt"));
    EXPECT_THAT(Stored(), IsEmpty());
    prompts.boxes.clear();
    SelectAndChoose(*viewer.tvBatch, "1>a^b.rpt", "mnuOutput");
    SelectAndChoose(*viewer.tvBatch, "1>a^b.rpt", "mnuEditPar");
    EXPECT_EQ(prompts.boxes,
              (Boxes{ErrorBox(3021, Gone), ErrorBox(91, "Object variable or With block variable not set")}));
}

TEST_F(HistoryOddNames, PackagesOfOddNamesGoUnderTheirOwnNumbers) {
    for (const std::string& name : OddTitles) {
        AddPackage(name, {"1>sales"});
    }
    frmViewer& viewer = OpenHistory();
    for (std::size_t i = 0; i < OddTitles.size(); ++i) {
        prompts.answers = {vbYes};
        SelectAndChoose(*viewer.tvBatch, std::to_string(i + 1) + ":" + OddTitles[i], "mnuDir");
        EXPECT_EQ(database.Rows("select BatchName from ReportBatch order by ReportID"),
                  Texts(OddTitles.begin() + static_cast<std::ptrdiff_t>(i) + 1, OddTitles.end()));
    }
}

TEST_F(HistoryOddNames, ReportsOfOneTitleGoTogether) {
    AddPackage("Month end", {"1>sales", "1>sales", "2>stock"});
    frmViewer& viewer = OpenHistory();
    prompts.answers = {vbYes};
    SelectAndChoose(*viewer.tvBatch, "1>sales", "mnuDir");
    EXPECT_THAT(Reports(), ElementsAre("1|2>stock"));
}

TEST_F(HistoryOddNames, ColumnsWithoutAValueAreEmptyTexts) {
    database.Run(
        "insert into ReportScheduler(ReportTitle,Frequency) values(null,'Daily');"
        "insert into ReportHistory(ReportID,Status) values(1,'Failure');"
        "insert into ReportBatch(Frequency) values('Daily');"
        "insert into ReportBatchDtls(ReportID) values(1)");
    frmViewer& viewer = Open();
    EXPECT_THAT(Nodes(*viewer.tvReports), ElementsAre("Daily", ".1: ", "..Reccurring  ", ".. [Failure - ]"));
    ClickTab(viewer, 2);
    EXPECT_THAT(Nodes(*viewer.tvBatch), ElementsAre("Daily", ".1:", "..Reccuring , ", ".."));
    EXPECT_TRUE(prompts.boxes.empty());
}
