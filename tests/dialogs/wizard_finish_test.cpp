// SPDX-License-Identifier: GPL-3.0-or-later
// What Finish writes, and what stays written when it fails.
#include "dialogs/wizard_fixture.h"

namespace {

class WizardFinish : public Wizard {
 protected:
    void FillEverything() {
        sales = AddReport("month/regions.rpt", WithParameters({"Region", "Year"}));
        engine.reports[sales].formula = "{region} = 'West'";
        GoTo("Step1");
        Browse(sales);
        Type("txtTitle", "Figures");
        ChooseFolder(1);
        Click("cmdNext");
        The<DTPicker>("dtStart").Value(fakes::At(2026, 12, 1));
        The<DTPicker>("dtEnd").Value(fakes::At(2027, 1, 5));
        TypeTime("0630");
        Click("optFreq4");
        Click("cmdNext");
        Type("txtRecipient", "ann@example.com;bob");
        Type("txtSubject", "The subject");
        Type("txtMessage", "The message");
        Click("cmdNext");
        Click("Check1");
        Type("txtUserName", "scott");
        Type("txtPassword", "tiger");
        The<ComboBox>("cmbFormat").Text("MS Excel");
        SetParameters({"West", "2026"});
        Click("cmdNext");
        ASSERT_EQ(Page(), "Step5");
        database.TakeStatements();
    }
    std::string CachePath(const std::string& name) const {
        return paths::FromMachine((database.Folder() / "Cache").string()) + "\\" + name;
    }
};

}  // namespace

TEST_F(WizardFinish, StatementsAreTheseInThisOrder) {
    FillEverything();
    Click("cmdNext");
    EXPECT_EQ(
        database.TakeStatements(),
        (Texts{
            "insert into ReportScheduler(SendTo,Subject,Message,StartDate, EndDate, RunAT, Frequency, "
            "NextRun, ReportPath, ReportTitle, Client, SelectionForm, Format,Parent,OriginalPath,UserName, "
            "[Password],LoginReq) Values('ann@example.com;bob;', 'The subject', 'The message','2026-12-01',"
            "'2027-01-05','06:30', 'Monthly','2026-12-01','" +
                CachePath("regions.rpt") + "','Figures','NONE','{region} = \"West\"','MS Excel','Stock','" +
                sales + "','scott','tiger','T')",
            "select max(ReportID) from reportscheduler",
            "insert into ReportParameter(ReportID, ParName, ParValue) Values(1,'Region','West')",
            "insert into ReportParameter(ReportID, ParName, ParValue) Values(1,'Year','2026')",
            "select folderid from folders where foldername = 'Stock'"}));
    EXPECT_TRUE(prompts.boxes.empty());
}

TEST_F(WizardFinish, EveryColumnHoldsWhatWasEntered) {
    FillEverything();
    Click("cmdNext");
    const std::pair<const char*, std::string> columns[] = {
        {"SendTo", "ann@example.com;bob;"},
        {"Subject", "The subject"},
        {"Message", "The message"},
        {"StartDate", "2026-12-01"},
        {"EndDate", "2027-01-05"},
        {"RunAt", "06:30"},
        {"Frequency", "Monthly"},
        {"NextRun", "2026-12-01"},
        {"ReportPath", CachePath("regions.rpt")},
        {"ReportTitle", "Figures"},
        {"Client", "NONE"},
        {"SelectionForm", "{region} = \"West\""},
        {"Format", "MS Excel"},
        {"Parent", "Stock"},
        {"OriginalPath", sales},
        {"UserName", "scott"},
        {"Password", "tiger"},
        {"LoginReq", "T"},
    };
    for (const auto& [column, value] : columns) {
        EXPECT_EQ(Stored(column), Texts{value}) << column;
    }
    EXPECT_EQ(database.Rows("select ReportID, ParName, ParValue from ReportParameter order by rowid"),
              (Texts{"1|Region|West", "1|Year|2026"}));
}

TEST_F(WizardFinish, ReportIsCopiedToTheCacheTheDesktopShowsTheFolderAndTheWizardIsUnloaded) {
    FillEverything();
    Click("cmdNext");
    EXPECT_TRUE(std::filesystem::exists(database.Folder() / "Cache" / "regions.rpt"));
    EXPECT_EQ(desk.refreshes, (std::vector<std::pair<std::string, std::string>>{{"Stock", "2"}}));
    EXPECT_TRUE(Unloaded());
}

class WizardFrequency : public WizardFinish,
                        public testing::WithParamInterface<std::pair<const char*, const char*>> {};

TEST_P(WizardFrequency, OptionIsStoredAsItsWord) {
    const auto& [option, word] = GetParam();
    GoTo("Step2");
    Click("optFreq4");
    Click(option);
    GoTo("Step5");
    Click("cmdNext");
    EXPECT_EQ(Stored("Frequency"), Texts{word});
}

INSTANTIATE_TEST_SUITE_P(Words, WizardFrequency,
                         testing::Values(std::pair{"optFreq1", "Daily"}, std::pair{"optFreq2", "Weekdays"},
                                         std::pair{"optFreq3", "Weekly"}, std::pair{"optFreq4", "Monthly"}));

TEST_F(WizardFinish, EndDateLeftAtItsDefaultIsStoredLikeAnyOther) {
    GoTo("Step5");
    Click("cmdNext");
    EXPECT_EQ(Stored("EndDate"), Texts{"3000-12-31"});
}

TEST_F(WizardFinish, FirstRunIsTheStartDateWhateverWeekdayAndTimeOfDaySay) {
    GoTo("Step2");  // a Saturday, after half past six
    Click("optFreq2");
    TypeTime("0630");
    GoTo("Step5");
    Click("cmdNext");
    EXPECT_EQ(Stored("StartDate, NextRun, RunAt, Frequency"), Texts{"2026-11-21|2026-11-21|06:30|Weekdays"});
}

TEST_F(WizardFinish, FolderThatWasNeverClickedGivesTheParentOfTheLastClick) {
    GoTo("Step1");
    ChooseFolder(0);
    Type("cmbFolder", "Anything");
    Browse(sales);
    Click("cmdNext");
    GoTo("Step5");
    Click("cmdNext");
    EXPECT_EQ(Stored("Parent"), Texts{"Sales"});
}

TEST_F(WizardFinish, FolderThatWasNeverClickedIsObjectRequiredWhenThereWasNoClick) {
    GoTo("Step1");
    Type("cmbFolder", "Sales");
    Browse(sales);
    Click("cmdNext");
    GoTo("Step5");
    database.TakeStatements();
    Click("cmdNext");
    EXPECT_EQ(prompts.boxes, Exclamation("An error was detected. Object required [424]"));
    EXPECT_TRUE(database.TakeStatements().empty());
    EXPECT_FALSE(std::filesystem::exists(database.Folder() / "Cache" / "sales.rpt"));
    EXPECT_EQ(Page(), "Step5");
}

TEST_F(WizardFinish, ReportWithoutParametersInsertsNoneAndMayHaveNoFormat) {
    GoTo("Step4");
    Click("cmdNext");
    Click("cmdNext");
    EXPECT_EQ(Stored("Format, Parent, Frequency, LoginReq"), Texts{"|Sales|Daily|F"});
    EXPECT_TRUE(database.Rows("select * from ReportParameter").empty());
    EXPECT_TRUE(prompts.boxes.empty());
    EXPECT_TRUE(Unloaded());
}

TEST_F(WizardFinish, LogonThatWasTakenBackStoresItsTextAllTheSame) {
    GoTo("Step4");
    Click("Check1");
    Type("txtUserName", "scott");
    Type("txtPassword", "tiger");
    Click("Check1");
    GoTo("Step5");
    Click("cmdNext");
    EXPECT_EQ(Stored("UserName, Password, LoginReq"), Texts{"scott|tiger|F"});
}

TEST_F(WizardFinish, ReportFileThatIsGoneIsAnErrorBoxAndWritesNothing) {
    GoTo("Step5");
    std::filesystem::remove(database.Folder() / "sales.rpt");
    Click("cmdNext");
    EXPECT_EQ(prompts.boxes, Exclamation("An error was detected. File not found: \"" +
                                         (database.Folder() / "sales.rpt").string() + "\" [53]"));
    EXPECT_TRUE(Stored("ReportID").empty());
    EXPECT_EQ(Page(), "Step5");
}

TEST_F(WizardFinish, MissingCacheIsAnErrorBoxAndWritesNothing) {
    GoTo("Step5");
    std::filesystem::remove_all(database.Folder() / "Cache");
    Click("cmdNext");
    EXPECT_EQ(prompts.boxes, Exclamation("An error was detected. Path not found: \"" +
                                         (database.Folder() / "Cache/sales.rpt").string() + "\" [76]"));
    EXPECT_TRUE(Stored("ReportID").empty());
}

TEST_F(WizardFinish, FailureAfterTheInsertLeavesTheRowAndASecondFinishInsertsASecond) {
    GoTo("Step5");
    database.Run("delete from Folders");
    Click("cmdNext");
    ASSERT_EQ(prompts.boxes.size(), 1U);
    EXPECT_EQ(prompts.boxes[0].text.substr(0, 23), "An error was detected. ");
    EXPECT_NE(prompts.boxes[0].text.find("[3021]"), std::string::npos);
    EXPECT_EQ(Stored("ReportTitle"), Texts{"Sales by region"});
    EXPECT_EQ(Page(), "Step5");
    database.Run("insert into Folders(FolderName, Parent) values('Sales', 0)");
    Click("cmdNext");
    EXPECT_EQ(Stored("ReportTitle"), (Texts{"Sales by region", "Sales by region"}));
    EXPECT_EQ(prompts.boxes.size(), 1U);
    EXPECT_TRUE(Unloaded());
}

TEST_F(WizardFinish, NoDesktopWindowIsAnErrorAfterTheInsert) {
    GoTo("Step5");
    Global::DeskWindows[1] = nullptr;
    Click("cmdNext");
    EXPECT_EQ(prompts.boxes,
              Exclamation("An error was detected. Object variable or With block variable not set [91]"));
    EXPECT_EQ(Stored("ReportTitle"), Texts{"Sales by region"});
    EXPECT_FALSE(Unloaded());
}

// Names and passwords are not cleaned: a mark ' in one breaks the statement.
TEST_F(WizardFinish, MarkInTheUserNameBreaksTheStatement) {
    GoTo("Step4");
    Click("Check1");
    Type("txtUserName", "O'Hara");
    Type("txtPassword", "tiger");
    GoTo("Step5");
    Click("cmdNext");
    ASSERT_EQ(prompts.boxes.size(), 1U);
    EXPECT_NE(prompts.boxes[0].text.find("[-2147217900]"), std::string::npos) << prompts.boxes[0].text;
    EXPECT_TRUE(Stored("ReportID").empty());
    EXPECT_EQ(Page(), "Step5");
}

TEST_F(WizardFinish, ParameterRowsThatCannotBeWrittenShowTheirOwnBoxAndTheWizardIsDone) {
    FillEverything();
    database.Run("drop table ReportParameter");
    Click("cmdNext");
    ASSERT_EQ(prompts.boxes.size(), 1U);
    const std::string& text = prompts.boxes[0].text;
    EXPECT_EQ(text.substr(0, 35), "Oxbow Courier encountred an error. ");
    EXPECT_NE(text.find("[-2147217865]"), std::string::npos) << text;
    EXPECT_EQ(Stored("ReportTitle"), Texts{"Figures"});
    EXPECT_TRUE(Unloaded());
}

TEST_F(WizardFinish, EnterAloneFinishesAScheduleThatHasAllItNeeds) {
    GoTo("Step4");
    QTest::keyClick(&The<CheckBox>("Check1"), Qt::Key_Return);
    EXPECT_EQ(Page(), "Step5");
    QTest::keyClick(&The<QPushButton>("cmdNext"), Qt::Key_Return);
    EXPECT_EQ(Stored("ReportTitle"), Texts{"Sales by region"});
    EXPECT_TRUE(Unloaded());
}
