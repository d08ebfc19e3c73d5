// SPDX-License-Identifier: GPL-3.0-or-later
// The package wizard's last page and its Finish: the mail switch, the rows, and what a failure leaves.
#include "dialogs/package_wizard_fixture.h"
#include "platform/controls/animation.h"
#include "support/shown_forms.h"

namespace {

class PackageFinish : public PackageWizard {
 protected:
    // Goes to the last page with two reports, the second of which has values.
    void Prepare() {
        GoToReports();
        Add("sales.rpt");
        AddWithValues("stock.rpt", "North", "2026");
        Click("cmdSave");
        Type("txtRecipient", "ann@example.com;bob@example.com");
        Type("txtSubject", "Figures");
        Type("txtMsg", "Good morning");
        database.TakeStatements();
        frame.pointers.clear();
    }
    Texts Packages() const {
        return database.Rows(
            "select ReportID, ClientName, Recipients, Frequency, RunTime, StartDate, EndDate, Subject, "
            "Message,"
            " Destination, NextRunDate, BatchName, MailBatch from ReportBatch");
    }
    // The text of the database's error.
    static std::string TableMissing(const std::string& table) {
        return "The data has no table of that name; no such table: " + table + " [-2147217865]";
    }
    // Returns null if the waiting form is not shown.
    static const frmWizDone* Done() { return fakes::ShownForm<frmWizDone>(); }
};

}  // namespace

TEST_F(PackageFinish, RunsItsStatementsInTheirOrder) {
    Prepare();
    Click("cmdSave");
    EXPECT_EQ(
        database.TakeStatements(),
        (Texts{
            "insert into ReportBatch(ClientName, Recipients,Frequency,RunTime,StartDate, EndDate, Subject, "
            "Message, Destination, NextRunDate, BatchName, MailBatch)Values('NONE','ann@example.com;"
            "bob@example.com;','Weekly','09:05','2026-11-21','3000-12-31','Figures','Good morning',"
            "'Z:\\srv\\out\\','2026-11-21','Month end','T')",
            "select max(ReportID) from ReportBatch",
            "insert into "
            "ReportBatchDtls(ReportID,ReportTitle,ReportPath,ReportFormat)Values('1','1>sales.rpt','" +
                PathOf("sales.rpt") + "','MS Excel')",
            "insert into "
            "ReportBatchDtls(ReportID,ReportTitle,ReportPath,ReportFormat)Values('1','2>stock.rpt','" +
                PathOf("stock.rpt") + "','MS Excel')",
            "select detailID, ReportTitle from reportbatchdtls where reportid =1",
            "select * from tmpPar where rptName = '1>sales.rpt'",
            "select * from tmpPar where rptName = '2>stock.rpt'",
            "insert into ReportBatchPar (ReportID, DetailID, ParValue)values (1,2,'North')",
            "insert into ReportBatchPar (ReportID, DetailID, ParValue)values (1,2,'2026')",
            "delete from tmpPar",
        }));
}

TEST_F(PackageFinish, WritesThePackageColumnByColumn) {
    Prepare();
    Click("cmdSave");
    EXPECT_EQ(Packages(), (Texts{"1|NONE|ann@example.com;bob@example.com;|Weekly|09:05|2026-11-21|3000-12-31|"
                                 "Figures|Good morning|Z:\\srv\\out\\|2026-11-21|Month end|T"}));
    EXPECT_EQ(database.Rows("select * from ReportBatchDtls"),
              (Texts{"1|1|1>sales.rpt|" + PathOf("sales.rpt") + "|MS Excel|null|null",
                     "2|1|2>stock.rpt|" + PathOf("stock.rpt") + "|MS Excel|null|null"}));
    EXPECT_EQ(database.Rows("select ReportID, DetailID, ParValue from ReportBatchPar order by ParID"),
              (Texts{"1|2|North", "1|2|2026"}));
    EXPECT_EQ(WaitingRows(), Texts{});
}

TEST_F(PackageFinish, SaysSoAndShowsThePackageOnTheDesktop) {
    Prepare();
    Click("cmdSave");
    // Without its film the waiting form shows its error box as well.
    EXPECT_EQ(TakeBoxes(), (Boxes{Information("Batch Created Successfully."),
                                  Information("Report package created successfully")}));
    EXPECT_EQ(desk.batches, 1);
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(Done(), nullptr);
    EXPECT_EQ(Global::PackageCounter, 0);
    EXPECT_EQ(frame.pointers, (std::vector<int>{11, 0}));
}

TEST_F(PackageFinish, WindowOfAFolderShowsNoPackages) {
    Prepare();
    desk.caption = "Sales";
    Click("cmdSave");
    EXPECT_EQ(desk.batches, 0);
    EXPECT_EQ(TakeBoxes().back(), Information("Report package created successfully"));
}

TEST_F(PackageFinish, WaitWithoutItsFilmSaysSoAndHidesItself) {
    frmWizDone::ShowForm();
    EXPECT_EQ(TakeBoxes(), (Boxes{Information("Batch Created Successfully.")}));
    EXPECT_EQ(Done(), nullptr);
}

#ifdef OXC_ANIMATION
TEST_F(PackageFinish, FilmPlaysWhileTheRowsAreWritten) {
    WriteBytes(database.Folder() / "back.avi", ReadBytes(OXC_ANIMATION));
    Prepare();
    bool shown = false;
    prompts.onBox = [&] {
        const frmWizDone* done = Done();
        shown = done != nullptr && done->findChild<Animation*>("Anime")->AutoPlay() &&
                done->windowTitle() == "Creating Report package....Please wait";
        EXPECT_FALSE(form->isVisible());
    };
    const DateValue before = clock.now;
    Click("cmdSave");
    EXPECT_EQ(TakeBoxes(), (Boxes{Information("Report package created successfully")}));
    EXPECT_TRUE(shown);
    EXPECT_EQ(Done(), nullptr);
    EXPECT_EQ(clock.now.Seconds() - before.Seconds(), 1 + 4 + 4);
}

TEST_F(PackageFinish, FailureTakesTheWaitAwayBeforeItIsTold) {
    WriteBytes(database.Folder() / "back.avi", ReadBytes(OXC_ANIMATION));
    Prepare();
    database.Run("alter table ReportBatchDtls rename to gone");
    bool waiting = true;
    prompts.onBox = [&] { waiting = Done() != nullptr; };
    Click("cmdSave");
    EXPECT_EQ(TakeBoxes(), (Boxes{Warning(TableMissing("ReportBatchDtls"))}));
    EXPECT_FALSE(waiting);
    EXPECT_EQ(Done(), nullptr);
    EXPECT_EQ(Packages().size(), 1U);
}
#endif

TEST_F(PackageFinish, NextWizardBeginsAgainAtNumberOne) {
    Prepare();
    Click("cmdSave");
    Show();
    EXPECT_EQ(Page(), "Step1");
    EXPECT_EQ(Caption("cmdSave"), "Next >");
    GoToReports();
    Add("sales.rpt");
    EXPECT_EQ(Lines("lsvReports"), (Texts{"1>sales.rpt"}));
}

TEST_F(PackageFinish, WizardIsNotBroughtBackWhileItsPackageIsWritten) {
    Prepare();
    int asked = 0;
    prompts.onBox = [&] {
        ++asked;
        mnuQuick_Click();
        EXPECT_FALSE(form->isVisible());
    };
    Click("cmdSave");
    EXPECT_EQ(asked, 2);
    EXPECT_EQ(Packages().size(), 1U);
}

TEST_F(PackageFinish, MailOffStoresNotAvailableAsRecipients) {
    GoToEmail();
    TickMail();
    EXPECT_EQ(TextOf("txtRecipient"), "N/A");
    EXPECT_FALSE(The<QWidget>("txtRecipient").isEnabled());
    EXPECT_FALSE(The<QWidget>("txtSubject").isEnabled());
    EXPECT_FALSE(The<QWidget>("txtMsg").isEnabled());
    EXPECT_EQ(Global::MailBatchFlag, "F");
    Click("cmdSave");
    EXPECT_EQ(database.Rows("select Recipients, MailBatch from ReportBatch"), (Texts{"N/A|F"}));
}

TEST_F(PackageFinish, MailOnAgainEmptiesTheRecipients) {
    GoToEmail();
    TickMail();
    TickMail();
    EXPECT_EQ(TextOf("txtRecipient"), "");
    EXPECT_TRUE(The<QWidget>("txtRecipient").isEnabled());
    EXPECT_TRUE(The<QWidget>("txtSubject").isEnabled());
    EXPECT_TRUE(The<QWidget>("txtMsg").isEnabled());
    EXPECT_EQ(Global::MailBatchFlag, "T");
}

TEST_F(PackageFinish, FlagOfAnEarlierWizardIsStoredAlthoughTheBoxIsTicked) {
    GoToEmail();
    TickMail();
    Click("cmdCancel");
    Show();
    GoToEmail();
    EXPECT_TRUE(The<CheckBox>("chkMail").Value());
    Type("txtRecipient", "ann@example.com");
    Click("cmdSave");
    EXPECT_EQ(database.Rows("select Recipients, MailBatch from ReportBatch"), (Texts{"ann@example.com;|F"}));
}

TEST_F(PackageFinish, RecipientCheckReadsTheBoxAndNotTheFlag) {
    GoToEmail();
    Global::MailBatchFlag = "F";
    Click("cmdSave");
    EXPECT_EQ(TakeBoxes(), (Boxes{Warning("You must enter the recipient's email address")}));
}

TEST_F(PackageFinish, MissingRecipientLeavesTheWizardHiddenAndTheHourglassOn) {
    GoToEmail();
    frame.pointers.clear();
    database.TakeStatements();
    const frmWiz* before = form;
    Click("cmdSave");
    EXPECT_EQ(TakeBoxes(), (Boxes{Warning("You must enter the recipient's email address")}));
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(frame.pointers, (std::vector<int>{11}));
    EXPECT_EQ(database.TakeStatements(), Texts{});
    Show();
    EXPECT_EQ(form, before);
    EXPECT_TRUE(form->isVisible());
    EXPECT_EQ(Page(), "Step4");
    EXPECT_EQ(Caption("cmdSave"), "&Finish");
    EXPECT_EQ(Lines("lsvReports"), (Texts{"1>sales.rpt"}));
    Type("txtRecipient", "ann");
    Click("cmdSave");
    EXPECT_EQ(database.Rows("select BatchName, Recipients from ReportBatch"), (Texts{"Month end|ann;"}));
}

TEST_F(PackageFinish, RecipientsEndInASemicolonAndLoseTheirMarks) {
    GoToEmail();
    Type("txtRecipient", "o'brien@example.com");
    TabOut();
    EXPECT_EQ(TextOf("txtRecipient"), "obrien@example.com;");
    The<QWidget>("txtRecipient").setFocus();
    TabOut();
    EXPECT_EQ(TextOf("txtRecipient"), "obrien@example.com;");
    Type("txtRecipient", "");
    TabOut();
    EXPECT_EQ(TextOf("txtRecipient"), "");
}

TEST_F(PackageFinish, SubjectAndMessageLoseTheirMarks) {
    GoToEmail();
    Type("txtSubject", "Ann's");
    TabOut();
    EXPECT_EQ(TextOf("txtSubject"), "Anns");
    Type("txtMsg", "Bob's");
    TabOut();
    EXPECT_EQ(The<MultiLineTextBox>("txtMsg").Text(), "Bobs");
}

TEST_F(PackageFinish, EnterInTheSubjectCleansItFirst) {
    GoToEmail();
    Type("txtRecipient", "ann@example.com");
    Type("txtSubject", "Ann's");
    QTest::keyClick(&The<TextBox>("txtSubject"), Qt::Key_Return);
    EXPECT_EQ(database.Rows("select Subject from ReportBatch"), (Texts{"Anns"}));
}

TEST_F(PackageFinish, PickedRecipientsAreAddedAndCleaned) {
    GoToEmail();
    mail.picks = {{"Ann", "Pat O'Brien"}};
    Click("cmdTo");
    EXPECT_EQ(TextOf("txtRecipient"), "Ann;Pat O'Brien;");
    Click("cmdSave");
    EXPECT_EQ(database.Rows("select Recipients from ReportBatch"), (Texts{"Ann;Pat OBrien;"}));
}

TEST_F(PackageFinish, NamesPickedByTheMnemonicAreAddedAfterWhatWasTyped) {
    GoToEmail();
    mail.picks = {{"Ann"}};
    Type("txtRecipient", "bob@example.com");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_T, Qt::AltModifier);
    QTest::qWait(150);  // a button pressed by a key stays down for a moment
    EXPECT_EQ(TextOf("txtRecipient"), "bob@example.com;Ann;");
}

TEST_F(PackageFinish, FinishByItsMnemonicCleansTheMessageFirst) {
    GoToEmail();
    Type("txtRecipient", "ann@example.com");
    Type("txtMsg", "It's here");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_F, Qt::AltModifier);
    QTest::qWait(150);
    EXPECT_EQ(database.Rows("select Recipients, Message from ReportBatch"),
              (Texts{"ann@example.com;|Its here"}));
}

TEST_F(PackageFinish, EnterInTheRecipientsCleansThemFirst) {
    GoToEmail();
    Type("txtRecipient", "o'brien@example.com");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_EQ(database.Rows("select Recipients from ReportBatch"), (Texts{"obrien@example.com;"}));
}

TEST_F(PackageFinish, MarkInTheDestinationBreaksTheFirstStatement) {
    GoToSchedule();
    Choose("cmbFreq1", "Daily");
    Choose("cmbFormat1", "HTML");
    Type("txtReport1", "Z:\\ann's");
    Click("cmdSave");
    Add("sales.rpt");
    Click("cmdSave");
    Type("txtRecipient", "ann@example.com");
    Click("cmdSave");
    EXPECT_EQ(TakeBoxes(),
              (Boxes{Warning("The statement is not understood; near \"s\": syntax error [-2147217900]")}));
    EXPECT_EQ(Packages(), Texts{});
    EXPECT_FALSE(form->isVisible());
}

TEST_F(PackageFinish, FailedFirstStatementShowsOneBoxAndLeavesTheWizardHidden) {
    Prepare();
    database.Run("alter table ReportBatch rename to gone");
    Click("cmdSave");
    EXPECT_EQ(TakeBoxes(), (Boxes{Warning(TableMissing("ReportBatch"))}));
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(frame.pointers, (std::vector<int>{11}));
    EXPECT_EQ(WaitingRows().size(), 2U);
    mnuQuick_Click();
    EXPECT_TRUE(form->isVisible());
}

TEST_F(PackageFinish, FailureAfterTheFirstStatementLeavesAHalfMadePackage) {
    WriteBytes(reports / "ann's.rpt", "");
    engine.reports[PathOf("ann's.rpt")] = {};
    GoToReports();
    Add("sales.rpt");
    The<FileListBox>("filList").Path(Global::DefPath);
    Add("ann's.rpt");
    Click("cmdSave");
    Type("txtRecipient", "ann@example.com");
    Click("cmdSave");
    EXPECT_EQ(TakeBoxes().back(),
              Warning("The statement is not understood; near \"s\": syntax error [-2147217900]"));
    EXPECT_EQ(Packages().size(), 1U);
    EXPECT_EQ(database.Rows("select ReportTitle from ReportBatchDtls"), (Texts{"1>sales.rpt"}));
    EXPECT_EQ(Global::PackageCounter, 2);
    EXPECT_FALSE(form->isVisible());
}

TEST_F(PackageFinish, PackageNumberAbove32767Overflows) {
    database.Run("insert into ReportBatch(ReportID, BatchName) values(32767, 'Old')");
    Prepare();
    Click("cmdSave");
    EXPECT_EQ(TakeBoxes().back(), Warning("Overflow [6]"));
    EXPECT_EQ(database.Rows("select max(ReportID) from ReportBatch"), (Texts{"32768"}));
    EXPECT_EQ(database.Rows("select count(*) from ReportBatchDtls"), (Texts{"0"}));
    EXPECT_FALSE(form->isVisible());
}

TEST_F(PackageFinish, PackageNumber32767IsTheLastOne) {
    database.Run("insert into ReportBatch(ReportID, BatchName) values(32766, 'Old')");
    Prepare();
    Click("cmdSave");
    EXPECT_EQ(TakeBoxes().back(), Information("Report package created successfully"));
    EXPECT_EQ(database.Rows("select distinct ReportID from ReportBatchDtls"), (Texts{"32767"}));
}

// While the history is in front there is no current Desktop window, though one is open.
TEST_F(PackageFinish, EndsWellWithoutADesktopWindowInFront) {
    Prepare();
    for (const auto& [windows, index] :
         {std::pair(std::vector<DeskWindow*>{nullptr, nullptr}, 1), {{nullptr, &desk}, 0}, {{}, 0}}) {
        if (!form || !form->isVisible()) {
            Show();
            Prepare();
        }
        database.Run("delete from ReportBatch");
        Global::DeskWindows = windows;
        Global::DeskIndex = static_cast<std::int16_t>(index);
        Click("cmdSave");
        EXPECT_EQ(TakeBoxes().back(), Information("Report package created successfully"));
        EXPECT_EQ(Packages().size(), 1U);
        EXPECT_EQ(WaitingRows(), Texts{});
        EXPECT_EQ(Global::PackageCounter, 0);
        EXPECT_EQ(frame.pointers.back(), 0);
        EXPECT_EQ(Done(), nullptr);
        EXPECT_FALSE(form && form->isVisible());
    }
    EXPECT_EQ(desk.batches, 0);
}

// All rows are written by then: a second Finish would make a second package.
TEST_F(PackageFinish, WizardIsDoneThoughTheDesktopCannotShowThePackage) {
    class BrokenDesk : public fakes::FakeDesk {
        void AddBatches() override { throw RuntimeError(err::ObjectRequired); }
    } broken;
    broken.caption = "Desktop";
    Global::DeskWindows = {nullptr, &broken};
    Prepare();
    const QPointer<frmWiz> first = form;
    Click("cmdSave");
    EXPECT_EQ(TakeBoxes().back(), Warning("Object required [424]"));
    EXPECT_EQ(Packages().size(), 1U);
    EXPECT_EQ(Global::PackageCounter, 0);
    EXPECT_EQ(frame.pointers.back(), 0);
    Show();
    EXPECT_NE(form, first);
    EXPECT_EQ(Page(), "Step1");
}

TEST_F(PackageFinish, MissingRecipientIsAskedForWhenTheWizardComesBack) {
    GoToEmail();
    Click("cmdSave");
    Show();
    EXPECT_EQ(QApplication::focusWidget(), &The<TextBox>("txtRecipient"));
}
