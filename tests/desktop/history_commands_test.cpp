// SPDX-License-Identifier: GPL-3.0-or-later
// The menus of the Schedule History window's nodes and what their entries do.
#include "execution/frmTest.h"
#include "history_fixture.h"
#include "platform/contracts/prompts.h"

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const char* const Path = "Z:\\reports\\sales.rpt";
const char* const Ran = "2026-11-20 06:30:05 [Success]";
const char* const NextRun = "Reccurring 2002-03-07 06:30";
const fakes::Box Question{"Delete the selected schedule?", vbYesNo, "Oxbow Courier"};

class HistoryCommands : public HistoryTest {
 protected:
    void SetUp() override {
        HistoryTest::SetUp();
        engine.reports[Path] = {};
    }
    frmViewer& OpenPackages() {
        frmViewer& viewer = Open();
        ClickTab(viewer, 2);
        viewer.tvBatch->expandAll();
        return viewer;
    }
    bool PreviewIsUp() {
        for (QMdiSubWindow* window : frame.Children().subWindowList()) {
            if (qobject_cast<frmTest*>(window->widget()) != nullptr) {
                return true;
            }
        }
        return false;
    }
};

}  // namespace

TEST_F(HistoryCommands, RunAndScheduleThatNeverRanHaveAMenu) {
    Run(Schedule("Sales"), "2026-11-20 06:30:05");
    Schedule("Stock");
    frmViewer& viewer = Open();
    for (const char* text : {Ran, "2: Stock"}) {
        Click(*viewer.tvReports, text, Qt::RightButton);
        EXPECT_EQ(Popup(), "mnuPop") << text;
        EXPECT_THAT(Shown("mnuPop"), ElementsAre("Execute Schedule", "-", "Delete schedule"));
        frame.Menu("mnuPop")->close();
    }
}

TEST_F(HistoryCommands, OtherNodesAndOtherButtonsHaveNone) {
    Run(Schedule("Sales"), "2026-11-20 06:30:05");
    frmViewer& viewer = Open();
    for (const char* text : {"Daily", "1: Sales", NextRun}) {
        Click(*viewer.tvReports, text, Qt::RightButton);
        EXPECT_EQ(Popup(), "") << text;
    }
    Click(*viewer.tvReports, Ran);
    EXPECT_EQ(Popup(), "");
    Click(*viewer.tvReports, Ran, Qt::MiddleButton);
    EXPECT_EQ(Popup(), "");
}

TEST_F(HistoryCommands, NothingOpensWithNoNodeSelected) {
    frmViewer& viewer = OpenPackages();
    for (TreeView* tree : {viewer.tvBatch, viewer.tvReports}) {
        QTest::mouseClick(tree->viewport(), Qt::RightButton, {}, QPoint(20, 20));
        EXPECT_EQ(Popup(), "");
        ClickTab(viewer, 1);
    }
    EXPECT_TRUE(prompts.boxes.empty());
    EXPECT_TRUE(process.ends.empty());
}

TEST_F(HistoryCommands, KeyOpensTheMenuAtItsNode) {
    Run(Schedule("Sales"), "2026-11-20 06:30:05");
    frmViewer& viewer = Open();
    Click(*viewer.tvReports, Ran);
    Key(*viewer.tvReports, Qt::Key_Menu);
    EXPECT_EQ(Popup(), "mnuPop");
    const QPoint corner = viewer.tvReports->viewport()->mapFromGlobal(frame.Menu("mnuPop")->pos());
    EXPECT_TRUE(viewer.tvReports->visualItemRect(&Find(*viewer.tvReports, Ran)).contains(corner));
}

TEST_F(HistoryCommands, PackageAndItsReportsShareAMenuWithOtherEntries) {
    AddPackage("Month end", {"1>sales"});
    frmViewer& viewer = OpenPackages();
    for (int turn = 0; turn < 2; ++turn) {
        Click(*viewer.tvBatch, "1:Month end", Qt::RightButton);
        EXPECT_EQ(Popup(), "mnuPop2");
        EXPECT_THAT(Shown("mnuPop2"), ElementsAre("Delete batch..."));
        frame.Menu("mnuPop2")->close();
        Click(*viewer.tvBatch, "1>sales", Qt::RightButton);
        EXPECT_EQ(Popup(), "mnuPop2");
        EXPECT_THAT(Shown("mnuPop2"), ElementsAre("Run Report...", "View Output...", "-",
                                                  "Edit Parameters...", "Delete report..."));
        frame.Menu("mnuPop2")->close();
    }
    for (const char* text : {"Weekly", "Reccuring 2026-11-30, "}) {
        Click(*viewer.tvBatch, text, Qt::RightButton);
        EXPECT_EQ(Popup(), "") << text;
    }
    Click(*viewer.tvBatch, "1>sales");
    EXPECT_EQ(Popup(), "");
}

TEST_F(HistoryCommands, ScheduleThatNeverRanIsDeletedFromItsBareNode) {
    Schedule("Sales");
    Schedule("Stock");
    frmViewer& viewer = Open();
    prompts.answers = {vbYes};
    SelectAndChoose(*viewer.tvReports, "2: Stock", "mnuDel");
    EXPECT_EQ(prompts.boxes, std::vector<fakes::Box>{Question});
    EXPECT_THAT(database.Rows("select ReportTitle from ReportScheduler"), ElementsAre("Sales"));
    EXPECT_THAT(Nodes(*viewer.tvReports), ElementsAre("Daily", ".1: Sales"));
}

TEST_F(HistoryCommands, DeletionRunsItsTwoStatementsAndFillsTheWindowAgain) {
    const int sales = Schedule("Sales");
    Run(sales, "2026-11-20 06:30:05");
    database.Run("insert into ReportParameter values(1,'Region','West'),(2,'Region','East')");
    frmViewer& viewer = Open();
    database.TakeStatements();
    prompts.answers = {vbYes};
    SelectAndChoose(*viewer.tvReports, Ran, "mnuDel");
    EXPECT_THAT(database.TakeStatements(), ElementsAre("delete from reportscheduler where reportid = 1",
                                                       "delete from reportparameter where reportid = 1",
                                                       "select distinct frequency from reportscheduler"));
    EXPECT_THAT(database.Rows("select ReportID from ReportParameter"), ElementsAre("2"));
}

TEST_F(HistoryCommands, RunsOfADeletedScheduleStayWithNoNodeThatShowsThem) {
    Run(Schedule("Sales"), "2026-11-20 06:30:05");
    Run(1, "2026-11-21 06:30:05", "Failure", "Overflow");
    frmViewer& viewer = Open();
    prompts.answers = {vbYes};
    SelectAndChoose(*viewer.tvReports, "2026-11-21 06:30:05 [Failure - Overflow]", "mnuDel");
    EXPECT_THAT(Nodes(*viewer.tvReports), IsEmpty());
    EXPECT_THAT(database.Rows("select ReportID, LastRun, Status from ReportHistory"),
                ElementsAre("1|2026-11-20 06:30:05|Success", "1|2026-11-21 06:30:05|Failure"));
}

TEST_F(HistoryCommands, ScheduleThatHasRunIsDeletedThroughOneOfItsChildrenOnly) {
    Run(Schedule("Sales"), "2026-11-20 06:30:05");
    frmViewer& viewer = Open();
    prompts.answers = {vbYes};
    for (const char* text : {"1: Sales", "Daily"}) {
        Click(*viewer.tvReports, text);
        ClickEntry("mnuDel");
        EXPECT_TRUE(prompts.boxes.empty()) << text;
    }
    EXPECT_THAT(database.Rows("select ReportTitle from ReportScheduler"), ElementsAre("Sales"));
    SelectAndChoose(*viewer.tvReports, Ran, "mnuDel");
    EXPECT_THAT(database.Rows("select ReportTitle from ReportScheduler"), IsEmpty());
}

TEST_F(HistoryCommands, AnyAnswerButYesDeletesNothing) {
    Schedule("Sales");
    frmViewer& viewer = Open();
    for (const int answer : {vbNo, vbOK}) {
        prompts.answers = {answer};
        SelectAndChoose(*viewer.tvReports, "1: Sales", "mnuDel");
    }
    EXPECT_EQ(prompts.boxes, (std::vector<fakes::Box>{Question, Question}));
    EXPECT_THAT(database.Rows("select ReportTitle from ReportScheduler"), ElementsAre("Sales"));
}

TEST_F(HistoryCommands, DeletionThatFailsIsTold) {
    Schedule("Sales");
    frmViewer& viewer = Open();
    prompts.answers = {vbYes};
    prompts.onBox = [&] {
        if (prompts.boxes.size() == 1) {
            database.Run("alter table ReportParameter rename to Away");
        }
    };
    SelectAndChoose(*viewer.tvReports, "1: Sales", "mnuDel");
    EXPECT_EQ(prompts.boxes,
              (std::vector<fakes::Box>{
                  Question, ErrorBox(-2147217865,
                                     "The data has no table of that name; no such table: reportparameter")}));
    // What was done stays done, and the window was not filled again.
    EXPECT_THAT(database.Rows("select ReportTitle from ReportScheduler"), IsEmpty());
    EXPECT_THAT(Nodes(*viewer.tvReports), ElementsAre("Daily", ".1: Sales"));
}

TEST_F(HistoryCommands, DeletionWithNothingSelectedIsTold) {
    Open();
    ClickEntry("mnuDel");
    EXPECT_EQ(prompts.boxes,
              (std::vector<fakes::Box>{ErrorBox(91, "Object variable or With block variable not set")}));
}

TEST_F(HistoryCommands, ScheduleRunsFromARunsNodeAndTheTreeShowsTheNewRow) {
    Run(Schedule("Sales"), "2026-11-20 06:30:05");
    frmViewer& viewer = Open();
    database.TakeStatements();
    SelectAndChoose(*viewer.tvReports, Ran, "mnuExec");
    EXPECT_EQ(prompts.boxes,
              (std::vector<fakes::Box>{{"Schedule executed successfully", vbInformation, "Oxbow Courier"}}));
    EXPECT_THAT(Nodes(*viewer.tvReports),
                ElementsAre("Daily", ".1: Sales", std::string("..") + NextRun,
                            "..2026-11-21 14:00:00 [Success]", std::string("..") + Ran));
    EXPECT_THAT(database.TakeStatements(), Contains("select * from reportscheduler where reportid = 1"));
    EXPECT_FALSE(frame.BusyShown());
}

TEST_F(HistoryCommands, ScheduleThatNeverRanRunsFromItsOwnNode) {
    Schedule("Sales");
    const int stock = Schedule("Stock");
    frmViewer& viewer = Open();
    SelectAndChoose(*viewer.tvReports, "2: Stock", "mnuExec");
    EXPECT_THAT(database.Rows("select ReportID, Status, ErrMsg from ReportHistory"),
                ElementsAre(std::to_string(stock) + "|Success|None"));
    EXPECT_THAT(Nodes(*viewer.tvReports), Contains("..2026-11-21 14:00:00 [Success]"));
}

TEST_F(HistoryCommands, RunPastItsEndDateLeavesTheNextRunWhereItIs) {
    const int sales = Schedule("Sales");
    database.Run("update ReportScheduler set EndDate='2001-01-01', NextRun='2026-11-21'");
    frmViewer& viewer = Open();
    SelectAndChoose(*viewer.tvReports, "1: Sales", "mnuExec");
    EXPECT_THAT(database.Rows("select ReportID, Status from ReportHistory"),
                ElementsAre(std::to_string(sales) + "|Success"));
    EXPECT_THAT(database.Rows("select NextRun from ReportScheduler"), ElementsAre("2026-11-21"));
}

TEST_F(HistoryCommands, FailedRunShowsAsARowWithAnEmptyStatus) {
    Schedule("Sales");
    frmViewer& viewer = Open();
    engine.reports.clear();
    prompts.onBox = [&] { EXPECT_FALSE(frame.BusyShown()); };
    SelectAndChoose(*viewer.tvReports, "1: Sales", "mnuExec");
    EXPECT_EQ(
        prompts.boxes,
        (std::vector<fakes::Box>{{"An error was encountered, File not found: " + std::string(Path) + " [53]",
                                  vbExclamation, "Oxbow Courier"}}));
    EXPECT_THAT(Nodes(*viewer.tvReports),
                ElementsAre("Daily", ".1: Sales", std::string("..") + NextRun, "..2026-11-21 14:00:00 []"));
    EXPECT_EQ(Find(*viewer.tvReports, "2026-11-21 14:00:00 []").Image(), 9);
    EXPECT_TRUE(mail.sent.empty());
    EXPECT_TRUE(process.ends.empty());
}

TEST_F(HistoryCommands, UnknownFormatWordShowsNothingAtAll) {
    Schedule("Sales");
    database.Run("update ReportScheduler set Format='Papyrus'");
    frmViewer& viewer = Open();
    database.TakeStatements();
    SelectAndChoose(*viewer.tvReports, "1: Sales", "mnuExec");
    EXPECT_TRUE(prompts.boxes.empty());
    EXPECT_THAT(database.Rows("select * from ReportHistory"), IsEmpty());
    EXPECT_THAT(database.TakeStatements(),
                testing::Not(Contains("select distinct frequency from reportscheduler")));
    EXPECT_FALSE(frame.BusyShown());
}

TEST_F(HistoryCommands, NodeWithChildrenRunsNothingWithTheHourglassGoingOnAndOff) {
    Run(Schedule("Sales"), "2026-11-20 06:30:05");
    frmViewer& viewer = Open();
    for (const char* text : {"1: Sales", "Daily"}) {
        Click(*viewer.tvReports, text);
        database.TakeStatements();
        fakes::FakeFrame seen;
        ClickEntry("mnuExec");
        EXPECT_EQ(seen.pointers, (std::vector<int>{11, 0})) << text;
        EXPECT_THAT(database.TakeStatements(), IsEmpty());
    }
    EXPECT_TRUE(prompts.boxes.empty());
}

TEST_F(HistoryCommands, WindowClosedDuringARunComesBackWithTheNewRow) {
    Schedule("Sales");
    frmViewer& viewer = Open();
    engine.onExport = [&](const std::string&) { CloseViewer(*OnScreen()); };
    SelectAndChoose(*viewer.tvReports, "1: Sales", "mnuExec");
    ASSERT_NE(OnScreen(), nullptr);
    EXPECT_THAT(Nodes(*OnScreen()->tvReports), Contains("..2026-11-21 14:00:00 [Success]"));
}

TEST_F(HistoryCommands, ReportOfAPackageIsShownWithItsStoredValues) {
    AddPackage("Month end", {"1>sales"});
    database.Run("update ReportBatchDtls set ReportPath='" + std::string(Path) +
                 "'; insert into ReportBatchPar(ReportID,DetailID,ParValue) values(1,1,'West')");
    engine.reports[Path].parameterTypes = {12};
    frmViewer& viewer = OpenPackages();
    database.TakeStatements();
    SelectAndChoose(*viewer.tvBatch, "1>sales", "mnubView");
    EXPECT_THAT(database.TakeStatements(),
                ElementsAre("select r.DetailID, ReportPath, ParValue, UserName, Password From "
                            "ReportBatchDtls r  left outer join ReportBatchPar x on r.ReportID = x.ReportID "
                            "and  r.DetailID = x.DetailID Where r.ReportID = 1 and Reporttitle = '1>sales'"));
    ASSERT_GE(engine.calls.size(), 2U);
    EXPECT_EQ(engine.calls[0], "open " + std::string(Path));
    EXPECT_EQ(engine.calls[1], "value 1 text West");
    EXPECT_TRUE(PreviewIsUp());
    EXPECT_TRUE(prompts.boxes.empty());
}

TEST_F(HistoryCommands, ReportThatCannotBeOpenedEndsTheProcessWithItsBox) {
    AddPackage("Month end", {"1>sales"});
    frmViewer& viewer = OpenPackages();
    SelectAndChoose(*viewer.tvBatch, "1>sales", "mnubView");
    EXPECT_EQ(prompts.boxes,
              (std::vector<fakes::Box>{EndBox(53, "File not found: Z:\\reports\\1>sales.rpt")}));
    EXPECT_EQ(process.ends, std::vector<int>{1});
    EXPECT_FALSE(PreviewIsUp());
}
