// SPDX-License-Identifier: GPL-3.0-or-later
// Single schedules, from the first command in an empty folder to the run.
#include "schedule_program.h"

using testing::HasSubstr;
using testing::StartsWith;

namespace {

class Schedules : public ScheduleProgram {
 protected:
    Texts Rows(const std::string& columns) const {
        return Sql("select " + columns + " from ReportScheduler order by ReportID");
    }
    void UseOutbox() const {
        std::filesystem::create_directories(m_folder.Folder());
        WriteBytes(m_folder.MailProfile(), "[Profile]\nFrom=r@example.com\nTransport=outbox\nOutboxFolder=" +
                                               (m_folder / "outbox").string() + "\n");
    }
    std::size_t Mails() const {
        std::size_t count = 0;
        for (const auto& entry : std::filesystem::directory_iterator(m_folder / "outbox")) {
            count += entry.path().extension() == ".eml" ? 1 : 0;
        }
        return count;
    }
};

}  // namespace

TEST_F(Schedules, HelpAndVersionNeedNothing) {
    EXPECT_THAT(Output("--help"), StartsWith("usage: oxc-schedule COMMAND"));
    EXPECT_EQ(Output("--version"), "oxc-schedule " OXC_VERSION "\n");
    EXPECT_FALSE(std::filesystem::exists(m_folder / "app" / "PressroomLive.dat"));
}

TEST_F(Schedules, AddMakesTheRowOfTheWizard) {
    EXPECT_EQ(Output("folder add Finance"), "The folder \"Finance\" is added to \"Desktop\".\n");
    EXPECT_EQ(
        Output("add sales.rpt --folder finance --title \"Ann's sales\" --to 'ann@example.com;b@example.com' "
               "--subject Figures --message 'Good morning' --weekly --at 07:30 --start 2990-01-02 "
               "--end 2990-12-31 --format pdf -p region=West"),
        "Schedule 1, \"Anns sales\" in the folder \"Finance\", is added. It first runs on 2990-01-02 at "
        "07:30.\n");
    EXPECT_EQ(
        Rows("*"),
        (Texts{"1|Anns sales|" + SystemPath("app/Cache/sales.rpt") + "|" + SystemPath("sales.rpt") +
               "|ann@example.com;b@example.com;|Figures|Good morning|2990-01-02|2990-12-31|07:30|Weekly|"
               "2990-01-02|NONE||Acrobat Format (PDF)|Finance|||F"}));
    EXPECT_EQ(Sql("select * from ReportParameter"), (Texts{"1|Region|West", "1|Year|2025"}));
    EXPECT_EQ(ReadBytes(m_folder / "app" / "Cache" / "sales.rpt"), ReadBytes(m_folder / "sales.rpt"));
}

TEST_F(Schedules, PathMayHoldAnApostrophe) {
    std::filesystem::create_directories(m_folder / "Ann's");
    std::filesystem::copy_file(m_folder / "plain.rpt", m_folder / "Ann's" / "plain.rpt");
    Output("add \"Ann's/plain.rpt\" --title Plain --to a@example.com --at 00:00");
    EXPECT_EQ(Rows("OriginalPath"), (Texts{SystemPath("Ann's/plain.rpt")}));
    Output("set Plain --at 01:00");
}

TEST_F(Schedules, AddStoresTheWordsOfTheWizard) {
    const std::vector<std::pair<std::string, std::string>> words = {
        {"--daily --format html", "Daily|DHTML"},      {"--weekdays --format xls", "Weekdays|MS Excel"},
        {"--monthly --format doc", "Monthly|MS Word"}, {"--format RTF", "Daily|Rich Text"},
        {"--format 'MS Word'", "Daily|MS Word"},
    };
    Texts stored;
    for (const auto& [options, row] : words) {
        Output("add plain.rpt --to a@example.com --at 00:00 --title '" + row + "' " + options);
        stored.push_back(row);
    }
    EXPECT_EQ(Rows("Frequency, Format"), stored);
}

TEST_F(Schedules, LogonIsReadFromStandardInputOrTheEnvironment) {
    Output(std::string(AddPlain) + " --user scott --password-stdin", "tiger\n");
    EXPECT_EQ(Rows("UserName, Password, LoginReq"), (Texts{"scott|tiger|T"}));
    setenv("OXC_SCHEDULE_PASSWORD", "lion", 1);
    Output("set Plain --user anna");
    EXPECT_EQ(Rows("UserName, Password, LoginReq"), (Texts{"anna|lion|T"}));
    Output("set Plain --no-login");
    EXPECT_EQ(Rows("UserName, Password, LoginReq"), (Texts{"||F"}));
}

TEST_F(Schedules, SetChangesOnlyWhatIsGiven) {
    Output(AddSales);
    Output("folder add Finance");
    const std::string before = Rows("*").front();
    EXPECT_EQ(Output("set Sales"), "Schedule 1, \"Sales\" in the folder \"Desktop\", is changed.\n");
    EXPECT_EQ(Rows("*").front(), before);
    Output(
        "set Sales --title Turnover --move-to Finance --to b@example.com --at 08:00 --monthly --format xls "
        "--subject S --message M --formula '{a} = 1' -p Year=2026");
    EXPECT_EQ(Rows("ReportTitle, Parent, SendTo, RunAt, Frequency, Format, Subject, Message, SelectionForm, "
                   "NextRun"),
              (Texts{"Turnover|Finance|b@example.com;|08:00|Monthly|MS Excel|S|M|{a} = 1|2990-01-01"}));
    EXPECT_EQ(Sql("select ParName, ParValue from ReportParameter"), (Texts{"Region|West", "Year|2026"}));
}

TEST_F(Schedules, ListAndShowPrintThem) {
    Output(AddSales);
    EXPECT_EQ(Output("list"),
              "ID  FOLDER   TITLE  FREQUENCY  AT     NEXT        FORMAT                TO\n"
              "1   Desktop  Sales  Daily      07:30  2990-01-01  Acrobat Format (PDF)  ann@example.com;\n");
    EXPECT_EQ(
        Output("show sales"),
        "Number:      1\nTitle:       Sales\nFolder:      Desktop\nReport:      " +
            (m_folder / "sales.rpt").string() +
            "\nFrequency:   Daily\nAt:          07:30\nNext run:    2990-01-01\nStart:       2990-01-01\n"
            "End:         3000-12-31\nFormat:      Acrobat Format (PDF)\nTo:          ann@example.com;\n"
            "Parameter:   Region = West\nParameter:   Year = 2025\n");
    EXPECT_THAT(Output("list --json"), HasSubstr("\"title\": \"Sales\""));
    EXPECT_THAT(Output("show --id 1 --json"), HasSubstr("\"value\": \"West\""));
    EXPECT_EQ(Output("list --folder Desktop --json"), Output("list --json"));
}

TEST_F(Schedules, RemoveTakesValuesAndHistoryAlong) {
    Output(AddSales);
    Sql("insert into ReportHistory values(1, '2026-11-20 07:30:00', 'Success', 'None')");
    EXPECT_EQ(Output("remove Sales"),
              "Schedule 1, \"Sales\" in the folder \"Desktop\", is removed with its history.\n");
    EXPECT_EQ(
        Sql("select ReportID from ReportScheduler union all select ReportID from ReportParameter union all "
            "select ReportID from ReportHistory"),
        Texts{});
}

TEST_F(Schedules, RunMailsAtOnceAndWritesTheHistory) {
    UseOutbox();
    Output(AddSales);
    EXPECT_EQ(Output("run Sales"), "Schedule executed successfully\n");
    EXPECT_EQ(Mails(), 1U);
    EXPECT_EQ(Sql("select ReportID, Status, ErrMsg from ReportHistory"), (Texts{"1|Success|None"}));
    EXPECT_EQ(Rows("NextRun"), (Texts{"2990-01-01"}));
    const std::string history = Output("history Sales");
    EXPECT_THAT(history, StartsWith("MOMENT               STATUS   ID  FOLDER   TITLE  ERROR\n"));
    EXPECT_THAT(history, HasSubstr("  Success  1   Desktop  Sales  None\n"));
}

TEST_F(Schedules, FailedRunLeavesARowAndOneLine) {
    UseOutbox();
    Output(AddSales);
    std::filesystem::remove(m_folder / "app" / "Cache" / "sales.rpt");
    EXPECT_THAT(Refusal("run Sales"), StartsWith("An error was encountered. "));
    EXPECT_EQ(Sql("select ReportID, Status from ReportHistory"), (Texts{"1|"}));
}

TEST_F(Schedules, HistoryShowsTheNewestFirst) {
    Output(AddSales);
    Sql("insert into ReportHistory values(1, '2026-11-18 07:30:00', 'Success', 'None'), "
        "(1, '2026-11-20 07:30:00', 'Failure', 'Disk full'), (9, '2026-11-19 07:30:00', 'Success', 'None')");
    EXPECT_EQ(Output("history --limit 2"),
              "MOMENT               STATUS   ID  FOLDER   TITLE  ERROR\n"
              "2026-11-20 07:30:00  Failure  1   Desktop  Sales  Disk full\n"
              "2026-11-19 07:30:00  Success  9                   None\n");
    EXPECT_THAT(Output("history --id 1 --json"), HasSubstr("\"error\": \"Disk full\""));
}

TEST_F(Schedules, NextTellsWhatComes) {
    Output(AddPlain);
    EXPECT_EQ(Output("next"), "MOMENT  KIND  ID  FOLDER  TITLE  NOTE\n");
    Sql("update ReportScheduler set StartDate = '2000-01-01', NextRun = date('now', 'localtime', '+2 day'), "
        "Frequency = 'Weekly'");
    const std::string day = Sql("select NextRun from ReportScheduler").front();
    EXPECT_EQ(Output("next --days 5"), "MOMENT            KIND      ID  FOLDER   TITLE  NOTE\n" + day +
                                           " 07:30  schedule  1   Desktop  Plain\n");
    Sql("update ReportScheduler set RunAt = 'noon'");
    EXPECT_THAT(Output("next"),
                HasSubstr("its dates \"" + day + "\" and \"noon\" cannot be read: Type mismatch"));
}

TEST_F(Schedules, NextTellsOfThoseThatRunAtEveryPoll) {
    Output(AddPlain);
    Sql("update ReportScheduler set StartDate = '2000-01-01', NextRun = '1899-12-30', RunAt = '00:00', "
        "Frequency = 'WeekDays'");
    EXPECT_THAT(Output("next"), HasSubstr("  Plain  due now, at every poll from then on, each day\n"));
    EXPECT_THAT(Output("next --json"), HasSubstr("\"everyPoll\": true"));
}

TEST_F(Schedules, AddTellsOfTheFirstRun) {
    const std::string add = "add plain.rpt --to a@example.com --title ";
    EXPECT_EQ(Output(add + "A --at 00:00"),
              "Schedule 1, \"A\" in the folder \"Desktop\", is added. It is due at the next poll.\n");
    EXPECT_EQ(
        Output(add + "B --at 00:00 --start \"$(date -d '-2 days' +%F)\""),
        "Schedule 2, \"B\" in the folder \"Desktop\", is added. It is due at the next poll, and makes up 3 "
        "runs, one in each poll.\n");
    EXPECT_EQ(Output("package add P --report plain.rpt --output out --no-mail --at 00:00"),
              "Package 1, \"P\", is added. It is due at the next poll.\n");
}
