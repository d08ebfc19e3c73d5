// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/Upkeep.h"

#include <gtest/gtest.h>

#include "platform/base/convert.h"
#include "platform/contracts/regional.h"
#include "platform/contracts/runtime.h"
#include "support/database.h"
#include "support/fakes.h"
#include "support/raises.h"

namespace {

class Upkeep : public testing::Test {
 protected:
    fakes::FakeClock clock{fakes::At(2026, 11, 21, 8, 0)};
    fakes::TestDatabase database;
};

}  // namespace

TEST_F(Upkeep, PurgeKeepsThirtyDaysAndTakesThirtyOne) {
    database.Run(
        "insert into ReportHistory values(1,'2026-10-22 23:59:59','Success','None'),"
        "(2,'2026-10-21 00:00:00','Success','None');"
        "insert into ReportBatchHstry values('1','2026-10-22,23:59:59','T',null),"
        "('2','2026-10-21,00:00:00','T',null)");
    Global::PurgeOldHistory();
    EXPECT_EQ(database.Rows("select ReportID from ReportHistory"), std::vector<std::string>{"1"});
    EXPECT_EQ(database.Rows("select ReportID from ReportBatchHstry"), std::vector<std::string>{"1"});
    EXPECT_EQ(database.TakeStatements(),
              (std::vector<std::string>{
                  "delete from reporthistory where datediff('d',lastrun, Now()) > 30",
                  "delete from reportbatchhstry where datediff('d',left(lastrun,10),Now()) > 30"}));
}

TEST_F(Upkeep, PurgeCountsCalendarDaysWhateverTheTime) {
    clock.now = fakes::At(2026, 11, 21, 0, 0, 1);
    database.Run(
        "insert into ReportHistory values(1,'2026-10-22 00:00:00','Success','None'),"
        "(2,'2026-10-21 23:59:59','Success','None')");
    Global::PurgeOldHistory();
    EXPECT_EQ(database.Rows("select ReportID from ReportHistory"), std::vector<std::string>{"1"});
}

TEST_F(Upkeep, PurgeReadsRowsOfRunsOnDemandInTheRegionalForm) {
    database.Run("insert into ReportHistory values(1,'" + DateText(fakes::At(2026, 10, 22)) +
                 " 09:00:00',null,'None'),(2,'" + DateText(fakes::At(2026, 10, 21)) +
                 " 09:00:00',null,'None')");
    Global::PurgeOldHistory();
    EXPECT_EQ(database.Rows("select ReportID from ReportHistory"), std::vector<std::string>{"1"});
}

TEST_F(Upkeep, PurgeReadsThePackagesHistoryInTheRegionalForm) {
    SetRegional({DateOrder::DayMonthYear, '.'});
    const auto moment = [](int day) { return "'" + DateText(fakes::At(2026, 10, day)) + ",09:00:00'"; };
    EXPECT_EQ(moment(21), "'21.10.2026,09:00:00'");
    database.Run("insert into ReportBatchHstry values('1'," + moment(22) + ",'T',null),('2'," + moment(21) +
                 ",'T',null)");
    Global::PurgeOldHistory();
    SetRegional({});
    EXPECT_EQ(database.Rows("select ReportID from ReportBatchHstry"), std::vector<std::string>{"1"});
}

TEST_F(Upkeep, PurgeLeavesRowsWithoutAMoment) {
    database.Run("insert into ReportHistory values(1,null,'Success','None')");
    Global::PurgeOldHistory();
    EXPECT_EQ(database.Rows("select ReportID from ReportHistory"), std::vector<std::string>{"1"});
}

TEST_F(Upkeep, MomentThatIsNoDateFailsThePurgeBeforeThePackagesHistory) {
    database.Run(
        "insert into ReportHistory values(1,'soon','Success','None');"
        "insert into ReportBatchHstry values('1','2020-01-01,00:00:00','T',null)");
    EXPECT_EQ(NumberRaisedBy([] { Global::PurgeOldHistory(); }), err::DataTypeMismatch);
    EXPECT_EQ(database.Rows("select ReportID from ReportBatchHstry"), std::vector<std::string>{"1"});
}

TEST_F(Upkeep, RootNameIsNeverFree) {
    EXPECT_FALSE(Global::FolderNameFree("desktop"));
    EXPECT_EQ(database.TakeStatements(),
              std::vector<std::string>{"select count(*) from folders where foldername = 'desktop'"});
}

TEST_F(Upkeep, NameOfAFolderAnywhereIsTakenInAnyCase) {
    database.Run("insert into Folders(FolderName, Parent) values('New Folder', 7)");
    EXPECT_FALSE(Global::FolderNameFree("New Folder"));
    EXPECT_FALSE(Global::FolderNameFree("new folder"));
    EXPECT_TRUE(Global::FolderNameFree("Another"));
}

TEST_F(Upkeep, MarkInAFolderNameBreaksTheStatement) {
    EXPECT_EQ(NumberRaisedBy([] { Global::FolderNameFree("ann's"); }), err::DataSyntax);
}
