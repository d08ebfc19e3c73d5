// SPDX-License-Identifier: GPL-3.0-or-later
#include "dialogs/ScheduleRecords.h"

#include <gtest/gtest.h>

#include "support/database.h"
#include "support/fakes.h"
#include "support/raises.h"

namespace {

using Texts = std::vector<std::string>;

class ScheduleRecords : public testing::Test {
 protected:
    fakes::TestDatabase database;
    fakes::FakePrompts prompts;
};

}  // namespace

TEST_F(ScheduleRecords, FolderIsFoundByItsName) {
    database.Run("insert into Folders(FolderID,FolderName) values(4,'Asia'),(7,'Europe')");
    EXPECT_EQ(Global::GetFolderID("Europe"), 7);
    EXPECT_EQ(database.TakeStatements(),
              (Texts{"select folderid  from folders where foldername = 'Europe'"}));
}

TEST_F(ScheduleRecords, FirstFolderWinsWhenSeveralBearTheName) {
    database.Run("insert into Folders(FolderID,FolderName) values(4,'Europe'),(7,'Europe')");
    EXPECT_EQ(Global::GetFolderID("Europe"), 4);
}

TEST_F(ScheduleRecords, UnknownFolderIs0WithoutAnyMessage) {
    EXPECT_EQ(Global::GetFolderID("Nowhere"), 0);
    EXPECT_TRUE(prompts.boxes.empty());
}

TEST_F(ScheduleRecords, ScheduleIsFoundByItsTitleAndItsFolder) {
    database.Run(
        "insert into ReportScheduler(ReportID,ReportTitle,Parent) "
        "values(3,'Sales','Asia'),(5,'Sales','Europe'),(6,'Stock','Europe')");
    EXPECT_EQ(Global::GetScheduleID("Sales", "Europe"), 5);
    EXPECT_EQ(
        database.TakeStatements(),
        (Texts{"select reportid from reportscheduler where reporttitle = 'Sales' and parent = 'Europe'"}));
}

TEST_F(ScheduleRecords, UnknownScheduleIs0WithoutAnyMessage) {
    database.Run("insert into ReportScheduler(ReportTitle,Parent) values('Sales','Asia')");
    EXPECT_EQ(Global::GetScheduleID("Sales", "Europe"), 0);
    EXPECT_EQ(Global::GetScheduleID("Stock", "Asia"), 0);
    EXPECT_TRUE(prompts.boxes.empty());
}

TEST_F(ScheduleRecords, KeyBeyond16BitsOverflows) {
    database.Run("insert into Folders(FolderID,FolderName) values(32767,'Last'),(32768,'Beyond')");
    EXPECT_EQ(Global::GetFolderID("Last"), 32767);
    EXPECT_EQ(NumberRaisedBy([] { Global::GetFolderID("Beyond"); }), 6);
}

TEST_F(ScheduleRecords, MarkInANameBreaksTheStatement) {
    EXPECT_EQ(NumberRaisedBy([] { Global::GetFolderID("O'Neill"); }), err::DataSyntax);
    EXPECT_EQ(NumberRaisedBy([] { Global::GetScheduleID("Sales", "O'Neill"); }), err::DataSyntax);
}

TEST_F(ScheduleRecords, ErrorsPassToTheCaller) {
    database.Run("drop table Folders");
    EXPECT_EQ(NumberRaisedBy([] { Global::GetFolderID("Europe"); }), err::DataTableMissing);
    EXPECT_TRUE(prompts.boxes.empty());
}
