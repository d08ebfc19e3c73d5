// SPDX-License-Identifier: GPL-3.0-or-later
// What the commands refuse, word for word. A refused command changes nothing.
#include "schedule_program.h"

namespace {

class Refusals : public ScheduleProgram {
 protected:
    // Adds the plain report with these options in place of the usual ones.
    std::string Add(const std::string& options, const std::string& report = "plain.rpt") const {
        return Refusal("add " + report + " --title T " + options);
    }
    static constexpr const char* Usual = "--to a@example.com --at 07:30 ";
};

}  // namespace

TEST_F(Refusals, WrongUsageHasCodeTwo) {
    EXPECT_EQ(Refusal("fetch", 2), "\"fetch\" is no command (see oxc-schedule --help)");
    EXPECT_EQ(Refusal("add plain.rpt --at 07:30", 2), "add needs --to (see oxc-schedule --help)");
    EXPECT_EQ(Refusal("add plain.rpt --to a@example.com", 2), "add needs --at (see oxc-schedule --help)");
    EXPECT_EQ(Refusal("add plain.rpt --to a@example.com --at 07:30 --daily --weekly", 2),
              "one frequency is enough (see oxc-schedule --help)");
    EXPECT_EQ(Refusal("package add P --at 07:30 --report plain.rpt", 2),
              "package add needs either --to or --no-mail (see oxc-schedule --help)");
    EXPECT_EQ(Refusal("package add P --at 07:30 --no-mail", 2),
              "package add needs --report (see oxc-schedule --help)");
    EXPECT_EQ(Refusal("package add P -p A=B --report plain.rpt", 2),
              "-p stands before --report (see oxc-schedule --help)");
}

TEST_F(Refusals, ValuesOfSchedules) {
    const std::string usual = Usual;
    EXPECT_EQ(Add("--to a@example.com --at 24:00"), "The time \"24:00\" is not a time from 00:00 to 23:59");
    EXPECT_EQ(Add("--to a@example.com --at 7:30"), "The time \"7:30\" is not a time from 00:00 to 23:59");
    EXPECT_EQ(Add(usual + "--start tomorrow"),
              "The start date \"tomorrow\" is not a date; write it as year-month-day");
    EXPECT_EQ(Add(usual + "--start 2990-01-02 --end 2990-01-02"),
              "The end date 2990-01-02 is not later than the start date 2990-01-02");
    for (const char* date :
         {"12:30", "9 pm", "12 am", "1", "45000", "0999-01-01", "2990-01-01 12:30", "1.5"}) {
        EXPECT_EQ(Add(usual + "--start '" + date + "'"),
                  "The start date \"" + std::string(date) + "\" is not a date; write it as year-month-day");
    }
    EXPECT_EQ(Add(usual + "--start 2020-01-01 --end 2020-02-01"),
              "The end date 2020-02-01 is over: there would be no run");
    EXPECT_EQ(Refusal("package add P --report plain.rpt --no-mail --at 07:30 --output ''"),
              "The output folder is empty");
    EXPECT_EQ(Add(usual + "--format docm"),
              "The format \"docm\" is not known; pdf, html, xls, doc and rtf are");
    EXPECT_EQ(Add(usual + "--folder Finance"), "There is no folder \"Finance\"");
    EXPECT_EQ(Add("--at 07:30 --to ''"), "There is no recipient");
    EXPECT_EQ(Add("--at 07:30 --to 'a@example.com;;b@example.com'"),
              "A recipient in \"a@example.com;;b@example.com;\" is empty");
    EXPECT_EQ(Add(usual + "--user ''"), "The user is empty");
    EXPECT_EQ(Add(usual + "--user scott"),
              "The user \"scott\" needs a password: --password-stdin or the variable OXC_SCHEDULE_PASSWORD");
    EXPECT_EQ(Refusal("add plain.rpt --to a@example.com --at 07:30 --title \"$(printf 'a\\tb')\""),
              "The title \"a b\" contains a control character or a byte that is not UTF-8");
    EXPECT_EQ(Refusal("add plain.rpt --to a@example.com --at 07:30 --title \"'\""),
              "The report has no title: give one with --title");
    EXPECT_EQ(Sql("select count(*) from ReportScheduler"), (Texts{"0"}));
}

TEST_F(Refusals, UnknownRecipientIsNamed) {
    EXPECT_THAT(Add("--at 07:30 --to 'a@example.com;Bob'"), testing::HasSubstr("Bob"));
}

TEST_F(Refusals, ParametersOfSchedules) {
    const std::string usual = Usual;
    EXPECT_EQ(Add(usual, "sales.rpt"),
              "The parameter \"Region\" has no default value: give it with -p \"Region=VALUE\"");
    EXPECT_EQ(Add(usual + "-p Region=North", "sales.rpt"),
              "The value \"North\" of the parameter \"Region\" is not one of its values: West, East");
    EXPECT_EQ(Add(usual + "-p Region=West -p Year=soon", "sales.rpt"),
              "The value \"soon\" of the parameter \"Year\" is not a whole number. Type mismatch [13]");
    EXPECT_EQ(Add(usual + "-p Regoin=West", "sales.rpt"),
              "The report has no parameter \"Regoin\"; it has Region, Year");
    EXPECT_EQ(Add(usual + "-p Region=West", "plain.rpt"),
              "The report has no parameter \"Region\"; it has none");
    EXPECT_EQ(Add(usual + "-p Region=West -p region=East", "sales.rpt"),
              "The parameter \"region\" is given twice");
}

TEST_F(Refusals, ReportFiles) {
    EXPECT_THAT(Add(Usual, "none.rpt"), testing::HasSubstr("none.rpt"));
    WriteBytes(m_folder / "text.rpt", "no report");
    EXPECT_THAT(Add(Usual, "text.rpt"), testing::HasSubstr("text.rpt"));
}

TEST_F(Refusals, NamesThatAreMissingTakenOrAmbiguous) {
    Output("init");
    EXPECT_EQ(Refusal("show Sales"), "There is no schedule \"Sales\"");
    EXPECT_EQ(Refusal("remove --id 7"), "There is no schedule with the number 7");
    Output(AddPlain);
    EXPECT_EQ(Refusal(AddPlain), "The folder \"Desktop\" has a schedule \"Plain\" already, number 1");
    Output("folder add Finance");
    Output(std::string(AddPlain) + " --folder Finance");
    EXPECT_EQ(Refusal("run Plain"),
              "There are 2 schedules \"Plain\", with the numbers 1, 2: name one by --folder or --id");
    EXPECT_EQ(Refusal("set Plain --folder Finance --move-to Desktop"),
              "The folder \"Desktop\" has a schedule \"Plain\" already, number 1");
    EXPECT_EQ(Refusal("show Sales --folder Finance"),
              "There is no schedule \"Sales\" in the folder \"Finance\"");
    Output("remove Plain --folder finance");
    EXPECT_EQ(Sql("select ReportID from ReportScheduler"), (Texts{"1"}));
}

TEST_F(Refusals, ValuesOfChangesLeaveTheRow) {
    Output(AddSales);
    const Texts before = Sql("select * from ReportScheduler");
    EXPECT_EQ(Refusal("set Sales --at 25:00"), "The time \"25:00\" is not a time from 00:00 to 23:59");
    EXPECT_EQ(Refusal("set Sales -p Region=North"),
              "The value \"North\" of the parameter \"Region\" is not one of its values: West, East");
    EXPECT_EQ(Refusal("set Sales --format docm"),
              "The format \"docm\" is not known; pdf, html, xls, doc and rtf are");
    EXPECT_EQ(Refusal("set Sales --no-login --user a", 2),
              "--no-login and --user exclude each other (see oxc-schedule --help)");
    std::filesystem::remove(m_folder / "app" / "Cache" / "sales.rpt");
    EXPECT_THAT(Refusal("set Sales -p Region=East"), testing::HasSubstr("sales.rpt"));
    EXPECT_EQ(Sql("select * from ReportScheduler"), before);
}

TEST_F(Refusals, DamagedDatabaseIsNamed) {
    WriteBytes(m_folder / "app" / "PressroomLive.dat", "this is no database");
    EXPECT_THAT(Refusal("list"), testing::HasSubstr("PressroomLive.dat"));
}

TEST_F(Refusals, ValuesAreShownAsTheyAreGiven) {
    EXPECT_EQ(Refusal("add \"it's.rpt\" --to a@example.com --at 07:30"),
              "File not found: \"" + (m_folder / "it's.rpt").string() + "\"");
    EXPECT_EQ(Add("--to a@example.com --at \"7'30\""), "The time \"7'30\" is not a time from 00:00 to 23:59");
}

TEST_F(Refusals, BytesThatAreNotUtf8) {
    for (const char* option : {"subject", "message", "formula", "title", "user"}) {
        EXPECT_THAT(Refusal("add plain.rpt --to a@example.com --at 07:30 --" + std::string(option) +
                            " \"$(printf 'a\\377')\""),
                    testing::EndsWith(" contains a byte that is not UTF-8"));
    }
    WriteBytes(m_folder / "password", "a\xff\n");
    EXPECT_EQ(
        Run("add plain.rpt --to a@example.com --at 07:30 --user u --password-stdin", "a\xff\n").complaint,
        "oxc-schedule: The password contains a byte that is not UTF-8\n");
}

TEST_F(Refusals, WrongUsageComesBeforeAMissingFile) {
    EXPECT_EQ(Refusal("add none.rpt --at 10:00", 2), "add needs --to (see oxc-schedule --help)");
    EXPECT_EQ(Refusal("set None --weekly --daily", 2), "one frequency is enough (see oxc-schedule --help)");
    EXPECT_EQ(Refusal("package add P --report none.rpt --no-mail", 2),
              "package add needs --at (see oxc-schedule --help)");
    EXPECT_EQ(Refusal("history --folder Nowhere", 2), "--folder goes with a name (see oxc-schedule --help)");
    EXPECT_EQ(Refusal("show --id 1 --folder Nowhere", 2),
              "--folder goes with a name (see oxc-schedule --help)");
}

TEST_F(Refusals, OutputThatCannotBeWrittenIsSaid) {
    const std::string toFull = "'" OXC_SCHEDULE_PROGRAM "' " + std::string(AddPlain) + " >/dev/full";
    WriteBytes(m_folder / "full.sh", toFull + "\n");
    const ScheduleOutcome outcome = Run("--version >version; sh full.sh");
    EXPECT_EQ(outcome.code, 1);
    EXPECT_EQ(outcome.complaint, "oxc-schedule: It is done, but the output cannot be written\n");
    EXPECT_EQ(Sql("select count(*) from ReportScheduler"), (Texts{"1"}));
}

// Neither a folder nor settings: a monitor may be another user.
TEST_F(Refusals, ReadingMakesNothing) {
    setenv("OXC_HOME", (m_folder / "empty").c_str(), 1);
    const std::string none =
        "There is no database in \"" + (m_folder / "empty").string() +
        "\" yet: oxc-schedule init makes it, or the first command that changes something";
    WriteBytes(m_folder / "in.json", "{}");
    for (const char* command : {"list", "show X", "next", "history", "export", "folder list", "package list",
                                "package show X", "package history", "import in.json --dry-run"}) {
        EXPECT_EQ(Refusal(command), none) << command;
    }
    EXPECT_EQ(Refusal("status", 2), none);
    EXPECT_FALSE(std::filesystem::exists(m_folder / "empty"));
    EXPECT_FALSE(std::filesystem::exists(m_folder.Folder()));
    EXPECT_FALSE(std::filesystem::exists(m_folder / "config" / "autostart"));
}

// The first steps are taken for the user, and not for each folder.
TEST_F(Refusals, FolderWithoutABlankDatabaseSpoilsNoOtherFolder) {
    std::filesystem::create_directories(m_folder / "empty");
    setenv("OXC_HOME", (m_folder / "empty").c_str(), 1);
    EXPECT_THAT(Refusal("init"), testing::StartsWith("The database in \"" + (m_folder / "empty").string() +
                                                     "\" cannot be made: "));
    setenv("OXC_HOME", (m_folder / "app").c_str(), 1);
    EXPECT_EQ(Output("init"), "The application folder is " + (m_folder / "app").string() + ".\n");
    EXPECT_EQ(Output("folder list"), "FOLDER  IN\n");
}
