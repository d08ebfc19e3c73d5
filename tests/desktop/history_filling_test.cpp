// SPDX-License-Identifier: GPL-3.0-or-later
// The contents of the Schedule History window, and the queries that fill it.
#include <QLabel>

#include "desktop/HistoryNodes.h"
#include "desktop/Images.h"
#include "history_fixture.h"
#include "platform/contracts/regional.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const char* const Groups = "select distinct frequency from reportscheduler";

std::string OfFrequency(const std::string& frequency) {
    return "select ReportTitle, ReportID, ReportPath, NextRun from ReportScheduler where Frequency = '" +
           frequency + "'";
}

std::string RunsOf(int schedule) {
    return "select top 10 runat, nextrun, lastrun, status, ErrMsg from ReportHistory r inner join "
           "reportscheduler x on r.reportid = x.reportid where r.ReportID = " +
           std::to_string(schedule) + " order by lastrun desc";
}

QImage Picture(const QIcon& icon, QIcon::Mode mode) {
    return icon.pixmap(QSize(16, 16), mode).toImage();
}

class HistoryFilling : public HistoryTest {
 protected:
    int Package(const std::string& name, const std::string& frequency, const Texts& reports) {
        const int id = AddPackage(name, reports);
        database.Run("update ReportBatch set Frequency='" + frequency +
                     "', RunTime='07:15' where ReportID=" + std::to_string(id));
        return id;
    }
};

}  // namespace

TEST_F(HistoryFilling, SchedulesStandUnderTheirFrequencyWithTheirNextRunAndTheirRuns) {
    const int sales = Schedule("Sales");
    const int stock = Schedule("Stock", "Weekly");
    Run(sales, "2026-11-20 06:30:05");
    Run(sales, "2026-11-21 06:30:04", "Failure", "File not found: Z:\\sales.rpt");
    Run(stock, "2026-11-16 06:30:02", "");
    frmViewer& viewer = Open();
    EXPECT_THAT(Nodes(*viewer.tvReports),
                ElementsAre("Daily", ".1: Sales", "..Reccurring 2002-03-07 06:30",
                            "..2026-11-21 06:30:04 [Failure - File not found: Z:\\sales.rpt]",
                            "..2026-11-20 06:30:05 [Success]", "Weekly", ".2: Stock",
                            "..Reccurring 2002-03-07 06:30", "..2026-11-16 06:30:02 []"));
    EXPECT_THAT(Images(*viewer.tvReports), ElementsAre(10, 5, 8, 7, 9, 10, 5, 8, 9));
    EXPECT_TRUE(prompts.boxes.empty());
}

TEST_F(HistoryFilling, KeysOfGroupsAndSchedulesEndInTheirCounters) {
    Schedule("Sales");
    Schedule("Stock");
    Schedule("Week", "Weekly");
    frmViewer& viewer = Open();
    EXPECT_THAT(Keys(*viewer.tvReports),
                ElementsAre("Daily1", "1: Sales1", "2: Stock2", "Weekly2", "3: Week1"));
}

TEST_F(HistoryFilling, RunsOfTheSameMomentStandSideBySide) {
    const int sales = Schedule("Sales");
    for (int i = 0; i < 3; ++i) {
        Run(sales, "2026-11-21 06:30:04");
    }
    const int other = Schedule("Other");
    Run(other, "2026-11-21 06:30:04");
    frmViewer& viewer = Open();
    EXPECT_EQ(viewer.tvReports->Nodes().Count(), 1 + 5 + 3);
    EXPECT_TRUE(prompts.boxes.empty());
}

TEST_F(HistoryFilling, StatementsAreThoseOfEverySchedule) {
    const int sales = Schedule("Sales");
    const int stock = Schedule("Stock", "Weekly");
    const int third = Schedule("Third");
    Run(sales, "2026-11-21 06:30:04");
    Run(stock, "2026-11-21 06:30:04");
    database.TakeStatements();
    Open();
    EXPECT_THAT(database.TakeStatements(), ElementsAre(Groups, OfFrequency("Daily"), RunsOf(sales),
                                                       RunsOf(third), OfFrequency("Weekly"), RunsOf(stock)));
}

TEST_F(HistoryFilling, OnlyAFailureOfExactlyThatWordIsOne) {
    const int sales = Schedule("Sales");
    Run(sales, "2026-11-20 06:30:05", "failure", "odd");
    frmViewer& viewer = Open();
    EXPECT_EQ(Find(*viewer.tvReports, "2026-11-20 06:30:05 [failure]").Image(), 9);
}

TEST_F(HistoryFilling, FrequencyShowsAnotherPictureWhileItIsSelected) {
    Run(Schedule("Sales"), "2026-11-20 06:30:05");
    frmViewer& viewer = Open();
    const QIcon group = Find(*viewer.tvReports, "Daily").icon(0);
    EXPECT_EQ(Picture(group, QIcon::Normal), Picture(HistoryImages().Image(10), QIcon::Normal));
    EXPECT_EQ(Picture(group, QIcon::Selected), Picture(HistoryImages().Image(11), QIcon::Normal));
    EXPECT_NE(Picture(group, QIcon::Normal), Picture(group, QIcon::Selected));
    for (const char* text : {"1: Sales", "Reccurring 2002-03-07 06:30", "2026-11-20 06:30:05 [Success]"}) {
        const QIcon icon = Find(*viewer.tvReports, text).icon(0);
        EXPECT_EQ(Picture(icon, QIcon::Normal), Picture(icon, QIcon::Selected)) << text;
    }
}

TEST_F(HistoryFilling, TenOrMoreRunsShowTheTenNewestNewestFirst) {
    const int sales = Schedule("Sales");
    for (int day : {3, 12, 1, 7, 10, 2, 11, 5, 9, 4, 8, 6}) {
        Run(sales, "2026-11-" + std::string(day < 10 ? "0" : "") + std::to_string(day) + " 06:30:00");
    }
    frmViewer& viewer = Open();
    Texts expected{"Daily", ".1: Sales", "..Reccurring 2002-03-07 06:30"};
    for (int day = 12; day >= 3; --day) {
        expected.push_back("..2026-11-" + std::string(day < 10 ? "0" : "") + std::to_string(day) +
                           " 06:30:00 [Success]");
    }
    EXPECT_EQ(Nodes(*viewer.tvReports), expected);
}

TEST_F(HistoryFilling, RunsOnDemandStandAmongThoseOfThePollWhateverTheRegionsDatesLookLike) {
    SetRegional({DateOrder::DayMonthYear, '.'});
    const int sales = Schedule("Sales");
    for (int day = 1; day <= 10; ++day) {
        Run(sales, "2026-11-" + std::string(day < 10 ? "0" : "") + std::to_string(day) + " 06:30:00");
    }
    Run(sales, "10.11.2026 08:15:00", "");
    Run(sales, "09.11.2026 05:00:00", "");
    frmViewer& viewer = Open();
    Texts nodes = Nodes(*viewer.tvReports);
    ASSERT_EQ(nodes.size(), 13U);
    nodes.resize(7);
    EXPECT_THAT(nodes, ElementsAre("Daily", ".1: Sales", "..Reccurring 2002-03-07 06:30",
                                   "..10.11.2026 08:15:00 []", "..2026-11-10 06:30:00 [Success]",
                                   "..2026-11-09 06:30:00 [Success]", "..09.11.2026 05:00:00 []"));
    SetRegional({});
}

TEST_F(HistoryFilling, ScheduleThatNeverRanIsABareNodeWithoutANextRun) {
    Schedule("Sales");
    frmViewer& viewer = Open();
    EXPECT_THAT(Nodes(*viewer.tvReports), ElementsAre("Daily", ".1: Sales"));
}

TEST_F(HistoryFilling, RunsOfADeletedScheduleHaveNoNode) {
    Run(77, "2026-11-20 06:30:05");
    frmViewer& viewer = Open();
    EXPECT_THAT(Nodes(*viewer.tvReports), IsEmpty());
    EXPECT_EQ(viewer.windowTitle().toStdString(), "Schedule History");
}

TEST_F(HistoryFilling, FrequencyWithoutSchedulesHasNoGroupAndTheGroupsComeInTheDatabasesOrder) {
    Schedule("a", "Weekly");
    Schedule("b", "Daily");
    Schedule("c", "Monthly");
    Schedule("d", "Weekly");
    frmViewer& viewer = Open();
    Texts shown;
    for (const std::string& text : Nodes(*viewer.tvReports)) {
        if (text.front() != '.') {
            shown.push_back(text);
        }
    }
    EXPECT_EQ(shown, database.Rows("select distinct frequency from reportscheduler"));
    EXPECT_EQ(shown.size(), 3U);
    database.Run("delete from ReportScheduler where Frequency='Weekly'");
    ClickEntry("mnuRefHis");
    EXPECT_THAT(Nodes(*viewer.tvReports), testing::Not(testing::Contains("Weekly")));
}

TEST_F(HistoryFilling, TwoSpellingsOfAFrequencyAreOneGroup) {
    Schedule("a", "Weekdays");
    Schedule("b", "WeekDays");
    frmViewer& viewer = Open();
    EXPECT_THAT(Nodes(*viewer.tvReports), ElementsAre("Weekdays", ".1: a", ".2: b"));
}

TEST_F(HistoryFilling, PackagesStandUnderTheirFrequencyWithTheirNextRunAndTheirReports) {
    Package("Month end", "Monthly", {"1>sales", "2>stock"});
    Package("Board", "Weekly", {});
    frmViewer& viewer = Open();
    EXPECT_THAT(Nodes(*viewer.tvBatch), IsEmpty());
    ClickTab(viewer, 2);
    EXPECT_THAT(Nodes(*viewer.tvBatch),
                ElementsAre("Monthly", ".1:Month end", "..Reccuring 2026-11-30, 07:15", "..1>sales",
                            "..2>stock", "Weekly", ".2:Board", "..Reccuring 2026-11-30, 07:15"));
    EXPECT_THAT(Images(*viewer.tvBatch), ElementsAre(10, 12, 8, 5, 5, 10, 12, 8));
    const QIcon group = Find(*viewer.tvBatch, "Monthly").icon(0);
    EXPECT_EQ(Picture(group, QIcon::Selected), Picture(HistoryImages().Image(11), QIcon::Normal));
}

TEST_F(HistoryFilling, KeysOfPackagesEndInARunningNumberAndAReportsBeginsWithItsTitle) {
    Package("Month end", "Monthly", {"1>sales", "1>sales"});
    frmViewer& viewer = Open();
    ClickTab(viewer, 2);
    EXPECT_THAT(
        Keys(*viewer.tvBatch),
        ElementsAre("Monthly^1", "1:Month end^2", "Reccuring 2026-11-30, 07:15^3", "1>sales^4", "1>sales^5"));
}

TEST_F(HistoryFilling, StatementsOfThePackagesAreThoseOfEveryPackage) {
    Package("Month end", "Monthly", {"1>sales"});
    Package("Board", "Weekly", {});
    frmViewer& viewer = Open();
    database.TakeStatements();
    ClickTab(viewer, 2);
    EXPECT_THAT(
        database.TakeStatements(),
        ElementsAre(
            "select distinct Frequency from Reportbatch",
            "select reportid, nextrundate, batchname, runtime from reportbatch where frequency = 'Monthly'",
            "select Reporttitle from Reportbatchdtls where ReportID = 1",
            "select reportid, nextrundate, batchname, runtime from reportbatch where frequency = 'Weekly'",
            "select Reporttitle from Reportbatchdtls where ReportID = 2"));
}

TEST_F(HistoryFilling, WhatADatabaseCannotTellIsToldInABoxAndWhatWasReadStands) {
    Schedule("Sales");
    frmViewer& viewer = Open();
    database.Run("alter table ReportScheduler rename to Away");
    ClickEntry("mnuRefHis");
    ASSERT_EQ(prompts.boxes.size(), 1U);
    EXPECT_EQ(prompts.boxes[0],
              (fakes::Box{"The data has no table of that name; no such table: reportscheduler [-2147217865]",
                          vbExclamation, "Oxbow Courier"}));
    EXPECT_THAT(Nodes(*viewer.tvReports), ElementsAre("Daily", ".1: Sales"));
    EXPECT_FALSE(frame.BusyShown());
    EXPECT_TRUE(viewer.tvReports->updatesEnabled());
    EXPECT_TRUE(process.ends.empty());
}

TEST_F(HistoryFilling, FirstLoadThatFailsKeepsTheCaptionOfLoading) {
    database.Run("alter table ReportHistory rename to Away");
    Schedule("Sales");
    frmViewer& viewer = Open();
    EXPECT_EQ(prompts.boxes,
              (std::vector<fakes::Box>{
                  {"The data has no table of that name; no such table: ReportHistory [-2147217865]",
                   vbExclamation, "Oxbow Courier"}}));
    EXPECT_EQ(viewer.windowTitle().toStdString(), "Schedule History....Loading");
    EXPECT_THAT(Nodes(*viewer.tvReports), ElementsAre("Daily", ".1: Sales"));
    EXPECT_TRUE(frame.Entry("mnuRefHis")->isEnabled());
}

TEST_F(HistoryFilling, MarkInAFrequencyBreaksTheFilling) {
    database.Run("insert into ReportScheduler(ReportTitle,Frequency) values('Sales','Ann''s')");
    Open();
    ASSERT_EQ(prompts.boxes.size(), 1U);
    EXPECT_THAT(prompts.boxes[0].text, testing::EndsWith(" [-2147217900]"));
}

TEST_F(HistoryFilling, ErrorWhileThePackagesAreReadEndsTheProcessWithItsBox) {
    frmViewer& viewer = Open();
    database.Run("alter table ReportBatch rename to Away");
    ClickTab(viewer, 2);
    EXPECT_EQ(prompts.boxes,
              (std::vector<fakes::Box>{
                  EndBox(-2147217865, "The data has no table of that name; no such table: Reportbatch")}));
    EXPECT_EQ(process.ends, std::vector<int>{1});
}
