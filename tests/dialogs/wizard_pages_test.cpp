// SPDX-License-Identifier: GPL-3.0-or-later
// The pages of the wizard: their contents, and the way from one to the next.
#include <QAbstractItemView>

#include "dialogs/wizard_fixture.h"

namespace {

class WizardPages : public Wizard {};

}  // namespace

TEST_F(WizardPages, OpensOnTheWelcomePageWithoutModality) {
    EXPECT_EQ(form->windowTitle().toStdString(), "Schedule Report Wizard");
    EXPECT_FALSE(form->isModal());
    EXPECT_EQ(Page(), "Frame1");
    EXPECT_FALSE(The<QPushButton>("cmdBack").isEnabled());
    EXPECT_EQ(Caption("cmdBack"), "< &Back");
    EXPECT_EQ(Caption("cmdNext"), "&Next >");
    EXPECT_EQ(Caption("cmdCancel"), "Cancel");
    EXPECT_EQ(FocusedName(), "cmdNext");
}

TEST_F(WizardPages, LoadFillsDatesTimeAndColumns) {
    EXPECT_EQ(The<MaskEdBox>("msTime").Text(), "10:47");
    EXPECT_EQ(The<DTPicker>("dtStart").Value(), fakes::At(2026, 11, 21));
    EXPECT_EQ(The<DTPicker>("dtEnd").Value(), fakes::At(3000, 12, 31));
    EXPECT_TRUE(The<OptionButton>("optFreq1").Value());
    ColumnHeaders& columns = The<ListView>("lsvPar").ColumnHeaders();
    ASSERT_EQ(columns.Count(), 2);
    EXPECT_EQ(columns(1), "Parameter Name");
    EXPECT_EQ(columns(2), "Parameter Value");
    EXPECT_FALSE(The<CheckBox>("Check1").Value());
    EXPECT_EQ(The<MaskEdBox>("msTime").Mask(), "##:##");
    EXPECT_EQ(The<MaskEdBox>("msTime").Format(), "hh:mm");
    EXPECT_EQ(The<MaskEdBox>("msTime").PromptChar(), "_");
    EXPECT_TRUE(database.TakeStatements().empty());
}

TEST_F(WizardPages, FormatsAreOfferedInTheirOrderAndNoneIsChosen) {
    const auto& format = The<ComboBox>("cmbFormat");
    Texts offered;
    for (int i = 0; i < format.ListCount(); ++i) {
        offered.push_back(format.List(i));
    }
    EXPECT_EQ(offered, (Texts{"Acrobat Format (PDF)", "DHTML", "MS Excel", "MS Word", "Rich Text"}));
    EXPECT_EQ(format.Text(), "");
}

TEST_F(WizardPages, HeadingsAndCaptionsReadAsTold) {
    const std::pair<const char*, Texts> pages[] = {
        {"Frame1",
         {"Welcome to the Add Report Wizard", "This wizard helps you:", "- Select a report to schedule",
          "- Add the report recipients and email message", "- Select when the report runs",
          "- Set up the report's parameters", "- Edit the report's record selection formula",
          "To continue, click Next"}},
        {"Step1", {"Step 1 of 4: Report Setup", "Report Title", "Report Path", "Create in Folder"}},
        {"Step2", {"Step 2 of 4: Schedule Setup", "Start Date", "End Date", "Execution Time"}},
        {"Step3", {"Step 3 of 4: Set up Email Options", "Subject", "Message"}},
        {"Step4",
         {"Step 4 of 4: Edit Report Properties", "User Name", "Password", "Format", "Report Parameters"}},
        {"Step5",
         {"Congratulations!",
          "You have successfully set up the report. The details of the report are listed below:",
          "To edit any of the properties, click Back"}},
    };
    for (const auto& [page, captions] : pages) {
        Texts found;
        for (const QLabel* label : The<QFrame>(page).findChildren<QLabel*>()) {
            found.push_back(label->text().toStdString());
        }
        for (const std::string& caption : captions) {
            EXPECT_NE(std::find(found.begin(), found.end(), caption), found.end()) << caption;
        }
    }
    const std::pair<const char*, const char*> buttons[] = {
        {"cmdBrowse", "Browse..."},     {"cmdAd", "TO..."},
        {"cmdPar", "S&et Paramaters"},  {"cmdAdvance", "Advanced..."},
        {"cmdTest", "&Test Report..."}, {"Check1", "Database Logon Required?"},
        {"optFreq1", "Every Day"},      {"optFreq2", "Every Week Day"},
        {"optFreq3", "Every Week"},     {"optFreq4", "Every Month"}};
    for (const auto& [name, caption] : buttons) {
        EXPECT_EQ(Caption(name), caption);
    }
    EXPECT_EQ(The<QGroupBox>("Frame3").title().toStdString(), "Schedule Frequency");
    EXPECT_EQ(The<QGroupBox>("Frame4").title().toStdString(), "Database Connection Properties");
}

TEST_F(WizardPages, NextAndBackWalkThroughAllPages) {
    Texts there{Page()};
    for (const char* page : {"Step1", "Step2", "Step3", "Step4", "Step5"}) {
        GoTo(page);
        there.push_back(Page());
        EXPECT_TRUE(The<QPushButton>("cmdBack").isEnabled());
    }
    EXPECT_EQ(there, (Texts{"Frame1", "Step1", "Step2", "Step3", "Step4", "Step5"}));
    EXPECT_EQ(Caption("cmdNext"), "&Finish");
    Texts back;
    for (int i = 0; i < 5; ++i) {
        Click("cmdBack");
        back.push_back(Page() + " " + Caption("cmdNext"));
    }
    EXPECT_EQ(back,
              (Texts{"Step4 &Next >", "Step3 &Next >", "Step2 &Next >", "Step1 &Next >", "Frame1 &Next >"}));
    EXPECT_FALSE(The<QPushButton>("cmdBack").isEnabled());
    EXPECT_TRUE(prompts.boxes.empty());
}

TEST_F(WizardPages, GoingBackValidatesNothingAndLosesNothing) {
    GoTo("Step3");
    Type("txtSubject", "Figures");
    Type("txtRecipient", "");
    Click("cmdBack");
    EXPECT_EQ(Page(), "Step2");
    TypeTime("0930");
    Click("cmdBack");
    Click("cmdNext");
    Click("cmdNext");
    EXPECT_EQ(Box("txtSubject").Text(), "Figures");
    EXPECT_EQ(The<MaskEdBox>("msTime").Text(), "09:30");
    EXPECT_EQ(Box("txtTitle").Text(), "Sales by region");
    EXPECT_TRUE(prompts.boxes.empty());
}

TEST_F(WizardPages, EachOfTheThreeFieldsOfTheFirstStepIsAskedFor) {
    GoTo("Step1");
    Click("cmdNext");
    EXPECT_EQ(prompts.boxes, Exclamation("Please fill in all the fields"));
    EXPECT_EQ(FocusedName(), "txtTitle");
    Type("txtTitle", "Figures");
    Click("cmdNext");
    EXPECT_EQ(FocusedName(), "cmdBrowse");
    Browse(sales);
    Click("cmdNext");
    EXPECT_EQ(FocusedName(), "cmbFolder");
    Type("txtTitle", "");
    ChooseFolder(0);
    Click("cmdNext");
    EXPECT_EQ(prompts.boxes, Boxes(4, {"Please fill in all the fields", vbExclamation, "Oxbow Courier"}));
    EXPECT_EQ(Page(), "Step1");
}

TEST_F(WizardPages, TitleOfNothingButMarksIsEmptyWhenEnterIsPressedInIt) {
    GoTo("Step1");
    Browse(sales);
    ChooseFolder(0);
    Type("txtTitle", "''");
    QTest::keyClick(&Box("txtTitle"), Qt::Key_Return);
    EXPECT_EQ(prompts.boxes, Exclamation("Please fill in all the fields"));
    EXPECT_EQ(Page(), "Step1");
}

TEST_F(WizardPages, StartDateEqualToEndDateIsRefusedWithABlankBox) {
    GoTo("Step2");
    The<DTPicker>("dtEnd").Value(fakes::At(2026, 11, 21));
    Click("cmdNext");
    EXPECT_EQ(prompts.boxes, Exclamation(""));
    EXPECT_EQ(Page(), "Step2");
    EXPECT_EQ(FocusedName(), "dtEnd");
}

TEST_F(WizardPages, StartDateAfterTheEndDateIsRefusedWithABlankBox) {
    GoTo("Step2");
    The<DTPicker>("dtEnd").Value(fakes::At(2026, 11, 20));
    Click("cmdNext");
    EXPECT_EQ(prompts.boxes, Exclamation(""));
    The<DTPicker>("dtEnd").Value(fakes::At(2026, 11, 22));
    Click("cmdNext");
    EXPECT_EQ(Page(), "Step3");
}

class WizardWithBadTime : public WizardPages, public testing::WithParamInterface<const char*> {};

TEST_P(WizardWithBadTime, IsATypeMismatchAndStaysOnThePage) {
    GoTo("Step2");
    TypeTime(GetParam());
    Click("cmdNext");
    EXPECT_EQ(prompts.boxes, Exclamation("An error was detected. Type mismatch [13]"));
    EXPECT_EQ(Page(), "Step2");
    EXPECT_EQ(FocusedName(), "msTime");
    EXPECT_TRUE(process.ends.empty());
}

INSTANTIATE_TEST_SUITE_P(EmptyHalfTooLate, WizardWithBadTime, testing::Values("", "09", "2575"));

TEST_F(WizardPages, RecipientIsAskedFor) {
    GoTo("Step3");
    Click("cmdNext");
    EXPECT_EQ(prompts.boxes, Exclamation("Please fill in all the fields"));
    EXPECT_EQ(Page(), "Step3");
    EXPECT_EQ(FocusedName(), "txtRecipient");
}

TEST_F(WizardPages, ParametersThatWereNeverSetAreASubscriptErrorInItsOwnWords) {
    GoTo("Step4", AddReport("regions.rpt", WithParameters({"Region"})));
    The<ComboBox>("cmbFormat").Text("MS Word");
    Click("cmdNext");
    EXPECT_EQ(prompts.boxes, Exclamation("Please fill in the parameters for the report"));
    EXPECT_EQ(Page(), "Step4");
    EXPECT_EQ(FocusedName(), "cmdPar");
}

TEST_F(WizardPages, ReportWithParametersNeedsAFormat) {
    GoTo("Step4", AddReport("regions.rpt", WithParameters({"Region"})));
    SetParameters({"West"});
    Click("Check1");  // it asks for name and password after the format
    Click("cmdNext");
    EXPECT_EQ(
        prompts.boxes,
        Exclamation("Please set up the report parameters and specify the format of the report output."));
    EXPECT_EQ(Page(), "Step4");
    EXPECT_EQ(FocusedName(), "cmbFormat");
}

TEST_F(WizardPages, ParameterWithoutANameIsAskedForAfterACancelOfTheParameterDialog) {
    GoTo("Step4", AddReport("regions.rpt", WithParameters({"Region"})));
    The<ComboBox>("cmbFormat").Text("MS Word");
    fakes::WhileModal<frmPar>([this] { Click("cmdPar"); },
                              [](frmPar& dialog) {
                                  QTest::mouseClick(dialog.findChild<QPushButton*>("cmdCancel"),
                                                    Qt::LeftButton);
                              });
    Click("cmdNext");
    EXPECT_EQ(
        prompts.boxes,
        Exclamation("Please set up the report parameters and specify the format of the report output."));
    EXPECT_EQ(FocusedName(), "cmdPar");
}

TEST_F(WizardPages, LogonNeedsBothNameAndPassword) {
    GoTo("Step4");
    Click("Check1");
    const Boxes box =
        Exclamation("Please provide both the username and password for the report's database connection.");
    Click("cmdNext");
    EXPECT_EQ(prompts.boxes, box);
    EXPECT_EQ(FocusedName(), "txtUserName");
    Type("txtUserName", "scott");
    Click("cmdNext");
    EXPECT_EQ(prompts.boxes, (Boxes{box.front(), box.front()}));
    EXPECT_EQ(FocusedName(), "txtPassword");
    Type("txtPassword", "tiger");
    Click("cmdNext");
    EXPECT_EQ(prompts.boxes.size(), 2U);
    EXPECT_EQ(Page(), "Step5");
}

TEST_F(WizardPages, LogonBoxShowsTheFrameAndMovesTheRestDown) {
    GoTo("Step4");
    auto& frame4 = The<QGroupBox>("Frame4");
    auto& list = The<ListView>("lsvPar");
    auto& format = The<ComboBox>("cmbFormat");
    EXPECT_FALSE(frame4.isVisible());
    const int height = list.height(), listTop = list.y(), formatTop = format.y();
    const QSize size = form->size();
    Click("Check1");
    QTest::qWait(0);
    EXPECT_TRUE(frame4.isVisible());
    EXPECT_LT(list.height(), height);
    EXPECT_GT(list.y(), listTop);
    EXPECT_GT(format.y(), formatTop);
    EXPECT_EQ(form->size(), size);
    Click("Check1");
    QTest::qWait(0);
    EXPECT_FALSE(frame4.isVisible());
    EXPECT_EQ(list.height(), height);
    EXPECT_EQ(format.y(), formatTop);
}

TEST_F(WizardPages, FinishPageTellsOfFormatFrequencyAndRecipients) {
    GoTo("Step2");
    Click("optFreq2");
    GoTo("Step5");
    EXPECT_EQ(The<QLabel>("lblFormat").text().toStdString(), "- Format: Acrobat Format (PDF)");
    EXPECT_EQ(The<QLabel>("lblFreq").text().toStdString(), "- Frequency: Weekdays");
    EXPECT_EQ(The<QLabel>("lblSendTo").text().remove(QChar(0x200B)), "- Send To: ann@example.com;");
}

TEST_F(WizardPages, RecipientsWithoutBlanksAreSeenWholeOnTheFinishPage) {
    GoTo("Step3");
    QString many;
    for (int i = 0; i < 12; ++i) {
        many += "recipient" + QString::number(i) + "@example.com;";
    }
    Type("txtRecipient", many.toUtf8().constData());
    Click("cmdNext");
    Click("cmdNext");
    EXPECT_EQ(Page(), "Step5");
    QCoreApplication::processEvents();
    const auto& label = The<QLabel>("lblSendTo");
    const QRect text = label.fontMetrics().boundingRect(QRect(0, 0, label.width(), 10000),
                                                        static_cast<int>(Qt::TextWordWrap), label.text());
    EXPECT_LE(text.width(), label.width());
    EXPECT_LE(text.height(), label.height());
    EXPECT_GT(text.height(), 2 * label.fontMetrics().height());
}

TEST_F(WizardPages, FormulaIsGivenToTheReportWhenTheLastStepIsLeft) {
    GoTo("Step4");
    Type("txtSelForm", "{region} = 'West'");
    engine.calls.clear();
    Click("cmdNext");
    EXPECT_EQ(engine.calls, Texts{"formula {region} = \"West\""});
}

TEST_F(WizardPages, NextWithoutAReportThatWasOpenedIsAnErrorBox) {
    GoTo("Step4");
    Global::CurrentReport.reset();
    Click("cmdNext");
    EXPECT_EQ(prompts.boxes,
              Exclamation("An error was detected. Object variable or With block variable not set [91]"));
    EXPECT_EQ(Page(), "Step4");
}

TEST_F(WizardPages, CancelUnloadsAndWritesNothing) {
    GoTo("Step5");
    database.TakeStatements();
    Click("cmdCancel");
    EXPECT_TRUE(Unloaded());
    EXPECT_TRUE(database.TakeStatements().empty());
    EXPECT_TRUE(prompts.boxes.empty());
}

TEST_F(WizardPages, EscUnloadsAndTheNextUseIsLoadedAgain) {
    GoTo("Step2");
    Click("optFreq3");
    QTest::keyClick(form, Qt::Key_Escape);
    EXPECT_TRUE(Unloaded());
    Show();
    EXPECT_EQ(Page(), "Frame1");
    EXPECT_TRUE(The<OptionButton>("optFreq1").Value());
    EXPECT_EQ(Box("txtTitle").Text(), "");
}

TEST_F(WizardPages, SecondShowKeepsWhatWasEntered) {
    GoTo("Step1");
    Type("txtTitle", "Figures");
    const frmAddReport* first = form;
    Show();
    EXPECT_EQ(form, first);
    EXPECT_EQ(Page(), "Step1");
    EXPECT_EQ(Box("txtTitle").Text(), "Figures");
}

TEST_F(WizardPages, MenuEntryAsksTheActiveDesktopWindow) {
    mnuAdd_Click();
    EXPECT_EQ(desk.commands, std::vector<int>{3});
}

TEST_F(WizardPages, EveryControlIsReachedByTab) {
    const std::pair<const char*, Texts> pages[] = {
        {"Step1", {"txtTitle", "txtBrowse", "cmdBrowse", "cmbFolder"}},
        {"Step2", {"dtStart", "dtEnd", "msTime", "optFreq1"}},
        {"Step3", {"cmdAd", "txtRecipient", "txtSubject", "txtMessage"}},
        {"Step4",
         {"Check1", "txtUserName", "txtPassword", "cmbFormat", "lsvPar", "cmdPar", "cmdAdvance",
          "txtSelForm"}},
        {"Step5", {"cmdTest"}},
    };
    for (const auto& [page, controls] : pages) {
        GoTo(page);
        if (page == std::string("Step4")) {
            Click("Check1");
            Box("txtUserName").setText("u");
            Box("txtPassword").setText("p");
        }
        The<QWidget>("cmdCancel").setFocus();
        TabOut();
        Texts order;
        for (int i = 0; FocusedName() != "cmdBack" && i < 20; ++i) {
            // The parts of a date are separate tab stops.
            if (order.empty() || order.back() != FocusedName()) {
                order.push_back(FocusedName());
            }
            TabOut();
        }
        EXPECT_EQ(order, controls) << page;
    }
}
