// SPDX-License-Identifier: GPL-3.0-or-later
// The commands on the tabs, and the cleaning of a text when its box loses the focus.
#include <fstream>

#include "dialogs/frmFolders.h"
#include "dialogs/frmPar.h"
#include "dialogs/properties_fixture.h"
#include "execution/frmTest.h"
#include "platform/controls/items/tree_view.h"
#include "support/shown_forms.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class PropertiesCommands : public PropertiesTest {
 protected:
    std::string Cached() const {
        std::ifstream cached(database.Folder() / "Cache" / "sales.rpt");
        return {std::istreambuf_iterator<char>(cached), {}};
    }
    // Returns the engine's calls after the load.
    Texts AskedBy(const char* command) {
        engine.calls.clear();
        Click(command);
        return engine.calls;
    }
};

}  // namespace

TEST_F(PropertiesCommands, MarksAreTakenOutWhenABoxIsLeft) {
    const struct {
        Tab tab;
        const char *box, *typed, *left;
    } boxes[] = {
        {General, "txtTitle", "Ann's 'Week'", "Anns Week"},
        {Formula, "txtRecForm", "{A} = 'x' or {B} = \"y\"", "{A} = x or {B} = \"y\""},
        {Email, "txtSubject", "Ann's", "Anns"},
        {Email, "txtMsg", "It's here", "Its here"},
        {Email, "txtSendTo", "O'Brien", "OBrien;"},
        {Email, "txtSendTo", "ann@example.com;", "ann@example.com;"},
        {Email, "txtSendTo", "'", ";"},
        {Email, "txtSendTo", "", ""},
    };
    Open();
    for (const auto& row : boxes) {
        Turn(row.tab);
        Type(row.box, row.typed);
        EXPECT_EQ(Text(row.box), row.typed);
        TabOut();
        EXPECT_EQ(Text(row.box), row.left);
    }
}

TEST_F(PropertiesCommands, OtherBoxesKeepTheirMarks) {
    Open();
    Type("cmbFolder", "Ann's");
    TabOut();
    EXPECT_EQ(Text("cmbFolder"), "Ann's");
    Turn(Logon);
    Type("txtUserName", "o'b");
    TabOut();
    EXPECT_EQ(Text("txtUserName"), "o'b");
}

TEST_F(PropertiesCommands, TurningThePageLeavesTheBox) {
    Open();
    Type("txtTitle", "Ann's");
    Turn(Email);
    EXPECT_EQ(Text("txtTitle"), "Anns");
    Type("txtSendTo", "bob");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(Text("txtSendTo"), "bob;");
    EXPECT_EQ(QApplication::focusWidget()->objectName(), "txtTitle");
}

TEST_F(PropertiesCommands, LogonBoxesAreLockedWithoutTheTickAndKeepTheirTexts) {
    Open();
    Turn(Logon);
    QTest::keyClick(&Get<CheckBox>("Check1"), Qt::Key_Space);
    for (const auto& [name, text] : {std::pair("txtUserName", "sa"), std::pair("txtPassword", "pw")}) {
        EXPECT_TRUE(Get<TextBox>(name).Locked());
        EXPECT_EQ(Get<TextBox>(name).palette().color(QPalette::Base),
                  Shown()->palette().color(QPalette::Button));
        EXPECT_EQ(Text(name), text);
    }
    QTest::keyClick(&Get<CheckBox>("Check1"), Qt::Key_Space);
    for (const char* name : {"txtUserName", "txtPassword"}) {
        EXPECT_FALSE(Get<TextBox>(name).Locked());
        EXPECT_EQ(Get<TextBox>(name).palette().color(QPalette::Base),
                  Shown()->palette().color(QPalette::Base));
    }
}

TEST_F(PropertiesCommands, FoldersAreReadWhenTheListOpensAndOnlyOnce) {
    database.Run("insert into Folders(FolderName, Parent) values('Stock',0),('Sales',0)");
    Open();
    auto& cmbFolder = Get<ComboBox>("cmbFolder");
    database.TakeStatements();
    EXPECT_EQ(cmbFolder.ListCount(), 0);
    cmbFolder.showPopup();
    cmbFolder.hidePopup();
    cmbFolder.showPopup();
    cmbFolder.hidePopup();
    EXPECT_THAT(database.TakeStatements(), ElementsAre("select foldername from folders"));
    EXPECT_EQ(cmbFolder.ListCount(), 2);
    EXPECT_EQ(cmbFolder.List(0), "Stock");
    EXPECT_EQ(cmbFolder.List(1), "Sales");
    EXPECT_EQ(Text("cmbFolder"), "Sales");
}

TEST_F(PropertiesCommands, FolderThatIsChosenInTheListIsNotTheOpenedOne) {
    database.Run("insert into Folders(FolderName, Parent) values('Stock',0)");
    Open();
    auto& cmbFolder = Get<ComboBox>("cmbFolder");
    cmbFolder.showPopup();
    cmbFolder.hidePopup();
    cmbFolder.ListIndex(0);
    EXPECT_EQ(Text("cmbFolder"), "Stock");
    EXPECT_EQ(Global::CurrentFolder, "Sales");
}

TEST_F(PropertiesCommands, SelectPutsTheChosenFolderInTheBox) {
    database.Run("insert into Folders(FolderID, FolderName, Parent) values(4,'Stock',0)");
    Open();
    fakes::WhileModal<frmFolders>(
        [this] { Click("cmdFolder"); },
        [](frmFolders& form) {
            auto& tree = *form.findChild<TreeView*>("tvwFolder");
            QTest::mouseClick(tree.viewport(), Qt::LeftButton, {},
                              tree.visualItemRect(&tree.Nodes()("4Stock")).center());
            QTest::mouseClick(form.findChild<QPushButton*>("cmdOK"), Qt::LeftButton);
        });
    EXPECT_EQ(Text("cmbFolder"), "Stock");
}

TEST_F(PropertiesCommands, SelectThatIsCancelledKeepsTheFolder) {
    Open();
    fakes::WhileModal<frmFolders>([this] { Click("cmdFolder"); },
                                  [](frmFolders& form) {
                                      QTest::mouseClick(form.findChild<QPushButton*>("cmdCancel"),
                                                        Qt::LeftButton);
                                  });
    EXPECT_EQ(Text("cmbFolder"), "Sales");
}

TEST_F(PropertiesCommands, ToAddsTheNamesPickedFromTheAddressBook) {
    mail.picks = {{"Bob", "Cy"}};
    Open();
    Turn(Email);
    Click("cmdBrowse");
    EXPECT_EQ(Text("txtSendTo"), "ann@example.com;Bob;Cy;");
}

TEST_F(PropertiesCommands, SetParametersRefillsTheList) {
    Open();
    Turn(Parameters);
    engine.calls.clear();
    fakes::WhileModal<frmPar>([this] { Click("cmdSet"); },
                              [](frmPar& form) {
                                  form.findChild<ComboBox*>("cmbRegion")->Text("South");
                                  form.findChild<ComboBox*>("cmbYear")->Text("2026");
                                  QTest::mouseClick(form.findChild<QPushButton*>("cmdOK"), Qt::LeftButton);
                              });
    EXPECT_EQ(Global::ParCaller, "frmPar");
    EXPECT_THAT(Lines(), ElementsAre("Region1|Region|South", "Year2|Year|2026"));
    EXPECT_THAT(engine.calls, ElementsAre("clear 1", "clear 2", "value 1 text South", "value 2 double 2026"));
}

TEST_F(PropertiesCommands, SetParametersReplacesTheRowsOfALostParameter) {
    engine.reports[file].parameterTypes = {report::StringField};
    Open();
    Turn(Parameters);
    fakes::WhileModal<frmPar>(
        [this] { Click("cmdSet"); },
        [](frmPar& form) { QTest::mouseClick(form.findChild<QPushButton*>("cmdOK"), Qt::LeftButton); });
    EXPECT_THAT(Lines(), ElementsAre("Region1|Region|"));
}

TEST_F(PropertiesCommands, ClearTakesTheValuesOfTheReportAndTheLinesAway) {
    Open();
    Turn(Parameters);
    EXPECT_THAT(AskedBy("cmdClear"), ElementsAre("clear 1", "clear 2"));
    EXPECT_THAT(Lines(), IsEmpty());
    EXPECT_EQ(StoredParameters(), (Texts{"Region|North", "Year|2025"}));
}

TEST_F(PropertiesCommands, ClearWithoutAReportEndsTheProcessWithItsBox) {
    Open();
    Global::CurrentReport.reset();
    Turn(Parameters);
    Click("cmdClear");
    EXPECT_EQ(prompts.boxes, Boxes{EndBox(91, "Object variable or With block variable not set")});
    EXPECT_EQ(process.ends, std::vector<int>{1});
}

TEST_F(PropertiesCommands, NamesInTheListCannotBeEdited) {
    Open();
    Turn(Parameters);
    auto& list = Get<ListView>("lsvPar");
    list.ListItems()(1).Selected(true);
    QTest::keyClick(list.CurrentView(), Qt::Key_F2);
    EXPECT_EQ(list.findChild<QLineEdit*>("LabelEdit"), nullptr);
    EXPECT_THAT(Lines(), ElementsAre("Region1|Region|North", "Year2|Year|2025"));
}

// The statement lacks its closing mark, and no handler catches the database's error.
TEST_F(PropertiesCommands, RefreshRenewsTheCopyAndThenEndsTheProcessWithItsBox) {
    std::ofstream(database.Folder() / "Cache" / "sales.rpt") << "as it was";
    const std::string all = "*";
    const std::string before = Stored(all);
    Open();
    frame.pointers.clear();
    database.TakeStatements();
    Click("cmdRefresh");
    EXPECT_EQ(Cached(), "as it is now");
    EXPECT_THAT(
        database.TakeStatements(),
        ElementsAre("Select originalpath from reportscheduler where reportid = 1",
                    "update reportscheduler set selectionform = '{Sales.Total} > 0' where reportid = '1"));
    EXPECT_EQ(prompts.boxes,
              Boxes{EndBox(-2147217900,
                           "The statement is not understood; unrecognized token: \"\"1 collate nocase\"")});
    EXPECT_EQ(process.ends, std::vector<int>{1});
    EXPECT_EQ(frame.pointers, std::vector<int>{11});
    EXPECT_EQ(Stored(all), before);
    EXPECT_EQ(Text("txtRecForm"), "{Sales.Region} = \"N\"");
    EXPECT_EQ(StoredParameters(), (Texts{"Region|North", "Year|2025"}));
}

TEST_F(PropertiesCommands, RefreshOfAFileThatIsGoneEndsTheProcessWithItsBox) {
    Open();
    std::filesystem::remove(database.Folder() / "sales.rpt");
    database.TakeStatements();
    Click("cmdRefresh");
    ASSERT_EQ(prompts.boxes.size(), 1U);
    EXPECT_THAT(prompts.boxes[0].text, testing::StartsWith("Run-time error \"53\":\n\nFile not found"));
    EXPECT_EQ(process.ends, std::vector<int>{1});
    EXPECT_EQ(database.TakeStatements().size(), 1U);
}

TEST_F(PropertiesCommands, RefreshWithoutACacheEndsTheProcessWithItsBox) {
    Open();
    std::filesystem::remove(database.Folder() / "Cache");
    Click("cmdRefresh");
    ASSERT_EQ(prompts.boxes.size(), 1U);
    EXPECT_THAT(prompts.boxes[0].text, testing::StartsWith("Run-time error \"76\":\n\nPath not found"));
    EXPECT_EQ(process.ends, std::vector<int>{1});
}

TEST_F(PropertiesCommands, TestShowsTheUsersFileWithValuesAndFormulaOfTheForm) {
    Open();
    Turn(Formula);
    Type("txtRecForm", "1 = 1");
    const Texts asked = AskedBy("cmdTest");
    ASSERT_GE(asked.size(), 3U);
    EXPECT_THAT(Texts(asked.begin(), asked.begin() + 3),
                ElementsAre("value 1 text North", "value 2 double 2025", "formula 1 = 1"));
    EXPECT_EQ(fakes::ShownForms<frmTest>().size(), 1U);
    EXPECT_NE(Shown(), nullptr);
    EXPECT_EQ(Stored("SelectionForm"), "{Sales.Region} = \"N\"");
}

TEST_F(PropertiesCommands, TestHandsEachValueOverByItsTypeAndPassesOverWhatItCannotConvert) {
    engine.reports[file].parameterTypes = {9, 7, 16, 22, 8, 12};
    database.Run(
        "delete from ReportParameter;"
        "insert into ReportParameter(ReportID,ParName,ParValue) values(1,'a','True'),(1,'b','many'),"
        "(1,'c','2026-11-21'),(1,'d','x'),(1,'e','y'),(1,'f','z'),(1,'g','one too many')");
    Open();
    Turn(Formula);
    const Texts asked = AskedBy("cmdTest");
    ASSERT_GE(asked.size(), 5U);
    EXPECT_THAT(Texts(asked.begin(), asked.begin() + 5),
                ElementsAre("value 1 boolean True", "value 3 date 2026-11-21 00:00:00", "value 4 field x",
                            "value 6 text z", "formula {Sales.Region} = \"N\""));
    EXPECT_EQ(fakes::ShownForms<frmTest>().size(), 1U);
    EXPECT_THAT(prompts.boxes, IsEmpty());
    EXPECT_THAT(process.ends, IsEmpty());
}

TEST_F(PropertiesCommands, TestByItsMnemonicTakesTheFormulaWithoutItsMarks) {
    Open();
    Turn(Formula);
    Type("txtRecForm", "'1' = 1");
    engine.calls.clear();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_T, Qt::AltModifier);
    QTest::qWait(150);  // a button pressed by a key stays down for a moment
    EXPECT_THAT(engine.calls, testing::Contains("formula 1 = 1"));
}
