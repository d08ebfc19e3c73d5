// SPDX-License-Identifier: GPL-3.0-or-later
// The pages of the package wizard: their first contents, how they are left, and how their texts are cleaned.
#include "dialogs/package_wizard_fixture.h"

TEST_F(PackageWizard, OpensOnItsFirstPage) {
    EXPECT_EQ(form->windowTitle(), "Multiple Reports Wizard");
    EXPECT_TRUE(form->isVisible());
    EXPECT_FALSE(form->isModal());
    EXPECT_EQ(Page(), "Step1");
    EXPECT_EQ(Caption("cmdBack"), "< Back");
    EXPECT_EQ(Caption("cmdCancel"), "&Cancel");
    EXPECT_EQ(Caption("cmdSave"), "Next >");
    EXPECT_FALSE(The<QPushButton>("cmdBack").isEnabled());
    EXPECT_EQ(QApplication::focusWidget(), &The<TextBox>("txtTitle"));
    EXPECT_TRUE(The<CheckBox>("chkMail").Value());
}

TEST_F(PackageWizard, LoadFillsInWhatIsUsual) {
    EXPECT_EQ(Global::ParCaller, "frmWiz");
    EXPECT_EQ(The<DirListBox>("dirList").Path(), Global::DefPath);
    EXPECT_EQ(The<FileListBox>("filList").Path(), Global::DefPath);
    EXPECT_EQ(TextOf("txtReport1"), "Z:\\srv\\out\\");
    EXPECT_EQ(The<MaskEdBox>("msTime").Text(), "09:05");
    EXPECT_EQ(The<DTPicker>("stDate1").Value(), DateSerial(2026, 11, 21));
    EXPECT_EQ(The<DTPicker>("enDate1").Value(), DateSerial(3000, 12, 31));
    EXPECT_EQ(The<ComboBox>("cmbFreq1").Text(), "");
    EXPECT_EQ(The<ComboBox>("cmbFormat1").Text(), "");
    EXPECT_TRUE(prompts.boxes.empty());
}

TEST_F(PackageWizard, HeadingsNumberThePages) {
    EXPECT_EQ(The<QLabel>("lblStep1").text(), "Step 1 of 4: Report Set up");
    EXPECT_EQ(The<QLabel>("lblStep2").text(), "Step 2 of 4: Schedule Set Up");
    EXPECT_EQ(The<QLabel>("lblStep3").text(), "Step 3 of 4: Select Reports");
    EXPECT_EQ(The<QLabel>("lblStep4").text(), "Step 4 of 4: Email Set Up");
}

TEST_F(PackageWizard, OffersItsFrequenciesAndFormats) {
    const auto entries = [this](const char* name) {
        Texts texts;
        for (int i = 0; i < The<ComboBox>(name).ListCount(); ++i) {
            texts.push_back(The<ComboBox>(name).List(i));
        }
        return texts;
    };
    EXPECT_EQ(entries("cmbFreq1"), (Texts{"Daily", "Monthly", "Quartely", "Weekly"}));
    EXPECT_EQ(entries("cmbFormat1"),
              (Texts{"Acrobat Format (PDF)", "HTML", "MS Excel", "MS Word", "Rich Text"}));
}

TEST_F(PackageWizard, StartFolderThatIsGoneIsToldAndTheRestIsFilledIn) {
    form->cmdCancel_Click();
    Global::DefPath = "Z:\\nowhere";
    Show();
    EXPECT_EQ(TakeBoxes(), (Boxes{Warning("An error occured. Path not found: \"/nowhere\" [76]")}));
    EXPECT_TRUE(form->isVisible());
    EXPECT_EQ(Global::ParCaller, "frmWiz");
    EXPECT_EQ(TextOf("txtReport1"), "Z:\\srv\\out\\");
    EXPECT_EQ(The<MaskEdBox>("msTime").Text(), "09:05");
    EXPECT_EQ(The<DTPicker>("stDate1").Value(), DateSerial(2026, 11, 21));
    EXPECT_EQ(The<DTPicker>("enDate1").Value(), DateSerial(3000, 12, 31));
}

TEST_F(PackageWizard, PageMovesForthAndBack) {
    GoToSchedule();
    EXPECT_EQ(Page(), "Step2");
    EXPECT_TRUE(The<QPushButton>("cmdBack").isEnabled());
    EXPECT_EQ(QApplication::focusWidget(), &The<ComboBox>("cmbFreq1"));
    Choose("cmbFreq1", "Daily");
    Choose("cmbFormat1", "HTML");
    Click("cmdSave");
    EXPECT_EQ(Page(), "Step3");
    EXPECT_EQ(QApplication::focusWidget(), &The<FileListBox>("filList"));
    Add("sales.rpt");
    Click("cmdSave");
    EXPECT_EQ(Page(), "Step4");
    EXPECT_EQ(Caption("cmdSave"), "&Finish");
    EXPECT_EQ(QApplication::focusWidget(), &The<TextBox>("txtRecipient"));
    Click("cmdBack");
    EXPECT_EQ(Page(), "Step3");
    EXPECT_EQ(Caption("cmdSave"), "Next >");
    Click("cmdBack");
    EXPECT_EQ(Page(), "Step2");
    EXPECT_TRUE(The<QPushButton>("cmdBack").isEnabled());
    Click("cmdBack");
    EXPECT_EQ(Page(), "Step1");
    EXPECT_FALSE(The<QPushButton>("cmdBack").isEnabled());
    EXPECT_EQ(TextOf("txtTitle"), "Month end");
    EXPECT_TRUE(prompts.boxes.empty());
}

TEST_F(PackageWizard, OnePageIsVisibleAtATime) {
    GoToSchedule();
    EXPECT_FALSE(The<QWidget>("Step1").isVisible());
    EXPECT_TRUE(The<QWidget>("Step2").isVisible());
    EXPECT_FALSE(The<QWidget>("Step3").isVisible());
    EXPECT_FALSE(The<QWidget>("Step4").isVisible());
}

TEST_F(PackageWizard, EnterIsNextAndEscapeIsCancel) {
    QTest::keyClicks(&The<TextBox>("txtTitle"), "Month end");
    QTest::keyClick(&The<TextBox>("txtTitle"), Qt::Key_Return);
    EXPECT_EQ(Page(), "Step2");
    QTest::keyClick(form, Qt::Key_Escape);
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(database.TakeStatements(), (Texts{"delete from tmpPar"}));
}

TEST_F(PackageWizard, MissingTitleIsRefused) {
    Click("cmdSave");
    EXPECT_EQ(TakeBoxes(), (Boxes{Warning("Please fill in all the fields")}));
    EXPECT_EQ(Page(), "Step1");
    EXPECT_EQ(QApplication::focusWidget(), &The<TextBox>("txtTitle"));
}

TEST_F(PackageWizard, TitleOfNothingButMarksIsMissing) {
    Type("txtTitle", "''");
    QTest::keyClick(&The<TextBox>("txtTitle"), Qt::Key_Return);
    EXPECT_EQ(TakeBoxes(), (Boxes{Warning("Please fill in all the fields")}));
    EXPECT_EQ(Page(), "Step1");
}

TEST_F(PackageWizard, MissingFrequencyFormatOrDestinationIsRefused) {
    GoToSchedule();
    Choose("cmbFormat1", "HTML");
    Click("cmdSave");
    EXPECT_EQ(QApplication::focusWidget(), &The<ComboBox>("cmbFreq1"));
    Choose("cmbFreq1", "Daily");
    The<ComboBox>("cmbFormat1").ListIndex(-1);
    Click("cmdSave");
    EXPECT_EQ(QApplication::focusWidget(), &The<ComboBox>("cmbFormat1"));
    Choose("cmbFormat1", "HTML");
    The<TextBox>("txtReport1").Text("");
    Click("cmdSave");
    EXPECT_EQ(QApplication::focusWidget(), &The<TextBox>("txtReport1"));
    EXPECT_EQ(TakeBoxes(), Boxes(3, Warning("Please fill in all the fields")));
    EXPECT_EQ(Page(), "Step2");
}

TEST_F(PackageWizard, StartOnTheEndDateIsRefused) {
    GoToSchedule();
    Choose("cmbFreq1", "Daily");
    Choose("cmbFormat1", "HTML");
    The<DTPicker>("enDate1").Value(DateSerial(2026, 11, 21));
    Click("cmdSave");
    EXPECT_EQ(TakeBoxes(), (Boxes{Warning("Please fill in all the fields")}));
    EXPECT_EQ(Page(), "Step2");
    The<DTPicker>("enDate1").Value(DateSerial(2026, 11, 22));
    Click("cmdSave");
    EXPECT_EQ(Page(), "Step3");
}

TEST_F(PackageWizard, TimeThatIsNoneIsATypeMismatch) {
    GoToSchedule();
    Choose("cmbFreq1", "Daily");
    Choose("cmbFormat1", "HTML");
    for (const char* digits : {"", "2575"}) {
        Type("msTime", digits);
        Click("cmdSave");
        EXPECT_EQ(TakeBoxes(), (Boxes{Warning("Type mismatch [13]")})) << digits;
        EXPECT_EQ(Page(), "Step2");
        EXPECT_EQ(QApplication::focusWidget(), &The<MaskEdBox>("msTime"));
    }
    Type("msTime", "2359");
    Click("cmdSave");
    EXPECT_EQ(Page(), "Step3");
}

TEST_F(PackageWizard, PackageWithoutReportsIsRefused) {
    GoToReports();
    Click("cmdSave");
    EXPECT_EQ(TakeBoxes(), (Boxes{Warning("You must schedule at least one report.")}));
    EXPECT_EQ(Page(), "Step3");
    EXPECT_EQ(Global::PackageFormat, "");
}

TEST_F(PackageWizard, FormatIsFixedOnLeavingTheReportsPage) {
    GoToEmail();
    EXPECT_EQ(Global::PackageFormat, "MS Excel");
    Click("cmdBack");
    Click("cmdBack");
    Choose("cmbFormat1", "Rich Text");
    EXPECT_EQ(Global::PackageFormat, "MS Excel");
    Click("cmdSave");
    EXPECT_EQ(Global::PackageFormat, "MS Excel");
    Click("cmdSave");
    EXPECT_EQ(Global::PackageFormat, "Rich Text");
}

TEST_F(PackageWizard, TitleLosesItsMarksWithTheFocus) {
    Type("txtTitle", "Ann's month");
    TabOut();
    EXPECT_EQ(TextOf("txtTitle"), "Anns month");
}

TEST_F(PackageWizard, DestinationEndsInABackslash) {
    GoToSchedule();
    for (const char* typed : {"Z:\\srv\\new", "Z:\\srv\\new\\", "/srv/new", "/srv/new/"}) {
        Type("txtReport1", typed);
        TabOut();
        EXPECT_EQ(TextOf("txtReport1"), "Z:\\srv\\new\\");
        EXPECT_EQ(The<TextBox>("txtReport1").text(), "/srv/new/");
    }
    Type("txtReport1", "");
    TabOut();
    EXPECT_EQ(TextOf("txtReport1"), "\\");
}

TEST_F(PackageWizard, BrowsePutsAFolderIn) {
    GoToSchedule();
    shell.folder = "Z:\\srv\\picked";
    Click("cmdBrowse");
    EXPECT_EQ(TextOf("txtReport1"), "Z:\\srv\\picked\\");
    shell.folder = "Z:\\";
    Click("cmdBrowse");
    EXPECT_EQ(TextOf("txtReport1"), "Z:\\");
    shell.folder = "";
    Click("cmdBrowse");
    EXPECT_EQ(TextOf("txtReport1"), "Z:\\");
    EXPECT_EQ(shell.titles, Texts(3, "Browse for Folder"));
}

TEST_F(PackageWizard, FolderDialogsBeginInTheFolderThatTheBoxBesideThemNames) {
    GoToSchedule();
    Click("cmdBrowse");
    The<TextBox>("txtReport1").Text("Z:\\srv\\other\\");
    Click("cmdBrowse");
    Choose("cmbFreq1", "Weekly");
    Choose("cmbFormat1", "MS Excel");
    Click("cmdSave");
    Click("cmdFolder");
    EXPECT_EQ(shell.starts,
              (Texts{"Z:\\srv\\out\\", "Z:\\srv\\other\\", paths::FromMachine(reports.Path())}));
}

TEST_F(PackageWizard, BrowseByAFileTakesItsFolder) {
    GoToSchedule();
    pick = "Z:\\srv\\jan\\old report.pdf";
    frame.pointers.clear();
    Click("cmdBrowse1");
    EXPECT_EQ(askedOf, (Texts{"Select the path to save the scheduled reports...", "T", "Z:\\srv\\out\\"}));
    EXPECT_EQ(TextOf("txtReport1"), "Z:\\srv\\jan\\");
    EXPECT_EQ(frame.pointers, (std::vector<int>{11, 0}));
    The<TextBox>("txtReport1").Text("");
    Click("cmdBrowse1");
    EXPECT_EQ(askedOf.back(), AppPath());
}

TEST_F(PackageWizard, PieceThatAFolderBearsAsWellIsTakenOnce) {
    GoToSchedule();
    pick = "Z:\\jan\\out\\jan";
    Click("cmdBrowse1");
    EXPECT_EQ(TextOf("txtReport1"), "Z:\\jan\\out\\");
}

TEST_F(PackageWizard, CancelledBrowseByAFileGoesOnWithTheFileChosenBefore) {
    GoToSchedule();
    Click("cmdBrowse1");
    EXPECT_EQ(TextOf("txtReport1"), "");
    commonDialog.FileName = "Z:\\opt\\designer.exe";
    Click("cmdBrowse1");
    EXPECT_EQ(TextOf("txtReport1"), "Z:\\opt\\");
    EXPECT_TRUE(prompts.boxes.empty());
}

TEST_F(PackageWizard, TabGoesThroughThePageAndThenTheCommandsAsTheyStand) {
    GoToEmail();
    The<QWidget>("chkMail").setFocus();
    Texts order;
    for (int i = 0; i < 8; ++i) {
        order.push_back(QApplication::focusWidget()->objectName().toStdString());
        TabOut();
    }
    EXPECT_EQ(order, (Texts{"chkMail", "txtRecipient", "cmdTo", "txtSubject", "txtMsg", "cmdBack",
                            "cmdCancel", "cmdSave"}));
}

TEST_F(PackageWizard, CancelEmptiesTheWorkTable) {
    database.Run("insert into tmpPar values('1>sales.rpt', 'Region', 'North')");
    Click("cmdCancel");
    EXPECT_EQ(database.TakeStatements(), (Texts{"delete from tmpPar"}));
    EXPECT_EQ(WaitingRows(), Texts{});
    EXPECT_FALSE(form->isVisible());
}

// A wizard that ended with the editor, by its close box or an error, leaves its values in the work table.
TEST_F(PackageWizard, OpensWithAnEmptyWorkTable) {
    Click("cmdCancel");
    database.Run("insert into tmpPar values('1>stock.rpt', 'Region', 'old')");
    Show();
    EXPECT_EQ(WaitingRows(), Texts{});
    GoToReports();
    AddWithValues("stock.rpt", "North", "2026");
    EXPECT_EQ(WaitingRows(), (Texts{"1>stock.rpt|Region|North", "1>stock.rpt|Year|2026"}));
}

TEST_F(PackageWizard, WizardThatComesBackKeepsItsValues) {
    GoToReports();
    AddWithValues("stock.rpt", "North", "2026");
    form->hide();
    Show();
    EXPECT_EQ(WaitingRows().size(), 2U);
}

TEST_F(PackageWizard, CloseBoxIsCancel) {
    form->close();
    EXPECT_EQ(database.TakeStatements(), (Texts{"delete from tmpPar"}));
    EXPECT_FALSE(form->isVisible());
}

TEST_F(PackageWizard, CancelThatFailsEndsTheProcess) {
    database.Run("alter table tmpPar rename to gone");
    Click("cmdCancel");
    ASSERT_EQ(prompts.boxes.size(), 1U);
    EXPECT_TRUE(prompts.boxes[0].text.starts_with("Run-time error \"-2147217865\":"))
        << prompts.boxes[0].text;
    EXPECT_EQ(process.ends, (std::vector<int>{1}));
    database.Run("alter table gone rename to tmpPar");
}

TEST_F(PackageWizard, AnotherShowBringsTheSameWizard) {
    GoToSchedule();
    const frmWiz* before = form;
    mnuQuick_Click();
    EXPECT_EQ(&frmWiz::Instance(), before);
    EXPECT_EQ(Page(), "Step2");
    Click("cmdCancel");
    Show();
    EXPECT_NE(form, before);
    EXPECT_EQ(Page(), "Step1");
    EXPECT_EQ(TextOf("txtTitle"), "");
}
