#include "store/Upkeep.h"

#include <gtest/gtest.h>

#include "support/database.h"
#include "support/fakes.h"

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
