// SPDX-License-Identifier: GPL-3.0-or-later
// The wizard and its report: choosing it, its parameters, its preview, and the texts about it.
#include "dialogs/wizard_fixture.h"
#include "support/shown_forms.h"

namespace {

class WizardReport : public Wizard {
 protected:
    const std::string defPathKey = std::string(ShellMod::SettingsKey) + "\\DefPath=";
};

}  // namespace

TEST_F(WizardReport, BrowseSetsTheOpenDialogUp) {
    GoTo("Step1");
    Browse(sales);
    EXPECT_EQ(askedOf,
              (Texts{"Select the report to schedule...", "Crystal Reports (*.rpt)|*.rpt|", "T", "Z:\\srv"}));
}

TEST_F(WizardReport, PickedReportIsOpenedAndItsTitleSelected) {
    engine.reports[sales].formula = "{region} = 'West'";
    GoTo("Step1");
    frame.pointers.clear();
    Browse(sales);
    EXPECT_EQ(engine.calls, Texts{"open " + sales});
    EXPECT_EQ(Box("txtBrowse").Text(), sales);
    EXPECT_EQ(Box("txtTitle").Text(), "Sales by region");
    EXPECT_EQ(Box("txtTitle").selectedText().toStdString(), "Sales by region");
    EXPECT_EQ(FocusedName(), "txtTitle");
    EXPECT_EQ(The<MultiLineTextBox>("txtSelForm").Text(), "{region} = \"West\"");
    EXPECT_EQ(frame.pointers, (std::vector<int>{11, 0}));
}

TEST_F(WizardReport, TypedPathIsOpenedWhenItIsLeft) {
    fakes::FakeReportSpec spec = WithParameters({"Region"});
    spec.title = "Regions";
    spec.formula = "{region} = 'West'";
    const std::string regions = AddReport("regions.rpt", spec);
    GoTo("Step1");
    Type("txtBrowse", (database.Folder() / "regions.rpt").c_str());
    TabOut();
    EXPECT_EQ(engine.calls, Texts{"open " + regions});
    EXPECT_EQ(Box("txtBrowse").Text(), regions);
    EXPECT_EQ(Box("txtTitle").Text(), "Regions");
    EXPECT_EQ(The<MultiLineTextBox>("txtSelForm").Text(), "{region} = \"West\"");
    EXPECT_EQ(Lines(), Texts{"Region1|Region|"});
    EXPECT_EQ(FocusedName(), "cmdBrowse");
    The<TextBox>("txtBrowse").setFocus();
    TabOut();
    EXPECT_EQ(engine.calls.size(), 1U);
}

TEST_F(WizardReport, TypedPathKeepsATypedTitleAndEnterGoesOn) {
    GoTo("Step1");
    ChooseFolder(0);
    Type("txtTitle", "Mine");
    Type("txtBrowse", sales.c_str());
    QTest::keyClick(&Box("txtBrowse"), Qt::Key_Return);
    EXPECT_EQ(Page(), "Step2");
    EXPECT_EQ(engine.calls, Texts{"open " + sales});
    EXPECT_EQ(Box("txtTitle").Text(), "Mine");
    EXPECT_TRUE(prompts.boxes.empty());
}

TEST_F(WizardReport, TypedPathThatDoesNotOpenIsToldAndKeepsThePage) {
    GoTo("Step1");
    ChooseFolder(0);
    Browse(sales);
    Type("txtBrowse", "Z:\\no\\such.rpt");
    Click("cmdNext");
    EXPECT_EQ(prompts.boxes, Exclamation("An error was detected. File not found: Z:\\no\\such.rpt [53]"));
    EXPECT_EQ(Page(), "Step1");
    EXPECT_EQ(FocusedName(), "txtBrowse");
    prompts.boxes.clear();
    Browse(sales);
    Click("cmdNext");
    EXPECT_EQ(Page(), "Step2");
    EXPECT_TRUE(prompts.boxes.empty());
}

TEST_F(WizardReport, HandedReportIsChosenWithItsTitleSelected) {
    const std::string other = AddReport("other.rdl", WithParameters({"Region"}));
    engine.reports[other].title = "Other";
    ScheduleReport(other);
    EXPECT_EQ(Page(), "Step1");
    EXPECT_EQ(Box("txtBrowse").Text(), other);
    EXPECT_EQ(Box("txtTitle").Text(), "Other");
    EXPECT_EQ(Box("txtTitle").selectedText(), "Other");
    EXPECT_EQ(FocusedName(), "txtTitle");
    EXPECT_EQ(Lines(), Texts{"Region1|Region|"});
    EXPECT_EQ(engine.calls, Texts{"open " + other});
    EXPECT_TRUE(registry.writes.empty());
    ChooseFolder(0);
    Click("cmdNext");
    EXPECT_EQ(Page(), "Step2");
    EXPECT_EQ(engine.calls, Texts{"open " + other});
    EXPECT_TRUE(prompts.boxes.empty());
}

TEST_F(WizardReport, HandedReportThatDoesNotOpenIsToldWhenThePageIsLeft) {
    ScheduleReport("Z:\\no\\such.rdl");
    EXPECT_EQ(Page(), "Step1");
    EXPECT_TRUE(prompts.boxes.empty());
    Type("txtTitle", "Mine");
    ChooseFolder(0);
    Click("cmdNext");
    EXPECT_EQ(prompts.boxes, Exclamation("An error was detected. File not found: Z:\\no\\such.rdl [53]"));
    EXPECT_EQ(Page(), "Step1");
}

struct DefaultFolder {
    const char *picked, *folder;
};
class WizardDefaultFolder : public WizardReport, public testing::WithParamInterface<DefaultFolder> {};

TEST_P(WizardDefaultFolder, IsTheTextBeforeTheBackslashOfTheFirstOnesNumber) {
    GoTo("Step1");
    Browse(GetParam().picked);
    EXPECT_EQ(Global::DefPath, GetParam().folder);
    EXPECT_EQ(registry.writes, Texts{defPathKey + GetParam().folder});
}

INSTANTIATE_TEST_SUITE_P(Paths, WizardDefaultFolder,
                         testing::Values(DefaultFolder{"C:\\a\\b\\r.rpt", "C:\\a\\b"},
                                         DefaultFolder{"C:\\a\\b\\c\\d\\r.rpt", "C:\\a\\b"},
                                         DefaultFolder{"C:\\a\\r.rpt", "C:\\a\\r.rpt"},
                                         DefaultFolder{"C:\\r.rpt", "C:\\r.rpt"},
                                         DefaultFolder{"\\\\server\\share\\r.rpt", ""},
                                         DefaultFolder{"ü:\\a\\b\\r.rpt", "ü:\\a\\b"},
                                         DefaultFolder{"r.rpt", ""}));

TEST_F(WizardReport, NextBrowseStartsWhereTheLastOneEnded) {
    GoTo("Step1");
    Browse("Z:\\srv\\reports\\north\\r.rpt");
    Browse(sales);
    EXPECT_EQ(askedOf.back(), "Z:\\srv\\reports");
}

TEST_F(WizardReport, FirstCancelGoesThroughWithNoFile) {
    GoTo("Step1");
    pick.reset();
    Click("cmdBrowse");
    EXPECT_EQ(Box("txtBrowse").Text(), "");
    EXPECT_EQ(Box("txtTitle").Text(), "");
    EXPECT_EQ(Global::DefPath, "");
    EXPECT_EQ(registry.writes, Texts{defPathKey});
    EXPECT_EQ(engine.calls, Texts{"open "});
    EXPECT_EQ(FocusedName(), "txtTitle");
    EXPECT_EQ(frame.pointers.back(), 0);
    EXPECT_TRUE(prompts.boxes.empty());
    EXPECT_TRUE(process.ends.empty());
}

TEST_F(WizardReport, CancelOpensTheFilePickedBeforeOnceMore) {
    GoTo("Step1");
    Browse(sales);
    Type("txtTitle", "Figures");
    pick.reset();
    Click("cmdBrowse");
    EXPECT_EQ(engine.calls, (Texts{"open " + sales, "open " + sales}));
    EXPECT_EQ(Box("txtTitle").Text(), "Sales by region");
    EXPECT_TRUE(prompts.boxes.empty());
}

TEST_F(WizardReport, FileThatIsNoReportReportsNothingAndKeepsTheReportOpenedBefore) {
    GoTo("Step1");
    Browse(sales);
    Browse("Z:\\no\\such\\file.rpt");
    EXPECT_EQ(Box("txtBrowse").Text(), "Z:\\no\\such\\file.rpt");
    EXPECT_EQ(Box("txtTitle").Text(), "Sales by region");
    EXPECT_TRUE(prompts.boxes.empty());
    EXPECT_TRUE(process.ends.empty());
}

TEST_F(WizardReport, ParametersAreListedByNameUnderNumberedKeys) {
    GoTo("Step1");
    Browse(AddReport("regions.rpt", WithParameters({"Region", "Year"})));
    EXPECT_EQ(Lines(), (Texts{"Region1|Region|", "Year2|Year|"}));
}

TEST_F(WizardReport, SecondPickAppendsItsParametersAndKeepsParNamesUntilTheyAreSetAgain) {
    GoTo("Step4", AddReport("regions.rpt", WithParameters({"Region", "Year"})));
    SetParameters({"West", "2026"});
    EXPECT_EQ(Lines(), (Texts{"Region1|Region|West", "Year2|Year|2026"}));
    for (int i = 0; i < 3; ++i) {
        Click("cmdBack");
    }
    const std::string products = AddReport("products.rpt", WithParameters({"Product", "Year"}));
    Browse(products);
    // The second report's Year2 has the key of an existing line.
    EXPECT_EQ(Lines(), (Texts{"Region1|Region|West", "Year2|Year|2026", "Product1|Product|"}));
    EXPECT_EQ(Global::ParNames, (Texts{"", "Region", "Year"}));
    EXPECT_EQ(Global::ParValues, (Texts{"", "West", "2026"}));
    GoTo("Step4", products);
    SetParameters({"Tea", "2025"});
    EXPECT_EQ(Lines(), (Texts{"Product1|Product|Tea", "Year2|Year|2025"}));
    EXPECT_EQ(Global::ParNames, (Texts{"", "Product", "Year"}));
}

TEST_F(WizardReport, SetParametersSaysSoWhenThereAreNone) {
    GoTo("Step4");
    Click("cmdPar");
    EXPECT_EQ(prompts.boxes, (Boxes{{"This report has no parameters.", vbInformation, "Oxbow Courier"}}));
}

TEST_F(WizardReport, SetParametersNamesTheWizardAsTheCaller) {
    GoTo("Step4", AddReport("regions.rpt", WithParameters({"Region"})));
    Global::ParCaller = "frmWiz";
    SetParameters({"West"});
    EXPECT_EQ(Global::ParCaller, "frmAddReport");
}

TEST_F(WizardReport, SetParametersIsOpenWhileThereIsAReport) {
    GoTo("Step3");
    Global::CurrentReport.reset();
    GoTo("Step4");
    EXPECT_FALSE(The<QPushButton>("cmdPar").isEnabled());
    Click("cmdPar");
    EXPECT_TRUE(process.ends.empty());
    Click("cmdBack");
    Global::OpenReport(sales);
    GoTo("Step4");
    EXPECT_TRUE(The<QPushButton>("cmdPar").isEnabled());
}

TEST_F(WizardReport, NamesInTheListCannotBeEdited) {
    GoTo("Step4", AddReport("regions.rpt", WithParameters({"Region"})));
    auto& list = The<ListView>("lsvPar");
    list.ListItems()(1).Selected(true);
    list.CurrentView()->setFocus();
    QTest::keyClick(list.CurrentView(), Qt::Key_F2);
    EXPECT_EQ(list.findChild<QLineEdit*>("LabelEdit"), nullptr);
}

TEST_F(WizardReport, FormulaIsEditedInTheAdvancedBoxAndTakenOverByApply) {
    engine.reports[sales].formula = "{region} = \"West\"";
    GoTo("Step4");
    fakes::WhileModal<frmAdvanced>([this] { Click("cmdAdvance"); },
                                   [](frmAdvanced& dialog) {
                                       auto& box = *dialog.findChild<MultiLineTextBox*>("txtForm");
                                       EXPECT_EQ(box.Text(), "{region} = \"West\"");
                                       box.setFocus();
                                       dialog.activateWindow();
                                       EXPECT_TRUE(QTest::qWaitFor([&box] { return box.hasFocus(); }));
                                       box.selectAll();
                                       QTest::keyClicks(&box, "{region} = 'East'");
                                       QTest::keyClick(&box, Qt::Key_Tab);
                                       QTest::mouseClick(dialog.findChild<QPushButton*>("cmdOk"),
                                                         Qt::LeftButton);
                                   });
    EXPECT_EQ(The<MultiLineTextBox>("txtSelForm").Text(), "{region} = \"East\"");
}

TEST_F(WizardReport, CancelOfTheAdvancedBoxKeepsTheFormula) {
    engine.reports[sales].formula = "{region} = \"West\"";
    GoTo("Step4");
    fakes::WhileModal<frmAdvanced>([this] { Click("cmdAdvance"); },
                                   [](frmAdvanced& dialog) {
                                       dialog.findChild<MultiLineTextBox*>("txtForm")->Text("other");
                                       QTest::mouseClick(dialog.findChild<QPushButton*>("cmdCancel"),
                                                         Qt::LeftButton);
                                   });
    EXPECT_EQ(The<MultiLineTextBox>("txtSelForm").Text(), "{region} = \"West\"");
}

TEST_F(WizardReport, MarksAreTakenOutOfTitleSubjectAndMessageWhenTheyAreLeft) {
    GoTo("Step1");
    Type("txtTitle", "Ann's figures");
    TabOut();
    EXPECT_EQ(Box("txtTitle").Text(), "Anns figures");
    GoTo("Step3");
    Type("txtSubject", "'Figures'");
    TabOut();
    EXPECT_EQ(Box("txtSubject").Text(), "Figures");
    Type("txtMessage", "It's here");
    TabOut();
    EXPECT_EQ(The<MultiLineTextBox>("txtMessage").Text(), "Its here");
}

struct Recipients {
    const char *typed, *left;
};
class WizardRecipients : public WizardReport, public testing::WithParamInterface<Recipients> {};

TEST_P(WizardRecipients, EndInASemicolonAndLoseTheirMarksWhenTheyAreLeft) {
    GoTo("Step3");
    Type("txtRecipient", GetParam().typed);
    TabOut();
    EXPECT_EQ(Box("txtRecipient").Text(), GetParam().left);
}

INSTANTIATE_TEST_SUITE_P(Texts, WizardRecipients,
                         testing::Values(Recipients{"ann", "ann;"}, Recipients{"ann;", "ann;"},
                                         Recipients{"", ""}, Recipients{"O'Hara", "OHara;"},
                                         Recipients{"ann;'", "ann;;"}, Recipients{"'", ";"}));

TEST_F(WizardReport, FormulaTurnsItsMarksWhenItIsLeft) {
    GoTo("Step4");
    Type("txtSelForm", "{region} = 'West'");
    TabOut();
    EXPECT_EQ(The<MultiLineTextBox>("txtSelForm").Text(), "{region} = \"West\"");
}

TEST_F(WizardReport, RecipientsArePickedFromTheAddressBook) {
    mail.picks = {{"Ann Archer", "Bob"}};
    GoTo("Step3");
    Type("txtRecipient", "cy@example.com;");
    Click("cmdAd");
    EXPECT_EQ(Box("txtRecipient").Text(), "cy@example.com;Ann Archer;Bob;");
}

TEST_F(WizardReport, FoldersAreReadWhenTheListOpensForTheFirstTimeOnly) {
    GoTo("Step1");
    auto& folders = The<ComboBox>("cmbFolder");
    EXPECT_EQ(folders.ListCount(), 0);
    database.TakeStatements();
    folders.showPopup();
    folders.hidePopup();
    EXPECT_EQ(database.TakeStatements(), Texts{"select foldername from folders"});
    ASSERT_EQ(folders.ListCount(), 3);
    EXPECT_EQ(folders.List(0) + "," + folders.List(1) + "," + folders.List(2), "Sales,Stock,Old");
    database.Run("insert into Folders(FolderName, Parent) values('New', 0)");
    folders.showPopup();
    folders.hidePopup();
    EXPECT_TRUE(database.TakeStatements().empty());
    EXPECT_EQ(folders.ListCount(), 3);
    EXPECT_EQ(folders.Text(), "");
}

TEST_F(WizardReport, ListOfFoldersIsOpenedByKeys) {
    GoTo("Step1");
    auto& folders = The<ComboBox>("cmbFolder");
    folders.setFocus();
    QTest::keyClick(&folders, Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(folders.ListCount(), 3);
    folders.hidePopup();
}

TEST_F(WizardReport, ClickedFolderIsTheCurrentOneAndATypedOneIsNot) {
    GoTo("Step1");
    ChooseFolder(1);
    EXPECT_EQ(Global::CurrentFolder, "Stock");
    Type("cmbFolder", "Sales");
    TabOut();
    EXPECT_EQ(Global::CurrentFolder, "Stock");
    Type("cmbFolder", "Old");
    QTest::keyClick(&The<ComboBox>("cmbFolder"), Qt::Key_Return);
    EXPECT_EQ(Global::CurrentFolder, "Stock");
}

TEST_F(WizardReport, TestShowsTheReportWithoutALogon) {
    GoTo("Step5");
    engine.calls.clear();
    Click("cmdTest");
    EXPECT_EQ(fakes::ShownForms<frmTest>().size(), 1U);
    EXPECT_EQ(engine.calls.front(), "open pages");
    EXPECT_TRUE(The<QPushButton>("cmdNext").isEnabled());
    EXPECT_EQ(Page(), "Step5");
}

TEST_F(WizardReport, TestLogsEveryTableOnWithNameAndPasswordEvenWhenTheBoxIsClear) {
    engine.reports[sales].tables = 2;
    GoTo("Step4");
    Click("Check1");
    Type("txtUserName", "scott");
    Type("txtPassword", "tiger");
    Click("Check1");
    GoTo("Step5");
    engine.calls.clear();
    Click("cmdTest");
    ASSERT_GE(engine.calls.size(), 3U);
    EXPECT_EQ(Texts(engine.calls.begin(), engine.calls.begin() + 3),
              (Texts{"logon 1 [][][scott][tiger]", "logon 2 [][][scott][tiger]", "open pages"}));
}

TEST_F(WizardReport, TestWithANameAndNoPasswordLogsNothingOn) {
    GoTo("Step4");
    Click("Check1");
    Type("txtUserName", "scott");
    Click("Check1");
    GoTo("Step5");
    engine.calls.clear();
    Click("cmdTest");
    EXPECT_EQ(engine.calls.front(), "open pages");
}
