#include "scheduler/BatchReport.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "app/Global.h"
#include "support/database.h"
#include "support/fakes.h"

namespace {

using Rows = std::vector<std::string>;

class BatchReport : public testing::Test {
 protected:
    void SetUp() override {
        Global::AlertWho = "boss@example.com";
        for (const char* name : {"a", "b"}) {
            engine.reports["Z:\\r\\" + std::string(name) + ".rpt"] = {};
        }
    }
    void Package(const std::string& mailBatch = "T", const std::string& recipients = "ann;bob;",
                 const std::string& next = "2026-11-21", const std::string& runTime = "14:00") {
        database.Run(
            "insert into "
            "ReportBatch(BatchName,Recipients,Frequency,RunTime,StartDate,EndDate,Subject,Message,"
            "Destination,NextRunDate,MailBatch) values('Pack','" +
            recipients + "','Daily','" + runTime +
            "','2000-01-01','3000-12-31','Subject','Body','Z:\\out\\','" + next + "','" + mailBatch + "')");
    }
    void Detail(int package, const std::string& title, const std::string& format,
                const std::string& path = "a") {
        database.Run("insert into ReportBatchDtls(ReportID,ReportTitle,ReportPath,ReportFormat) values(" +
                     std::to_string(package) + ",'" + title + "','Z:\\r\\" + path + ".rpt','" + format +
                     "')");
    }
    Rows History() const {
        return database.Rows("select ReportID,LastRun,Success,ErrMsg from ReportBatchHstry");
    }
    Rows NextRuns() const { return database.Rows("select NextRunDate from ReportBatch order by ReportID"); }
    Rows Exported() const { return CallsWith("export"); }
    Rows CallsWith(const std::string& word) const {
        Rows found;
        std::copy_if(engine.calls.begin(), engine.calls.end(), std::back_inserter(found),
                     [&word](const std::string& call) { return call.rfind(word, 0) == 0; });
        return found;
    }
    fakes::FakeClock clock{fakes::At(2026, 11, 21, 14, 0, 0)};
    fakes::FakeLoop loop{clock};
    fakes::TestDatabase database;
    fakes::FakeEngine engine;
    fakes::FakeMailSystem mail;
    fakes::FakePrompts prompts;
    fakes::FakeFrame frame;
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
}

TEST_F(BatchReport, EmptyPackageMailsWithoutFilesAndMovesOn) {
    Package();
    Global::BatchReport();
    ASSERT_EQ(mail.sent.size(), 1U);
    EXPECT_TRUE(mail.sent[0].attachments.empty());
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

TEST_F(BatchReport, TwentyFirstReportFailsTheRunBehindTwentyFiles) {
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
    Global::BatchReport();
    EXPECT_EQ(Exported().size(), 40U);
}

TEST_F(BatchReport, UnknownFormatIsMailedAsAnEmptySlot) {
    Package();
    Detail(1, "1>a.rpt", "Acrobat Format (PDF)");
    Detail(1, "2>b.rpt", "MS Word", "b");
    Global::BatchReport();
    EXPECT_EQ(mail.sent.at(0).attachments,
              (std::vector<std::pair<int, std::string>>{{5, ""}, {6, "Z:\\out\\2>b.rpt.doc"}}));
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
    ASSERT_EQ(prompts.boxes.size(), 1U);
    EXPECT_FALSE(frame.timerEnabled);
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
