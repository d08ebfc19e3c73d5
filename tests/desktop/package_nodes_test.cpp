// SPDX-License-Identifier: GPL-3.0-or-later
// Deleting packages and taking reports out of them in the Schedule History window.
#include "package_fixture.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const fakes::Box ReportQuestion{"Remove the current report from the batch?", vbYesNo, "Oxbow Courier"};

fakes::Box PackageQuestion(const std::string& number) {
    return {"Delete the current batch? All " + number + " scheduled reports will be deleted.", vbYesNo,
            "Oxbow Courier"};
}

class PackageNodes : public PackageTest {
 protected:
    void SetUp() override {
        PackageTest::SetUp();
        AddPackage("Month end", {"1>sales", "2>stock"});
        AddPackage("Week", {"1>sales"});
        Store(1, 1, {"North", "2026"});
        Store(1, 2, {"South"});
        Store(2, 3, {"East"});
    }
};

const Texts BothPackages = {"Weekly",    ".1:Month end", "..Reccuring 2026-11-30, ", "..1>sales",
                            "..2>stock", ".2:Week",      "..Reccuring 2026-11-30, ", "..1>sales"};

}  // namespace

TEST_F(PackageNodes, PackageIsToldToHaveOneReportMoreThanItHas) {
    frmViewer& viewer = OpenHistory();
    prompts.answers = {vbNo, vbNo};
    SelectAndChoose(*viewer.tvBatch, "1:Month end", "mnuDir");
    SelectAndChoose(*viewer.tvBatch, "2:Week", "mnuDir");
    EXPECT_EQ(prompts.boxes, (Boxes{PackageQuestion("3"), PackageQuestion("2")}));
}

TEST_F(PackageNodes, PackageGoesWithItsReportsAndTheirValuesThenTheSchedulesAreReadAgain) {
    frmViewer& viewer = OpenHistory();
    database.Run("insert into ReportBatchHstry values('1','21/11/2026,09:00','Success','None')");
    prompts.answers = {vbYes};
    SelectAndChoose(*viewer.tvBatch, "1:Month end", "mnuDir");
    EXPECT_THAT(database.TakeStatements(), ElementsAre("delete from reportbatch where reportid = 1",
                                                       "delete from reportbatchdtls where reportid = 1",
                                                       "delete from reportbatchpar where reportid = 1",
                                                       "select distinct frequency from reportscheduler"));
    EXPECT_THAT(database.Rows("select BatchName from ReportBatch"), ElementsAre("Week"));
    EXPECT_THAT(Reports(), ElementsAre("2|1>sales"));
    EXPECT_THAT(Stored(), ElementsAre("2|3|East"));
    EXPECT_THAT(database.Rows("select ReportID from ReportBatchHstry"), ElementsAre("1"));
}

TEST_F(PackageNodes, DeletedNodeStandsUntilItsTabIsClicked) {
    frmViewer& viewer = OpenHistory();
    prompts.answers = {vbYes};
    SelectAndChoose(*viewer.tvBatch, "2:Week", "mnuDir");
    EXPECT_EQ(Nodes(*viewer.tvBatch), BothPackages);
    ClickTab(viewer, 1);
    ClickTab(viewer, 2);
    EXPECT_THAT(Nodes(*viewer.tvBatch),
                ElementsAre("Weekly", ".1:Month end", "..Reccuring 2026-11-30, ", "..1>sales", "..2>stock"));
}

TEST_F(PackageNodes, ReportTakesTheValuesOfItsSistersAlong) {
    frmViewer& viewer = OpenHistory();
    prompts.answers = {vbYes};
    SelectAndChoose(*viewer.tvBatch, "2>stock", "mnuDir");
    EXPECT_EQ(prompts.boxes, Boxes{ReportQuestion});
    EXPECT_THAT(database.TakeStatements(),
                ElementsAre("delete from reportbatchdtls where ReportTitle = '2>stock' and  ReportId = 1",
                            "delete from reportbatchpar where reportid = 1",
                            "select distinct frequency from reportscheduler"));
    EXPECT_THAT(Reports(), ElementsAre("1|1>sales", "2|1>sales"));
    EXPECT_THAT(Stored(), ElementsAre("2|3|East"));
    EXPECT_EQ(Nodes(*viewer.tvBatch), BothPackages);
    EXPECT_EQ(loop.waits, 0);
}

TEST_F(PackageNodes, LastReportLeavesAnEmptyPackage) {
    database.Run("delete from ReportBatchDtls where DetailID=1");
    frmViewer& viewer = OpenHistory();
    prompts.answers = {vbYes};
    SelectAndChoose(*viewer.tvBatch, "2>stock", "mnuDir");
    EXPECT_THAT(Reports(), ElementsAre("2|1>sales"));
    EXPECT_THAT(database.Rows("select BatchName from ReportBatch"), ElementsAre("Month end", "Week"));
    EXPECT_EQ(loop.waits, 0);
}

TEST_F(PackageNodes, ReportOfTheSameTitleInAnotherPackageStays) {
    frmViewer& viewer = OpenHistory();
    prompts.answers = {vbYes};
    SelectAndChoose(*viewer.tvBatch, "1>sales", "mnuDir");  // the first one, of Month end
    EXPECT_THAT(Reports(), ElementsAre("1|2>stock", "2|1>sales"));
}

TEST_F(PackageNodes, AnyAnswerButYesDeletesNothing) {
    frmViewer& viewer = OpenHistory();
    prompts.answers = {vbNo, vbOK, vbNo};
    SelectAndChoose(*viewer.tvBatch, "1:Month end", "mnuDir");
    SelectAndChoose(*viewer.tvBatch, "1:Month end", "mnuDir");
    SelectAndChoose(*viewer.tvBatch, "2>stock", "mnuDir");
    EXPECT_EQ(prompts.boxes, (Boxes{PackageQuestion("3"), PackageQuestion("3"), ReportQuestion}));
    EXPECT_THAT(database.TakeStatements(), IsEmpty());
}

TEST_F(PackageNodes, FailureBetweenTheStatementsIsToldAndLeavesTheRest) {
    frmViewer& viewer = OpenHistory();
    database.Run(
        "create trigger Kept before delete on ReportBatchPar begin select raise(abort, 'kept'); end");
    prompts.answers = {vbYes};
    SelectAndChoose(*viewer.tvBatch, "2>stock", "mnuDir");
    ASSERT_EQ(prompts.boxes.size(), 2U);
    EXPECT_THAT(prompts.boxes[1].text, testing::StartsWith("Oxbow Courier encountred an error. "));
    EXPECT_THAT(Reports(), ElementsAre("1|1>sales", "2|1>sales"));
    EXPECT_EQ(Stored().size(), 4U);
    EXPECT_THAT(database.TakeStatements(),
                testing::Not(testing::Contains("select distinct frequency from reportscheduler")));
}

TEST_F(PackageNodes, NothingSelectedIsToldByEveryCommand) {
    OpenHistory();
    for (const char* entry : {"mnuDir", "mnuOutput", "mnuEditPar"}) {
        prompts.boxes.clear();
        ClickEntry(entry);
        EXPECT_EQ(prompts.boxes, Boxes{ErrorBox(91, "Object variable or With block variable not set")})
            << entry;
    }
    EXPECT_THAT(database.TakeStatements(), IsEmpty());
    EXPECT_FALSE(frame.BusyShown());
}

TEST_F(PackageNodes, OtherNodesAreNoPackages) {
    frmViewer& viewer = OpenHistory();
    for (const char* text : {"Weekly", "Reccuring 2026-11-30, "}) {
        Click(*viewer.tvBatch, text);
        ClickEntry("mnuDir");
    }
    EXPECT_TRUE(prompts.boxes.empty());
    EXPECT_THAT(database.TakeStatements(), IsEmpty());
}
