// SPDX-License-Identifier: GPL-3.0-or-later
// What OK writes, and what stays written when it fails.
#include "dialogs/properties_fixture.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class PropertiesSave : public PropertiesTest {
 protected:
    Texts StatementsOf(const char* command) {
        database.TakeStatements();
        Click(command);
        return database.TakeStatements();
    }
    const std::string update =
        "update reportscheduler set ReportTitle = 'Week', SendTo = 'ann@example.com;', Subject = 'Figures', "
        "Message = 'See\nattached', RunAt = '07:30', Frequency = 'Weekly', Format = 'MS Excel', "
        "SelectionForm = '{Sales.Region} = \"N\"',Parent = 'Sales',UserName = 'sa',[Password] = "
        "'pw',LoginReq = 'T' where ReportID = 1";
    const std::string empty = "delete from reportparameter where reportid = 1";
};

class PropertiesSaveFrequency : public PropertiesTest,
                                public testing::WithParamInterface<std::pair<const char*, const char*>> {};

}  // namespace

TEST_F(PropertiesSave, OkWritesTheRecordThenItsValuesAndUnloads) {
    Open();
    EXPECT_THAT(
        StatementsOf("cmdOk"),
        ElementsAre(update, empty,
                    "insert into reportparameter(ReportID, ParName, ParValue) values(1,'Region','North')",
                    "insert into reportparameter(ReportID, ParName, ParValue) values(1,'Year','2025')"));
    EXPECT_EQ(Shown(), nullptr);
    EXPECT_TRUE(desk.isEnabled());
    EXPECT_THAT(prompts.boxes, IsEmpty());
}

TEST_F(PropertiesSave, EachFieldGoesToItsColumn) {
    Open();
    Type("txtTitle", "Year");
    Type("cmbFolder", "Stock");
    Get<ComboBox>("cmbFormat").Text("MS Word");
    Turn(Schedule);
    Type("msExec", "0815");
    Tick("optMonthly");
    Turn(Formula);
    Type("txtRecForm", "1 = 1");
    Turn(Logon);
    Type("txtUserName", "guest");
    Type("txtPassword", "secret");
    Turn(Email);
    Type("txtSendTo", "bob@example.com;");
    Type("txtSubject", "New");
    Type("txtMsg", "Hello");
    Click("cmdOk");
    EXPECT_EQ(Stored("ReportTitle,Parent,Format,RunAt,Frequency,SelectionForm,UserName,Password,LoginReq,"
                     "SendTo,Subject,Message"),
              "Year|Stock|MS Word|08:15|Monthly|1 = 1|guest|secret|T|bob@example.com;|New|Hello");
}

TEST_F(PropertiesSave, DatesAndPathsStayAndTheDesktopIsNotRefreshed) {
    const std::string columns = "StartDate,EndDate,NextRun,ReportPath,OriginalPath";
    const std::string before = Stored(columns);
    Open();
    Turn(Schedule);
    Type("msExec", "0815");
    Tick("optDaily");
    Click("cmdOk");
    EXPECT_EQ(Stored("Frequency,RunAt"), "Daily|08:15");
    EXPECT_EQ(Stored(columns), before);
    EXPECT_THAT(desk.refreshes, IsEmpty());
}

TEST_F(PropertiesSave, WithoutTheTickOkShowsATypeMismatchAndChangesNothing) {
    Open();
    Turn(Logon);
    Tick("Check1");
    EXPECT_THAT(StatementsOf("cmdOk"), IsEmpty());
    EXPECT_EQ(prompts.boxes, Boxes{ErrorBox(13, "Type mismatch")});
    EXPECT_NE(Shown(), nullptr);
    EXPECT_EQ(Stored("LoginReq"), "T");
    EXPECT_EQ(StoredParameters(), (Texts{"Region|North", "Year|2025"}));
}

TEST_F(PropertiesSave, ScheduleWithoutLogonIsNotSaved) {
    Set("LoginReq", "'F'");
    Open();
    EXPECT_THAT(StatementsOf("cmdOk"), IsEmpty());
    EXPECT_EQ(prompts.boxes, Boxes{ErrorBox(13, "Type mismatch")});
}

TEST_P(PropertiesSaveFrequency, IsTheWordOfTheTickedOption) {
    const auto [option, word] = GetParam();
    Open();
    Turn(Schedule);
    Tick(option);
    Click("cmdOk");
    EXPECT_EQ(Stored("Frequency"), word);
}

INSTANTIATE_TEST_SUITE_P(Options, PropertiesSaveFrequency,
                         testing::Values(std::pair("optDaily", "Daily"), std::pair("optWeekly", "Weekly"),
                                         std::pair("optWeekDays", "WeekDays"),
                                         std::pair("optMonthly", "Monthly")));

TEST_F(PropertiesSave, WeekdaysOfTheWizardAreSavedAsNoWordAtAll) {
    Set("Frequency", "'Weekdays'");
    Open();
    Click("cmdOk");
    EXPECT_EQ(Stored("Frequency"), "");
    EXPECT_EQ(Shown(), nullptr);
}

TEST_F(PropertiesSave, ClearThenOkDeletesTheValuesAndFailsOnTheFirstLine) {
    Open();
    Turn(Parameters);
    Click("cmdClear");
    EXPECT_THAT(StatementsOf("cmdOk"), ElementsAre(update, empty));
    EXPECT_EQ(prompts.boxes, Boxes{ErrorBox(35600, "Index out of bounds")});
    EXPECT_THAT(StoredParameters(), IsEmpty());
    EXPECT_NE(Shown(), nullptr);
    EXPECT_FALSE(desk.isEnabled());
}

TEST_F(PropertiesSave, ListShorterThanTheReportLeavesTheRowsMadeSoFar) {
    database.Run("delete from ReportParameter where ParName='Year'");
    Open();
    Type("txtTitle", "Year");
    Click("cmdOk");
    EXPECT_EQ(prompts.boxes, Boxes{ErrorBox(35600, "Index out of bounds")});
    EXPECT_EQ(StoredParameters(), Texts{"Region|North"});
    EXPECT_EQ(Stored("ReportTitle"), "Year");
    EXPECT_NE(Shown(), nullptr);
}

TEST_F(PropertiesSave, ReportWithoutParametersKeepsTheRowsThatItHad) {
    engine.reports[file].parameterTypes.clear();
    Open();
    EXPECT_THAT(StatementsOf("cmdOk"), ElementsAre(update));
    EXPECT_EQ(StoredParameters(), (Texts{"Region|North", "Year|2025"}));
    EXPECT_EQ(Shown(), nullptr);
}

TEST_F(PropertiesSave, NamesComeFromTheReportAndValuesFromTheList) {
    engine.reports[file].parameterNames = {"Area", "Period"};
    Open();
    Click("cmdOk");
    EXPECT_EQ(StoredParameters(), (Texts{"Area|North", "Period|2025"}));
}

TEST_F(PropertiesSave, FolderThatIsTypedMovesTheScheduleToANameThatNeedNotExist) {
    Open();
    Type("cmbFolder", "Nowhere");
    Click("cmdOk");
    EXPECT_EQ(Stored("Parent"), "Nowhere");
    EXPECT_THAT(database.Rows("select * from Folders where FolderName='Nowhere'"), IsEmpty());
}

TEST_F(PropertiesSave, MarkInTheFolderBreaksTheStatementAndTheFormStays) {
    Open();
    Type("cmbFolder", "Ann's");
    Click("cmdOk");
    ASSERT_EQ(prompts.boxes.size(), 1U);
    EXPECT_THAT(prompts.boxes[0].text, testing::StartsWith("Oxbow Courier encountred an error. "));
    EXPECT_THAT(prompts.boxes[0].text, testing::EndsWith(" [-2147217900]"));
    EXPECT_NE(Shown(), nullptr);
    EXPECT_EQ(Stored("Parent"), "Sales");
    EXPECT_EQ(StoredParameters(), (Texts{"Region|North", "Year|2025"}));
}

TEST_F(PropertiesSave, EnterSavesWhatWasTypedLastWithoutItsMarks) {
    Open();
    Type("txtTitle", "Ann's Week");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_EQ(Stored("ReportTitle"), "Anns Week");
    EXPECT_EQ(Shown(), nullptr);
    EXPECT_THAT(prompts.boxes, IsEmpty());
}

TEST_F(PropertiesSave, CancelEscAndTheCloseBoxWriteNothing) {
    const std::function<void()> ways[] = {
        [this] { Click("cmdCancel"); },
        [] { QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape); },
        [this] { Shown()->close(); },
    };
    for (const auto& leave : ways) {
        Open();
        Type("txtTitle", "Other");
        database.TakeStatements();
        desk.buttons.clear();
        leave();
        EXPECT_EQ(Shown(), nullptr);
        EXPECT_TRUE(desk.isEnabled());
        EXPECT_EQ(desk.buttons, (std::vector<std::pair<int, bool>>{{5, false}}));
        EXPECT_THAT(database.TakeStatements(), IsEmpty());
    }
    EXPECT_EQ(Stored("ReportTitle"), "Week");
}

TEST_F(PropertiesSave, EnterOnACommandIsThatCommandAndNotOk) {
    Open();
    Type("txtTitle", "Other");
    Get<QPushButton>("cmdCancel").setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_EQ(Shown(), nullptr);
    EXPECT_EQ(Stored("ReportTitle"), "Week");
    Open();
    Turn(Parameters);
    Get<QPushButton>("cmdClear").setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_NE(Shown(), nullptr);
    EXPECT_THAT(Lines(), IsEmpty());
    EXPECT_EQ(StoredParameters(), (Texts{"Region|North", "Year|2025"}));
}

TEST_F(PropertiesSave, NamePickedWithAMarkIsSavedWithoutIt) {
    mail.picks = {{"Pat O'Brien"}};
    Open();
    Turn(Email);
    Click("cmdBrowse");
    Click("cmdOk");
    EXPECT_THAT(prompts.boxes, IsEmpty());
    EXPECT_EQ(Stored("SendTo"), "ann@example.com;Pat OBrien;");
}

TEST_F(PropertiesSave, MarksInUserAndPasswordBreakTheStatementAndTheFormStays) {
    for (const char* box : {"txtUserName", "txtPassword"}) {
        Open();
        Turn(Logon);
        Type(box, "o'b");
        Click("cmdOk");
        ASSERT_EQ(prompts.boxes.size(), 1U) << box;
        EXPECT_THAT(prompts.boxes[0].text, testing::EndsWith(" [-2147217900]"));
        EXPECT_NE(Shown(), nullptr);
        EXPECT_EQ(Stored("UserName,Password"), "sa|pw");
        prompts.boxes.clear();
        Shown()->close();
    }
}

TEST_F(PropertiesSave, OkByItsMnemonicSavesWhatWasTypedLastWithoutItsMarks) {
    Open();
    Turn(Email);
    Type("txtMsg", "It's here");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_O, Qt::AltModifier);
    QTest::qWait(150);  // a button pressed by a key stays down for a moment
    EXPECT_EQ(Stored("Message"), "Its here");
    Open();
    Turn(Email);
    Type("txtSendTo", "o'brien@example.com");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_O, Qt::AltModifier);
    QTest::qWait(150);
    EXPECT_EQ(Stored("SendTo"), "obrien@example.com;");
    EXPECT_THAT(prompts.boxes, IsEmpty());
}
