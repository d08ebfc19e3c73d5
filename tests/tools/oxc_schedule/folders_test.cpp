// SPDX-License-Identifier: GPL-3.0-or-later
#include "schedule_program.h"

namespace {

using Folders = ScheduleProgram;

}  // namespace

TEST_F(Folders, AreAddedListedRenamedAndRemoved) {
    Output("folder add Finance");
    EXPECT_EQ(Output("folder add \"Ann's\" --in finance"), "The folder \"Anns\" is added to \"Finance\".\n");
    EXPECT_EQ(Output("folder list"), "FOLDER   IN\nFinance  Desktop\nAnns     Finance\n");
    EXPECT_THAT(Output("folder list --json"), testing::HasSubstr("\"in\": \"Finance\""));
    Output(std::string(AddPlain) + " --folder Finance");
    EXPECT_EQ(Output("folder rename Finance Money"), "The folder \"Finance\" is now called \"Money\".\n");
    EXPECT_EQ(Sql("select Parent from ReportScheduler"), (Texts{"Money"}));
    EXPECT_EQ(Output("folder remove Anns"), "The folder \"Anns\" is removed.\n");
    EXPECT_EQ(Sql("select * from Folders"), (Texts{"1|Money|0"}));
}

TEST_F(Folders, AreRefusedWithTheNameAndTheCause) {
    Output("folder add Finance");
    Output("folder add Month --in Finance");
    Output(std::string(AddPlain) + " --folder Finance");
    EXPECT_EQ(Refusal("folder add finance"),
              "The name \"finance\" already exists in the system. Please specify a new name.");
    EXPECT_EQ(Refusal("folder add desktop"),
              "The name \"desktop\" already exists in the system. Please specify a new name.");
    EXPECT_EQ(Refusal("folder add \"'\""), "The name of the folder is empty");
    EXPECT_EQ(Refusal("folder add New --in None"), "There is no folder \"None\"");
    EXPECT_EQ(Refusal("folder rename Finance Month"),
              "The name \"Month\" already exists in the system. Please specify a new name.");
    EXPECT_EQ(Refusal("folder rename Desktop Top"),
              "The folder \"Desktop\" is the root and cannot be changed");
    EXPECT_EQ(Refusal("folder remove None"), "There is no folder \"None\"");
    EXPECT_EQ(Refusal("folder remove Finance"),
              "The folder \"Finance\" is not empty: schedules 1, folders 1");
}

TEST_F(Folders, NamesAreFoundAsTheyAreStored) {
    Output("folder add \"Ann's\"");
    EXPECT_EQ(Output("folder add Deep --in \"Ann's\""), "The folder \"Deep\" is added to \"Anns\".\n");
    Output("add plain.rpt --title \"Bob's\" --to a@example.com --at 07:30 --folder \"Ann's\"");
    EXPECT_THAT(Output("show \"Bob's\" --folder \"Ann's\""), testing::HasSubstr("Title:       Bobs\n"));
    Output("package add \"Cy's\" --report plain.rpt --output out --no-mail --at 06:00");
    EXPECT_THAT(Output("package show \"Cy's\""), testing::HasSubstr("Name:       Cys\n"));
}

TEST_F(Folders, AreRenamedToAnotherCase) {
    Output("folder add Büro");
    EXPECT_EQ(Output("folder rename Büro büro"), "The folder \"Büro\" is now called \"büro\".\n");
    EXPECT_EQ(Output("folder rename büro büro"), "The folder \"büro\" is now called \"büro\".\n");
    EXPECT_EQ(Sql("select FolderName from Folders"), (Texts{"büro"}));
}
