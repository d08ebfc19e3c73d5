// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QTimer>

#include "execution/on_demand/DemandCommands.h"
#include "scheduler/BatchReport.h"
#include "support/raises.h"
#include "support/run_fixture.h"

namespace {

using Rows = std::vector<std::string>;
using Boxes = std::vector<fakes::Box>;

const fakes::Box Executed{"Package executed successfully!", vbInformation, "Oxbow Courier"};

// The package with key 1 is selected in the current Desktop window.
class PackageOnDemand : public fakes::PackageRunFixture {
 protected:
    PackageOnDemand() : PackageRunFixture(fakes::At(2026, 11, 21, 13, 5, 9)) { Select("Pack", "Pckg:1"); }
    void Detail(const std::string& title, const std::string& format, const std::string& path = "a") {
        PackageRunFixture::Detail(1, title, format, path);
    }
    void ExpectNothingWrittenNorTold() {
        EXPECT_TRUE(History().empty());
        EXPECT_TRUE(prompts.boxes.empty());
        EXPECT_TRUE(mail.sent.empty());
    }
};

}  // namespace

TEST_F(PackageOnDemand, SelectedPackageRunsMailsLeavesItsRowAndTellsTheUser) {
    Package();
    Package();
    Detail("1>a b.rpt", "Acrobat");
    Detail("2>b.rpt", "HTML", "b");
    mnubtcExec_Click();
    EXPECT_EQ(
        engine.calls,
        (Rows{"open Z:\\r\\a.rpt", "switches False False", "disk file Z:\\out\\a b.rpt.pdf", "destination 1",
              "format 31", "export False", "open Z:\\r\\b.rpt", "switches False False", "html False False",
              "html file Z:\\out\\2b.rpt.htm", "destination 1", "format 32", "export False"}));
    EXPECT_EQ(database.TakeStatements(),
              (Rows{"select * from reportbatch where reportid = 1",
                    "select * from reportbatchdtls where reportid = 1",
                    "select * from reportbatchpar where reportid =1 and DetailID = 1 order by parid",
                    "select * from reportbatchpar where reportid =1 and DetailID = 2 order by parid",
                    "insert into ReportBatchHstry(ReportID, LastRun, "
                    "Success)Values('1','2026-11-21,13:05:09','T')"}));
    ASSERT_EQ(mail.sent.size(), 1U);
    EXPECT_EQ(mail.sent[0].subject, "Subject");
    EXPECT_EQ(mail.sent[0].recipients, (Rows{"ann", "bob"}));
    EXPECT_EQ(mail.sent[0].attachments, (std::vector<std::pair<int, std::string>>{
                                            {5, "Z:\\out\\a b.rpt.pdf"}, {6, "Z:\\out\\2b.rpt.htm"}}));
    EXPECT_EQ(prompts.boxes, Boxes{Executed});
    EXPECT_EQ(Global::CurrentReport, nullptr);
}

TEST_F(PackageOnDemand, EveryPdfWordGivesTheFile) {
    Package();
    Detail("1>a.rpt", "Acrobat");
    Detail("2>b.rpt", "Acrobat Format (PDF)");
    Detail("3>c.rpt", "PDF");
    mnubtcExec_Click();
    EXPECT_EQ(CallsWith("disk file"), (Rows{"disk file Z:\\out\\a.rpt.pdf", "disk file Z:\\out\\b.rpt.pdf",
                                            "disk file Z:\\out\\c.rpt.pdf"}));
    EXPECT_EQ(CallsWith("format"), (Rows{"format 31", "format 31", "format 31"}));
}

TEST_F(PackageOnDemand, WordOfTheWizardGivesAFileHereAndNoneInThePoll) {
    Package();
    Detail("1>a.rpt", "Acrobat Format (PDF)");
    mnubtcExec_Click();
    clock.now = fakes::At(2026, 11, 21, 14, 0, 0);
    Global::BatchReport();
    EXPECT_EQ(CallsWith("export").size(), 1U);
    ASSERT_EQ(mail.sent.size(), 2U);
    EXPECT_EQ(mail.sent[0].attachments,
              (std::vector<std::pair<int, std::string>>{{5, "Z:\\out\\a.rpt.pdf"}}));
    EXPECT_EQ(mail.sent[1].attachments, (std::vector<std::pair<int, std::string>>{{5, ""}}));
}

TEST_F(PackageOnDemand, UnknownFormatIsMailedAsAnEmptySlot) {
    Package();
    Detail("1>a.rpt", "acrobat");
    mnubtcExec_Click();
    EXPECT_EQ(mail.sent.at(0).attachments, (std::vector<std::pair<int, std::string>>{{5, ""}}));
    EXPECT_EQ(prompts.boxes, Boxes{Executed});
}

TEST_F(PackageOnDemand, PackageWhoseEndDateHasPassedRuns) {
    Package();
    database.Run("update ReportBatch set EndDate = '2026-11-20'");
    mnubtcExec_Click();
    EXPECT_EQ(History(), Rows{"1|2026-11-21,13:05:09|T|null"});
    EXPECT_EQ(prompts.boxes, Boxes{Executed});
}

TEST_F(PackageOnDemand, NextRunDateStaysAndThePollStillRunsThePackage) {
    Package();
    mnubtcExec_Click();
    EXPECT_EQ(NextRuns(), Rows{"2026-11-21"});
    clock.now = fakes::At(2026, 11, 21, 14, 0, 0);
    Global::BatchReport();
    EXPECT_EQ(NextRuns(), Rows{"2026-11-22"});
    EXPECT_EQ(History(), (Rows{"1|2026-11-21,13:05:09|T|null", "1|2026-11-21,14:00:00|T|null"}));
}

TEST_F(PackageOnDemand, NeitherDatesNorTimesAreRead) {
    Package("F");
    database.Run(
        "update ReportBatch set StartDate = null, EndDate = null, RunTime = null, NextRunDate = 'never', "
        "Frequency = null");
    mnubtcExec_Click();
    EXPECT_EQ(prompts.boxes, Boxes{Executed});
}

TEST_F(PackageOnDemand, PackageWithoutMailMakesItsFilesAlone) {
    Package("F");
    Detail("1>a.rpt", "MS Excel");
    mnubtcExec_Click();
    EXPECT_EQ(mail.logons, 0);
    EXPECT_EQ(CallsWith("disk file"), Rows{"disk file Z:\\out\\1>a.rpt.xls"});
    EXPECT_EQ(prompts.boxes, Boxes{Executed});
}

TEST_F(PackageOnDemand, MomentIsWrittenUnderTheRegionalSettings) {
    SetRegional({DateOrder::DayMonthYear, '/'});
    Package("F");
    mnubtcExec_Click();
    EXPECT_EQ(History(), Rows{"1|21/11/2026,13:05:09|T|null"});
}

TEST_F(PackageOnDemand, TimerHourglassAndWindowAreLeftAlone) {
    Package();
    Detail("1>a.rpt", "Acrobat");
    mnubtcExec_Click();
    mail.sendErrors = {RuntimeError(err::MailUserCancel, "cancelled")};
    mnubtcExec_Click();
    EXPECT_TRUE(frame.timerChanges.empty());
    EXPECT_TRUE(frame.pointers.empty());
    EXPECT_TRUE(desk.pointers.empty());
    EXPECT_TRUE(desk.refreshes.empty());
}

TEST_F(PackageOnDemand, FailedMailLeavesARowWithoutAKeyAndNoGoodNews) {
    Package();
    mail.sendErrors = {RuntimeError(err::MailUserCancel, "cancelled")};
    mnubtcExec_Click();
    EXPECT_EQ(database.TakeStatements().back(),
              "insert into ReportBatchHstry(ReportID, LastRun, Success, "
              "ErrMsg)Values('','2026-11-21,13:05:09','T','')");
    ASSERT_EQ(mail.sent.size(), 2U);
    EXPECT_EQ(mail.sent[0].text, "An error occured in SendMailBatch. cancelled [-2147221229]");
    EXPECT_EQ(mail.sent[1].text, "An error occured in BatchReport.  [0]");
    EXPECT_EQ(mail.sent[1].subject, "Pressroom Error");
    EXPECT_EQ(mail.sent[1].recipients, Rows{"boss@example.com"});
    EXPECT_EQ(mail.sent[1].importance, 2);
    EXPECT_TRUE(prompts.boxes.empty());
    EXPECT_EQ(NextRuns(), Rows{"2026-11-21"});
    EXPECT_EQ(Global::CurrentReport, nullptr);
}

TEST_F(PackageOnDemand, FullMailboxIsToldByTheMailAlone) {
    Package();
    mail.sendErrors = {RuntimeError(err::MailboxFull, "full")};
    mnubtcExec_Click();
    EXPECT_EQ(prompts.boxes, (Boxes{{"Your mailbox is over the limit or the Exchange Server is down! Sending "
                                     "mail failed",
                                     0, "Oxbow Courier"}}));
    EXPECT_EQ(History(), Rows{"|2026-11-21,13:05:09|T|"});
}

TEST_F(PackageOnDemand, PollThatComesInMeanwhileWorksOnTheSameLists) {
    clock.now = fakes::At(2026, 11, 21, 14, 0, 0);
    Package();
    Detail("1>a.rpt", "PDF");
    Detail("2>b.rpt", "PDF", "b");
    Package("F");
    database.Run(
        "update ReportBatch set NextRunDate = '2026-12-24' where ReportID = 1;"
        "insert into ReportBatchDtls(ReportID,ReportTitle,ReportPath,ReportFormat) "
        "values(2,'1>polled.rpt','Z:\\r\\b.rpt','Acrobat')");
    bool polled = false;
    engine.onExport = [&polled](const std::string&) {
        if (!polled) {
            polled = true;
            Global::BatchReport();
        }
    };
    mnubtcExec_Click();
    EXPECT_EQ(History(), (Rows{"2|2026-11-21,14:00:00|T|null", "1|2026-11-21,14:00:00|T|null"}));
    ASSERT_EQ(mail.sent.size(), 1U);
    EXPECT_EQ(mail.sent[0].attachments, (std::vector<std::pair<int, std::string>>{
                                            {5, "Z:\\out\\polled.rpt.pdf"}, {6, "Z:\\out\\b.rpt.pdf"}}));
    EXPECT_EQ(prompts.boxes, Boxes{Executed});
}

TEST_F(PackageOnDemand, SamePackageTwiceAtOnceIsDeliveredTwice) {
    Package();
    Detail("1>a.rpt", "PDF");
    Detail("2>b.rpt", "PDF", "b");
    bool again = false;
    engine.onExport = [&again](const std::string&) {
        if (!again) {
            again = true;
            mnubtcExec_Click();
        }
    };
    mnubtcExec_Click();
    ASSERT_EQ(mail.sent.size(), 2U);
    for (const auto& sent : mail.sent) {
        EXPECT_EQ(sent.recipients, (Rows{"ann", "bob"}));
        EXPECT_EQ(sent.attachments, (std::vector<std::pair<int, std::string>>{{5, "Z:\\out\\a.rpt.pdf"},
                                                                              {6, "Z:\\out\\b.rpt.pdf"}}));
    }
    EXPECT_EQ(History(), (Rows{"1|2026-11-21,13:05:09|T|null", "1|2026-11-21,13:05:09|T|null"}));
    EXPECT_EQ(prompts.boxes, (Boxes{Executed, Executed}));
}

TEST_F(PackageOnDemand, OddTitlesNameTheirFilesAsTheyStand) {
    Package("F");
    for (const char* title : {"1>a>b.rpt", "2>a:b^c.rpt", "no mark", "", ">"}) {
        Detail(title, "PDF");
    }
    Detail("3>x y>z.rpt", "HTML");
    Detail("4>x y>z.rpt", "MS Word");
    mnubtcExec_Click();
    EXPECT_EQ(CallsWith("disk file"),
              (Rows{"disk file Z:\\out\\a.pdf", "disk file Z:\\out\\a:b^c.rpt.pdf",
                    "disk file Z:\\out\\no mark.pdf", "disk file Z:\\out\\.pdf", "disk file Z:\\out\\.pdf",
                    "disk file Z:\\out\\4>x y>z.rpt.doc"}));
    EXPECT_EQ(CallsWith("html file"), Rows{"html file Z:\\out\\3xyz.rpt.htm"});
}

TEST_F(PackageOnDemand, MailSessionThatCannotBeJoinedIsAnError) {
    Package();
    mail.logonErrors = {RuntimeError(err::MailUserCancel, "no profile")};
    EXPECT_EQ(NumberRaisedBy(mnubtcExec_Click), err::MailUserCancel);
    ExpectNothingWrittenNorTold();
}

TEST_F(PackageOnDemand, TwentyFirstReportOfAnUnknownFormatFailsInTheMail) {
    Package();
    for (int i = 1; i <= 20; ++i) {
        Detail(std::to_string(i) + ">a.rpt", "PDF");
    }
    Detail("21>a.rpt", "Lotus");
    mnubtcExec_Click();
    ASSERT_EQ(mail.sent.size(), 2U);
    EXPECT_EQ(mail.sent[0].text, "An error occured in SendMailBatch. Subscript out of range [9]");
    EXPECT_EQ(mail.sent[1].text, "An error occured in BatchReport.  [0]");
    EXPECT_EQ(History(), Rows{"|2026-11-21,13:05:09|T|"});
    EXPECT_TRUE(prompts.boxes.empty());
}

TEST_F(PackageOnDemand, KeyWithoutAColonIsTakenWhole) {
    Package("F");
    desk.selected = {"Pack", "1"};
    mnubtcExec_Click();
    EXPECT_EQ(History(), Rows{"1|2026-11-21,13:05:09|T|null"});
}

TEST_F(PackageOnDemand, KeyThatIsNoNumberEndsAsAMissingColumn) {
    Package();
    desk.selected = {"Sales", "pk1"};
    EXPECT_EQ(NumberRaisedBy(mnubtcExec_Click), err::DataColumnMissing);
    ExpectNothingWrittenNorTold();
}

TEST_F(PackageOnDemand, EmptySecondPieceLeavesTheStatementWithoutAKey) {
    Package();
    desk.selected = {"Pack", "Pckg:"};
    EXPECT_EQ(NumberRaisedBy(mnubtcExec_Click), err::DataSyntax);
    EXPECT_EQ(database.TakeStatements(), Rows{"select * from reportbatch where reportid = "});
    ExpectNothingWrittenNorTold();
}

TEST_F(PackageOnDemand, ColonInANameOfTheTableViewRunsThePackageThatItNames) {
    Package("F");
    Package("F");
    desk.selected = {"a:1", "a:1:2"};
    mnubtcExec_Click();
    EXPECT_EQ(History(), Rows{"2|2026-11-21,13:05:09|T|null"});
}

TEST_F(PackageOnDemand, PackageThatIsGoneIsToldAsExecuted) {
    desk.selected = {"Pack", "Pckg:9"};
    mnubtcExec_Click();
    EXPECT_TRUE(History().empty());
    EXPECT_EQ(prompts.boxes, Boxes{Executed});
}

TEST_F(PackageOnDemand, TwentyReportsRunAndTheTwentyFirstIsAnError) {
    Package();
    for (int i = 1; i <= 20; ++i) {
        Detail(std::to_string(i) + ">a.rpt", "PDF");
    }
    mnubtcExec_Click();
    EXPECT_EQ(mail.sent.at(0).attachments.size(), 20U);
    Detail("21>a.rpt", "PDF");
    EXPECT_EQ(NumberRaisedBy(mnubtcExec_Click), err::SubscriptOutOfRange);
    EXPECT_EQ(CallsWith("export").size(), 40U);
    EXPECT_EQ(mail.sent.size(), 1U);
    EXPECT_EQ(History().size(), 1U);
}

TEST_F(PackageOnDemand, OtherKindOfFieldIsAnError) {
    engine.reports["Z:\\r\\a.rpt"].parameterTypes = {12, 22};
    Package();
    Detail("1>a.rpt", "PDF");
    database.Run("insert into ReportBatchPar(ReportID,DetailID,ParValue) values(1,1,'West'),(1,1,'x')");
    EXPECT_EQ(NumberRaisedBy(mnubtcExec_Click), err::ObjectRequired);
    EXPECT_EQ(CallsWith("value"), Rows{"value 1 text West"});
    ExpectNothingWrittenNorTold();
}

TEST_F(PackageOnDemand, ValueThatDoesNotConvertIsAnError) {
    engine.reports["Z:\\r\\a.rpt"].parameterTypes = {7};
    Package();
    Detail("1>a.rpt", "PDF");
    database.Run("insert into ReportBatchPar(ReportID,DetailID,ParValue) values(1,1,'five')");
    EXPECT_EQ(NumberRaisedBy(mnubtcExec_Click), err::TypeMismatch);
    ExpectNothingWrittenNorTold();
}

TEST_F(PackageOnDemand, ErrorEndsTheProcessWithTheRunTimesBox) {
    fakes::FakeProcess process;
    Package();
    Detail("1>x.rpt", "PDF", "x");
    QTimer::singleShot(0, mnubtcExec_Click);
    QCoreApplication::processEvents();
    EXPECT_EQ(
        prompts.boxes,
        (Boxes{{"Run-time error \"53\":\n\nFile not found: Z:\\r\\x.rpt", vbCritical, "Oxbow Courier"}}));
    EXPECT_EQ(process.ends, std::vector<int>{1});
    EXPECT_TRUE(History().empty());
    EXPECT_TRUE(mail.sent.empty());
}

TEST_F(PackageOnDemand, NothingSelectedIsAnError) {
    desk.selected.reset();
    EXPECT_EQ(NumberRaisedBy(mnubtcExec_Click), err::ObjectNotSet);
}

TEST_F(PackageOnDemand, WithoutADesktopWindowItIsAnError) {
    Global::DeskIndex = 9999;
    EXPECT_EQ(NumberRaisedBy(mnubtcExec_Click), err::SubscriptOutOfRange);
}
