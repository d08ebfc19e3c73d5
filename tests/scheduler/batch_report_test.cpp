// SPDX-License-Identifier: GPL-3.0-or-later
#include "scheduler/BatchReport.h"

#include <gtest/gtest.h>

#include "support/run_fixture.h"

namespace {

using Rows = std::vector<std::string>;

constexpr const char* MailboxText =
    "Your mailbox is over the limit or the Exchange Server is down! Sending mail failed";

class BatchReport : public fakes::PackageRunFixture {
 protected:
    BatchReport() : PackageRunFixture(fakes::At(2026, 11, 21, 14, 0, 0)) {}
    Rows Exported() const { return CallsWith("export"); }
};

}  // namespace

TEST_F(BatchReport, DeliveredPackageRunsMailsAndMovesOnInThisOrder) {
    Package();
    Detail(1, "1>a b.rpt", "Acrobat");
    Detail(1, "2>b.rpt", "HTML", "b");
    Global::BatchReport();
    EXPECT_EQ(
        engine.calls,
        (Rows{"open Z:\\r\\a.rpt", "switches False False", "disk file Z:\\out\\a b.rpt.pdf", "destination 1",
              "format 31", "export False", "open Z:\\r\\b.rpt", "switches False False", "html False False",
              "html file Z:\\out\\2b.rpt.htm", "destination 1", "format 32", "export False"}));
    EXPECT_EQ(database.TakeStatements(),
              (Rows{"select * from reportbatch where startdate <= '2026-11-21' and enddate >= '2026-11-21'",
                    "select * from reportbatchdtls where reportid = 1",
                    "select * from reportbatchpar where reportid =1 and DetailID = 1 order by parid",
                    "select * from reportbatchpar where reportid =1 and DetailID = 2 order by parid",
                    "update ReportBatch Set NextRundate = '2026-11-22' Where ReportID = 1",
                    "insert into ReportBatchHstry(ReportID, LastRun, "
                    "Success)Values('1','2026-11-21,14:00:00','T')"}));
    ASSERT_EQ(mail.sent.size(), 1U);
    EXPECT_EQ(mail.sent[0].recipients, (Rows{"ann", "bob"}));
    EXPECT_EQ(mail.sent[0].attachments, (std::vector<std::pair<int, std::string>>{
                                            {5, "Z:\\out\\a b.rpt.pdf"}, {6, "Z:\\out\\2b.rpt.htm"}}));
    EXPECT_EQ(frame.timerChanges, (std::vector<bool>{false, true}));
    EXPECT_EQ(Global::CurrentReport, nullptr);
}

TEST_F(BatchReport, PackageWithoutMailCountsAsDelivered) {
    Package("F", "N/A");
    Detail(1, "1>a.rpt", "MS Excel");
    Global::BatchReport();
    EXPECT_TRUE(mail.sent.empty());
    EXPECT_EQ(CallsWith("excel"), Rows{"excel True False False False 4"});
    EXPECT_EQ(CallsWith("disk file"), Rows{"disk file Z:\\out\\1>a.rpt.xls"});
    EXPECT_EQ(NextRuns(), Rows{"2026-11-22"});
    EXPECT_EQ(Global::RecipientList, (Rows{"", "N/A"}));
    EXPECT_EQ(mail.logons, 0);
}

TEST_F(BatchReport, FlagInAnotherCaseMeansNoMail) {
    Package("t");
    Global::BatchReport();
    EXPECT_EQ(mail.logons, 0);
    EXPECT_EQ(NextRuns(), Rows{"2026-11-22"});
}

TEST_F(BatchReport, EmptyPackageMailsWithoutFilesAndMovesOn) {
    Package();
    Global::BatchReport();
    ASSERT_EQ(mail.sent.size(), 1U);
    EXPECT_TRUE(mail.sent[0].attachments.empty());
    EXPECT_TRUE(engine.calls.empty());
    EXPECT_EQ(History(), Rows{"1|2026-11-21,14:00:00|T|null"});
    EXPECT_EQ(NextRuns(), Rows{"2026-11-22"});
}

TEST_F(BatchReport, RowsOutsideTheirDatesAreNotSelected) {
    Package();
    Package();
    database.Run("update ReportBatch set EndDate = '2026-11-20' where ReportID = 1");
    database.Run("update ReportBatch set StartDate = '2026-11-22' where ReportID = 2");
    Global::BatchReport();
    EXPECT_TRUE(History().empty());
}

TEST_F(BatchReport, TimeOfYesterdayIsDueOnceTheClockHasPassedIt) {
    Package("F", "a;", "2026-11-20", "14:01");
    Global::BatchReport();
    EXPECT_TRUE(History().empty());
    clock.now = fakes::At(2026, 11, 21, 14, 1, 0);
    Global::BatchReport();
    EXPECT_EQ(NextRuns(), Rows{"2026-11-21"});
}

TEST_F(BatchReport, TwentyReportsRun) {
    Package();
    for (int i = 1; i <= 20; ++i) {
        Detail(1, std::to_string(i) + ">a.rpt", "Acrobat");
    }
    Global::BatchReport();
    EXPECT_EQ(Exported().size(), 20U);
    EXPECT_EQ(mail.sent.at(0).attachments.size(), 20U);
}

TEST_F(BatchReport, TwentyFirstReportFailsTheRunAfterTwentyFiles) {
    Package();
    for (int i = 1; i <= 21; ++i) {
        Detail(1, std::to_string(i) + ">a.rpt", "Acrobat");
    }
    Global::BatchReport();
    EXPECT_EQ(Exported().size(), 20U);
    EXPECT_EQ(NextRuns(), Rows{"2026-11-21"});
    EXPECT_EQ(History(), Rows{"|2026-11-21,14:00:00|T|Subscript out of range"});
    ASSERT_EQ(mail.sent.size(), 1U);
    EXPECT_EQ(mail.sent[0].text, "An error occured in BatchReport. Subscript out of range [9]");
    EXPECT_EQ(mail.sent[0].subject, "Pressroom Error");
    Global::BatchReport();
    EXPECT_EQ(Exported().size(), 40U);
    EXPECT_EQ(NextRuns(), Rows{"2026-11-21"});
}

TEST_F(BatchReport, TwentyFirstReportOfAnUnknownFormatFailsInTheMail) {
    Package();
    for (int i = 1; i <= 21; ++i) {
        Detail(1, std::to_string(i) + ">a.rpt", "PDF");
    }
    Global::BatchReport();
    ASSERT_EQ(mail.sent.size(), 2U);
    EXPECT_EQ(mail.sent[0].text, "An error occured in SendMailBatch. Subscript out of range [9]");
    EXPECT_EQ(History(), Rows{"|2026-11-21,14:00:00|T|"});
}

TEST_F(BatchReport, UnknownFormatIsMailedAsAnEmptySlot) {
    Package();
    Detail(1, "1>a.rpt", "Acrobat Format (PDF)");
    Detail(1, "2>b.rpt", "MS Word", "b");
    testing::internal::CaptureStderr();
    Global::BatchReport();
    EXPECT_EQ(
        testing::internal::GetCapturedStderr(),
        "2026-11-21 14:00:00 Package 1 goes without its report \"1>a.rpt\", as the format \"Acrobat Format "
        "(PDF)\" is not known\n");
    EXPECT_EQ(mail.sent.at(0).attachments,
              (std::vector<std::pair<int, std::string>>{{5, ""}, {6, "Z:\\out\\2>b.rpt.doc"}}));
    EXPECT_TRUE(prompts.boxes.empty());
    EXPECT_EQ(NextRuns(), Rows{"2026-11-22"});
}

TEST_F(BatchReport, FileOfThePackageBeforeIsNotSentInAnEmptySlot) {
    Package();
    Detail(1, "1>a.rpt", "Acrobat");
    Package();
    Detail(2, "1>a.rpt", "acrobat");
    Global::BatchReport();
    ASSERT_EQ(mail.sent.size(), 2U);
    EXPECT_EQ(mail.sent[1].attachments, (std::vector<std::pair<int, std::string>>{{5, ""}}));
}

TEST_F(BatchReport, EachFormatIsSetInItsOrder) {
    Package("F");
    const char* const words[] = {"Acrobat", "Rich Text", "MS Excel", "HTML", "MS Word"};
    for (const char* word : words) {
        Detail(1, "3>sales 2.rpt", word);
    }
    Global::BatchReport();
    const Rows head = {"open Z:\\r\\a.rpt", "switches False False"};
    const std::vector<Rows> settings = {
        {"disk file Z:\\out\\sales 2.rpt.pdf", "destination 1", "format 31"},
        {"disk file Z:\\out\\3>sales 2.rpt.rtf", "destination 1", "format 35"},
        {"excel True False False False 4", "disk file Z:\\out\\3>sales 2.rpt.xls", "destination 1",
         "format 27"},
        {"html False False", "html file Z:\\out\\3sales2.rpt.htm", "destination 1", "format 32"},
        {"disk file Z:\\out\\3>sales 2.rpt.doc", "destination 1", "format 14"},
    };
    Rows expected;
    for (const Rows& one : settings) {
        expected.insert(expected.end(), head.begin(), head.end());
        expected.insert(expected.end(), one.begin(), one.end());
        expected.emplace_back("export False");
    }
    EXPECT_EQ(engine.calls, expected);
}

TEST_F(BatchReport, FailureRowBearsTheKeyOfThePackageBefore) {
    Package();
    Package();
    Detail(2, "1>x.rpt", "Acrobat", "x");
    Package();
    Global::BatchReport();
    EXPECT_EQ(History(),
              (Rows{"1|2026-11-21,14:00:00|T|null", "1|2026-11-21,14:00:00|T|File not found: Z:\\r\\x.rpt"}));
    EXPECT_EQ(NextRuns(), (Rows{"2026-11-22", "2026-11-21", "2026-11-21"}));
    EXPECT_FALSE(frame.timerEnabled);
}

TEST_F(BatchReport, FirstFailureOfAPollHasAnEmptyKey) {
    Package();
    Detail(1, "1>x.rpt", "Acrobat", "x");
    Global::BatchReport();
    EXPECT_EQ(database.TakeStatements().back(),
              "insert into ReportBatchHstry(ReportID, LastRun, Success, "
              "ErrMsg)Values('','2026-11-21,14:00:00','T','File "
              "not found: Z:\\r\\x.rpt')");
}

TEST_F(BatchReport, FailedMailIsAFailureWithoutDescription) {
    Package();
    mail.sendErrors = {RuntimeError(err::MailboxFull, "full")};
    Global::BatchReport();
    EXPECT_EQ(History(), Rows{"|2026-11-21,14:00:00|T|"});
    ASSERT_EQ(mail.sent.size(), 1U);
    EXPECT_EQ(mail.sent[0].text, "An error occured in BatchReport.  [0]");
    EXPECT_EQ(mail.sent[0].subject, "Pressroom Error");
    EXPECT_EQ(mail.sent[0].recipients, Rows{"boss@example.com"});
    EXPECT_EQ(mail.sent[0].importance, 2);
    EXPECT_EQ(prompts.boxes, (std::vector<fakes::Box>{{MailboxText, 0, "Oxbow Courier"}}));
    EXPECT_EQ(NextRuns(), Rows{"2026-11-21"});
    EXPECT_FALSE(frame.timerEnabled);
}

TEST_F(BatchReport, MailThatFailsOtherwiseIsAlertedByTheMailAndByThePoll) {
    Package();
    mail.sendErrors = {RuntimeError(err::MailUserCancel, "cancelled")};
    Global::BatchReport();
    EXPECT_EQ(History(), Rows{"|2026-11-21,14:00:00|T|"});
    ASSERT_EQ(mail.sent.size(), 2U);
    EXPECT_EQ(mail.sent[0].text, "An error occured in SendMailBatch. cancelled [-2147221229]");
    EXPECT_EQ(mail.sent[1].text, "An error occured in BatchReport.  [0]");
    EXPECT_TRUE(prompts.boxes.empty());
}

TEST_F(BatchReport, FailedMailEndsThePollForThePackagesAfter) {
    Package();
    Package();
    mail.sendErrors = {RuntimeError(err::MailboxFull, "full")};
    Global::BatchReport();
    EXPECT_EQ(NextRuns(), (Rows{"2026-11-21", "2026-11-21"}));
    Global::BatchReport();
    EXPECT_EQ(NextRuns(), (Rows{"2026-11-22", "2026-11-22"}));
}

TEST_F(BatchReport, FailedLogonIsARunTimeErrorWithItsDescription) {
    Package();
    mail.logonErrors = {RuntimeError(err::MailUserCancel, "no profile")};
    Global::BatchReport();
    EXPECT_EQ(History(), Rows{"|2026-11-21,14:00:00|T|no profile"});
    ASSERT_EQ(mail.sent.size(), 1U);
    EXPECT_EQ(mail.sent[0].text, "An error occured in BatchReport. no profile [-2147221229]");
}

TEST_F(BatchReport, LogonThatFailsForTheAlertAsWellPassesOutOfThePoll) {
    Package();
    const RuntimeError noProfile(err::MailUserCancel, "no profile");
    mail.logonErrors = {noProfile, noProfile};
    EXPECT_THROW(Global::BatchReport(), RuntimeError);
    EXPECT_EQ(History(), Rows{"|2026-11-21,14:00:00|T|no profile"});
    EXPECT_FALSE(frame.timerEnabled);
}

TEST_F(BatchReport, WithoutAnAlertAddressTheRowIsWrittenFirst) {
    Global::AlertWho = "";
    Package();
    Detail(1, "1>x.rpt", "Acrobat", "x");
    mail.resolveErrors = {RuntimeError(err::MailUserCancel, "nobody")};
    Global::BatchReport();
    EXPECT_EQ(History(), Rows{"|2026-11-21,14:00:00|T|File not found: Z:\\r\\x.rpt"});
    EXPECT_TRUE(mail.sent.empty());
    EXPECT_TRUE(prompts.boxes.empty());
}

TEST_F(BatchReport, RowWithAnErrorTextIsAFailureAndOneWithoutASuccess) {
    Package("F");
    Package("F");
    Detail(2, "1>x.rpt", "Acrobat", "x");
    Global::BatchReport();
    EXPECT_EQ(database.Rows("select Success, ErrMsg is null from ReportBatchHstry"), (Rows{"T|1", "T|0"}));
}

TEST_F(BatchReport, ValuesGoByPositionAndOtherKindsFail) {
    engine.reports["Z:\\r\\a.rpt"].parameterTypes = {12, 7, 22};
    Package();
    Detail(1, "1>a.rpt", "Acrobat");
    database.Run(
        "insert into ReportBatchPar(ReportID,DetailID,ParValue) values(1,1,'West'),(1,1,'5'),(1,1,'x')");
    Global::BatchReport();
    EXPECT_EQ(CallsWith("value"), (Rows{"value 1 text West", "value 2 double 5"}));
    EXPECT_TRUE(CallsWith("clear").empty());
    EXPECT_EQ(mail.sent.at(0).text, "An error occured in BatchReport. Object required [424]");
}

TEST_F(BatchReport, ValueThatDoesNotConvertFailsThePackage) {
    engine.reports["Z:\\r\\a.rpt"].parameterTypes = {7};
    Package();
    Detail(1, "1>a.rpt", "Acrobat");
    database.Run("insert into ReportBatchPar(ReportID,DetailID,ParValue) values(1,1,'five')");
    Global::BatchReport();
    EXPECT_TRUE(Exported().empty());
    EXPECT_EQ(mail.sent.at(0).text, "An error occured in BatchReport. Type mismatch [13]");
}

TEST_F(BatchReport, MoreValuesThanFieldsFailThePackage) {
    engine.reports["Z:\\r\\a.rpt"].parameterTypes = {12};
    Package();
    Detail(1, "1>a.rpt", "Acrobat");
    database.Run("insert into ReportBatchPar(ReportID,DetailID,ParValue) values(1,1,'a'),(1,1,'b')");
    Global::BatchReport();
    EXPECT_EQ(CallsWith("value"), Rows{"value 1 text a"});
    EXPECT_EQ(mail.sent.at(0).text, "An error occured in BatchReport. Subscript out of range [9]");
}

TEST_F(BatchReport, FileThatCannotBeWrittenFailsThePackageAfterTheFilesBefore) {
    engine.reports["Z:\\r\\b.rpt"].exportError = RuntimeError(err::PathNotFound);
    Package();
    Detail(1, "1>a.rpt", "Acrobat");
    Detail(1, "2>b.rpt", "MS Word", "b");
    Detail(1, "3>a.rpt", "Acrobat");
    Global::BatchReport();
    EXPECT_EQ(CallsWith("open"), (Rows{"open Z:\\r\\a.rpt", "open Z:\\r\\b.rpt"}));
    ASSERT_EQ(mail.sent.size(), 1U);
    EXPECT_EQ(mail.sent[0].text, "An error occured in BatchReport. Path not found [76]");
    EXPECT_EQ(NextRuns(), Rows{"2026-11-21"});
}

TEST_F(BatchReport, FailureRowThatCannotBeWrittenPassesOutWithoutAnAlert) {
    database.Run("drop table ReportBatchHstry");
    Package();
    Detail(1, "1>x.rpt", "Acrobat", "x");
    EXPECT_THROW(Global::BatchReport(), RuntimeError);
    EXPECT_TRUE(mail.sent.empty());
    EXPECT_FALSE(frame.timerEnabled);
}

TEST_F(BatchReport, DeliveryThatCannotBeStoredBearsItsOwnKey) {
    Package("F");
    database.Run("create trigger NoMove before update on ReportBatch begin select raise(abort, 'held'); end");
    Global::BatchReport();
    EXPECT_EQ(database.Rows("select ReportID, ErrMsg is null from ReportBatchHstry"), Rows{"1|0"});
    EXPECT_EQ(NextRuns(), Rows{"2026-11-21"});
}

TEST_F(BatchReport, ChangesOfTheNextRunAreNotSeenByTheRunningPoll) {
    Package("F");
    Detail(1, "1>a.rpt", "Acrobat");
    Package("F");
    engine.onExport = [this](const std::string&) {
        database.Run("update ReportBatch set NextRunDate = '2026-12-24' where ReportID = 2");
    };
    Global::BatchReport();
    EXPECT_EQ(NextRuns(), (Rows{"2026-11-22", "2026-11-22"}));
}

TEST_F(BatchReport, ThousandsOfRecipientsGoIntoOneMail) {
    constexpr int Names = 2000;
    std::string recipients;
    for (int i = 1; i <= Names; ++i) {
        recipients += "u" + std::to_string(i) + ";";
    }
    Package("T", recipients);
    Global::BatchReport();
    ASSERT_EQ(mail.sent.size(), 1U);
    ASSERT_EQ(mail.sent[0].recipients.size(), static_cast<std::size_t>(Names));
    EXPECT_EQ(mail.sent[0].recipients.front(), "u1");
    EXPECT_EQ(mail.sent[0].recipients.back(), "u2000");
}

TEST_F(BatchReport, PackageWithoutATimeEndsThePollForThoseAfterIt) {
    Package("F");
    Package("F");
    database.Run("update ReportBatch set RunTime = null where ReportID = 1");
    Global::BatchReport();
    EXPECT_EQ(History(), Rows{"|2026-11-21,14:00:00|T|Invalid use of Null"});
    EXPECT_EQ(NextRuns(), (Rows{"2026-11-21", "2026-11-21"}));
}

TEST_F(BatchReport, TimerIsOffWhileAPackageRuns) {
    Package("F");
    Detail(1, "1>a.rpt", "Acrobat");
    bool enabled = true;
    engine.onExport = [&](const std::string&) { enabled = frame.timerEnabled; };
    Global::BatchReport();
    EXPECT_FALSE(enabled);
    EXPECT_TRUE(frame.timerEnabled);
}

TEST_F(BatchReport, NeitherLogonNorFormulaIsSet) {
    Package("F");
    Detail(1, "1>a.rpt", "Acrobat");
    Global::BatchReport();
    EXPECT_TRUE(CallsWith("logon").empty());
    EXPECT_TRUE(CallsWith("formula").empty());
}

TEST_F(BatchReport, PackageThatIsTriedAgainKeepsItsIdentityAndTheNextHasAnother) {
    Package("T", "ann;", "2026-11-20");
    mail.sendErrors = {RuntimeError(err::MailboxOrServer, "gone"), std::nullopt};
    Global::BatchReport();  // the mail, then the alert
    Global::BatchReport();
    Global::BatchReport();
    const std::vector<std::string>& made = mail.identities;
    ASSERT_EQ(made.size(), 4U);
    EXPECT_NE(made[0], "");
    EXPECT_EQ(made[1], "");
    EXPECT_EQ(made[2], made[0]);
    EXPECT_NE(made[3], made[0]);
    EXPECT_NE(made[3], "");
}
