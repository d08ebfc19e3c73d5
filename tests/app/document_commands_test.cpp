// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/DocumentCommands.h"

#include <gtest/gtest.h>

#include <QAction>

#include "app/frmMain.h"
#include "platform/base/paths.h"
#include "platform/contracts/adodb.h"
#include "shared/Global.h"
#include "support/database.h"
#include "support/fake_shell.h"
#include "support/fakes.h"

namespace {

using Texts = std::vector<std::string>;
using Openings = std::vector<fakes::Opening>;

class DocumentCommands : public testing::Test {
 protected:
    void SetUp() override {
        Global::DeskWindows = {nullptr, &desk};
        Global::DeskIndex = 1;
        desk.caption = "Europe";
        desk.selected = {{"Sales", "key"}};
        database.Run(
            "insert into ReportScheduler(ReportTitle,Parent,OriginalPath) "
            "values('Sales','Asia','Z:\\asia.rpt'),('Sales','Europe','Z:\\europe.rpt')");
    }
    void TearDown() override {
        Global::DeskWindows.clear();
        Global::DeskIndex = 0;
    }
    // The box for an error with this text and number.
    static std::vector<fakes::Box> ErrorBox(const std::string& description, std::int32_t number) {
        return {{"Oxbow Courier encountred an error. " + description + " [" + std::to_string(number) + "]",
                 vbExclamation, "Oxbow Courier"}};
    }
    const Texts bothStatements = {
        "select reportid from reportscheduler where reporttitle = 'Sales' and parent = 'Europe'",
        "select originalpath from reportscheduler where reportid = 2"};
    fakes::TestDatabase database;
    fakes::FakeShell shell;
    fakes::FakePrompts prompts;
    fakes::FakeDesk desk;
};

}  // namespace

TEST_F(DocumentCommands, AreInTheirMenus) {
    fakes::FakeClock clock(fakes::At(2026, 11, 21));
    for (const char* entry : {"mnuHelp", "mnuSupport", "mnuDesign", "mnutbLoad"}) {
        EXPECT_TRUE(frmMain::Instance().Entry(entry)->isEnabled()) << entry;
        frmMain::Instance().Entry(entry)->trigger();
    }
    ASSERT_EQ(shell.openings.size(), 4U);
    EXPECT_EQ(shell.openings[1].file, "https://oxbow-courier.example/Support.htm");
    EXPECT_EQ(shell.openings[2].file, "Z:\\europe.rpt");
}

TEST_F(DocumentCommands, HelpOpensTheHelpFileOfTheApplicationsFolder) {
    mnuHelp_Click();
    EXPECT_EQ(shell.openings, (Openings{{"open", AppPath() + "\\Oxbow Courier.chm", "", "", 1}}));
}

TEST_F(DocumentCommands, SupportOpensThePageOfTheSite) {
    mnuSupport_Click();
    EXPECT_EQ(shell.openings, (Openings{{"open", "https://oxbow-courier.example/Support.htm", "", "", 3}}));
}

TEST_F(DocumentCommands, LoadEditorStartsTheProgramWithShowMode0) {
    mnutbLoad_Click();
    EXPECT_EQ(shell.openings, (Openings{{"open", AppPath() + "\\oxc.exe", "", "", 0}}));
}

TEST_F(DocumentCommands, DesignOpensTheOriginalPathOfTheSelectedSchedule) {
    mnuDesign_Click();
    EXPECT_EQ(database.TakeStatements(), bothStatements);
    EXPECT_EQ(shell.openings, (Openings{{"open", "Z:\\europe.rpt", "", "", 3}}));
    EXPECT_TRUE(prompts.boxes.empty());
}

TEST_F(DocumentCommands, DesignDoesNotUseTheDesignersPath) {
    Global::DesignerPath = "Z:\\designer\\crw32.exe";
    mnuDesign_Click();
    Global::DesignerPath.clear();
    EXPECT_EQ(shell.openings, (Openings{{"open", "Z:\\europe.rpt", "", "", 3}}));
}

TEST_F(DocumentCommands, DesignOfAPathWithDotExeInItAsksForShowMode0) {
    database.Run("update ReportScheduler set OriginalPath = 'Z:\\old.Exe files\\-europe.rpt'");
    mnuDesign_Click();
    EXPECT_EQ(shell.openings, (Openings{{"open", "Z:\\old.Exe files\\-europe.rpt", "", "", 0}}));
}

TEST_F(DocumentCommands, FailuresOfTheShellAreNotShown) {
    shell.code = 31;
    mnuHelp_Click();
    mnuSupport_Click();
    mnutbLoad_Click();
    mnuDesign_Click();
    EXPECT_EQ(shell.openings.size(), 4U);
    EXPECT_TRUE(prompts.boxes.empty());
}

TEST_F(DocumentCommands, DesignWithNothingSelectedIsShown) {
    desk.selected.reset();
    mnuDesign_Click();
    EXPECT_EQ(prompts.boxes, ErrorBox("Object variable or With block variable not set", 91));
    EXPECT_TRUE(shell.openings.empty());
    EXPECT_TRUE(database.TakeStatements().empty());
}

TEST_F(DocumentCommands, DesignInAWindowThatWasClosedIsShown) {
    Global::DeskWindows[1] = nullptr;
    mnuDesign_Click();
    EXPECT_EQ(prompts.boxes, ErrorBox("Object variable or With block variable not set", 91));
}

TEST_F(DocumentCommands, DesignWithoutAnyWindowIsShown) {
    Global::DeskWindows.clear();
    mnuDesign_Click();
    EXPECT_EQ(prompts.boxes, ErrorBox("Subscript out of range", 9));
}

TEST_F(DocumentCommands, DesignOfAScheduleThatIsGoneIsShown) {
    database.Run("delete from ReportScheduler");
    mnuDesign_Click();
    EXPECT_EQ(prompts.boxes, ErrorBox(RuntimeError(err::NoCurrentRecord).Description(), 3021));
    EXPECT_EQ(database.TakeStatements().back(),
              "select originalpath from reportscheduler where reportid = 0");
    EXPECT_TRUE(shell.openings.empty());
}

TEST_F(DocumentCommands, DesignOfAScheduleWithoutAPathIsShown) {
    database.Run("update ReportScheduler set OriginalPath = null");
    mnuDesign_Click();
    EXPECT_EQ(prompts.boxes, ErrorBox("Invalid use of Null", 94));
}

TEST_F(DocumentCommands, DesignLooksUpOnceMoreWhenAColumnIsMissing) {
    database.Run("alter table ReportScheduler rename column OriginalPath to Elsewhere");
    Texts statements;
    ADODB::SetStatementTrace([&](const std::string& statement) {
        statements.push_back(statement);
        if (statements.size() == 3) {
            database.Run("alter table ReportScheduler rename column Elsewhere to OriginalPath");
        }
    });
    mnuDesign_Click();
    EXPECT_EQ(statements,
              (Texts{bothStatements[0], bothStatements[1], bothStatements[0], bothStatements[1]}));
    EXPECT_EQ(shell.openings, (Openings{{"open", "Z:\\europe.rpt", "", "", 3}}));
    EXPECT_TRUE(prompts.boxes.empty());
}

TEST_F(DocumentCommands, DesignGivesUpWhenTheColumnIsMissingAgain) {
    database.Run("alter table ReportScheduler rename column OriginalPath to Elsewhere");
    mnuDesign_Click();
    EXPECT_EQ(database.TakeStatements(),
              (Texts{bothStatements[0], bothStatements[1], bothStatements[0], bothStatements[1]}));
    EXPECT_EQ(
        prompts.boxes,
        ErrorBox("The data has no column of that name, or a value is missing; no such column: originalpath",
                 -2147217904));
    EXPECT_TRUE(shell.openings.empty());
}
