// SPDX-License-Identifier: GPL-3.0-or-later
#include "schedule_program.h"

using testing::HasSubstr;

namespace {

class Packages : public ScheduleProgram {
 protected:
    static constexpr const char* Add =
        "package add Month --report sales.rpt -p Region=West --report plain.rpt --output out --no-mail --at "
        "06:00 "
        "--start 2990-01-01 --quarterly";
};

}  // namespace

TEST_F(Packages, AddMakesTheRowsOfTheWizard) {
    EXPECT_EQ(Output(Add), "Package 1, \"Month\", is added. It first runs on 2990-01-01 at 06:00.\n");
    EXPECT_EQ(Sql("select * from ReportBatch"),
              (Texts{"1|NONE|Month|N/A|Quartely|06:00|2990-01-01|3000-12-31|2990-01-01|||" +
                     SystemPath("out") + "\\|F"}));
    EXPECT_EQ(Sql("select * from ReportBatchDtls"),
              (Texts{"1|1|1>sales.rpt|" + SystemPath("sales.rpt") + "|Acrobat|null|null",
                     "2|1|2>plain.rpt|" + SystemPath("plain.rpt") + "|Acrobat|null|null"}));
    EXPECT_EQ(Sql("select * from ReportBatchPar"), (Texts{"1|1|1|West", "2|1|1|2025"}));
}

TEST_F(Packages, AreShownAndTheirValuesChanged) {
    Output(Add);
    EXPECT_THAT(Output("package list"), HasSubstr("1   Month  Quartely   06:00  2990-01-01  2        "));
    EXPECT_THAT(Output("package list --json"), HasSubstr("\"frequency\": \"Quartely\""));
    EXPECT_EQ(Output("package set Month --report 1 -p Region=East"),
              "Package 1, \"Month\", has the new values of its report \"1>sales.rpt\".\n");
    EXPECT_EQ(Sql("select ParValue from ReportBatchPar"), (Texts{"East", "2025"}));
    EXPECT_THAT(Output("package show month"), HasSubstr("Value:      East\n"));
    EXPECT_EQ(Output("package remove --id 1"), "Package 1, \"Month\", is removed.\n");
    EXPECT_EQ(Sql("select ReportID from ReportBatch union all select ReportID from ReportBatchDtls union all "
                  "select ReportID from ReportBatchPar"),
              Texts{});
}

TEST_F(Packages, RunWritesTheFiles) {
    Output(Add);
    EXPECT_EQ(Output("package run Month"), "Package executed successfully!\n");
    EXPECT_THAT(ReadBytes(m_folder / "out" / "sales.rpt.pdf"), testing::StartsWith("%PDF-"));
    EXPECT_THAT(ReadBytes(m_folder / "out" / "plain.rpt.pdf"), testing::StartsWith("%PDF-"));
    EXPECT_EQ(Sql("select ReportID, Success, ErrMsg from ReportBatchHstry"), (Texts{"1|T|null"}));
}

TEST_F(Packages, HistoryIsThatOfOneOrOfAll) {
    Output(Add);
    EXPECT_EQ(Output("package history"), "MOMENT  STATUS  ID  NAME  ERROR\n");
    for (const char* row :
         {"'1', '2026-11-02,09:00:00', 'T', null", "'1', '2026-11-10,09:00:00', 'T', 'Disk full'",
          "'', '2026-11-09,09:00:00', 'T', ''"}) {
        Sql(std::string("insert into ReportBatchHstry values(") + row + ")");
    }
    EXPECT_EQ(Output("package history"),
              "MOMENT               STATUS   ID  NAME   ERROR\n"
              "2026-11-10 09:00:00  Failure  1   Month  Disk full\n"
              "2026-11-09 09:00:00  Failure\n"
              "2026-11-02 09:00:00  Success  1   Month\n");
    EXPECT_EQ(Output("package history month --limit 1"),
              "MOMENT               STATUS   ID  NAME   ERROR\n"
              "2026-11-10 09:00:00  Failure  1   Month  Disk full\n");
    const std::string json = Output("package history --json");
    EXPECT_THAT(json, HasSubstr("\"error\": \"\",\n        \"id\": null,\n"));
    EXPECT_THAT(json, HasSubstr("\"status\": \"Success\""));
    EXPECT_EQ(Refusal("package history Week"), "There is no package \"Week\"");
}

TEST_F(Packages, AreRefusedWithTheValueAndTheCause) {
    Output(Add);
    EXPECT_EQ(Refusal(Add), "There is a package \"Month\" already, number 1");
    EXPECT_EQ(Refusal("package show Week"), "There is no package \"Week\"");
    EXPECT_EQ(Refusal("package set Month --report 3 -p A=B"), "The package \"Month\" has no report \"3\"");
    EXPECT_EQ(Refusal("package set Month --report 1 -p Region=North"),
              "The value \"North\" of the parameter \"Region\" is not one of its values: West, East");
    EXPECT_EQ(Refusal("package add W --report plain.rpt --output none --no-mail --at 06:00"),
              "The output folder \"" + (m_folder / "none").string() + "/\" does not exist");
    EXPECT_EQ(Refusal("package add \"'\" --report plain.rpt --output out --no-mail --at 06:00"),
              "The name of the package is empty");
    WriteBytes(m_folder / "Ann's.rpt", ReadBytes(m_folder / "plain.rpt"));
    EXPECT_THAT(Refusal("package add W --report \"Ann's.rpt\" --output out --no-mail --at 06:00"),
                HasSubstr("contains an apostrophe, which cannot be stored"));
    std::string reports;
    for (int i = 0; i < 21; ++i) {
        reports += " --report plain.rpt";
    }
    EXPECT_EQ(Refusal("package add W --output out --no-mail --at 06:00" + reports),
              "A package has at most 20 reports");
    EXPECT_EQ(Sql("select count(*) from ReportBatch"), (Texts{"1"}));
}

TEST_F(Packages, LoseAReportAndGoWithTheLastOne) {
    Output(Add);
    EXPECT_EQ(Refusal("package remove-report Month", 2),
              "package remove-report needs --report (see oxc-schedule --help)");
    EXPECT_EQ(Refusal("package remove-report Month --report 3"), "The package \"Month\" has no report \"3\"");
    EXPECT_EQ(Output("package remove-report Month --report 1"),
              "Package 1, \"Month\", has no report \"1>sales.rpt\" any more.\n");
    EXPECT_EQ(Sql("select DetailID from ReportBatchDtls union all select ParValue from ReportBatchPar"),
              (Texts{"2"}));
    EXPECT_EQ(
        Output("package remove-report Month --report plain.rpt"),
        "Package 1, \"Month\", has no report \"2>plain.rpt\" any more. It was the last one: the package is "
        "removed.\n");
    EXPECT_EQ(Sql("select ReportID from ReportBatch union all select ReportID from ReportBatchDtls"),
              Texts{});
}

// The package's mail and the alert about it fail for the same reason.
TEST_F(Packages, FailedRunSaysOnceWhatTheBoxesSay) {
    std::filesystem::create_directories(m_folder.Folder());
    WriteBytes(m_folder.MailProfile(),
               "[Profile]\nFrom=r@example.com\nTransport=smtp\nHost=127.0.0.1\nPort=1\n");
    Output("package add P --report plain.rpt --output out --to a@example.com --at 06:00");
    Output("options set --alert b@example.com");
    const ScheduleOutcome outcome = Run("package run P");
    EXPECT_EQ(outcome.code, 1);
    EXPECT_THAT(
        outcome.complaint,
        testing::EndsWith("\noxc-schedule: Your mailbox is over the limit or the Exchange Server is down! "
                          "Sending mail failed\n"));
}
