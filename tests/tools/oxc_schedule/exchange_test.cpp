// SPDX-License-Identifier: GPL-3.0-or-later
// Export and import: all items or none.
#include "schedule_program.h"

#include <cerrno>

using testing::HasSubstr;
using testing::Not;

namespace {

class Exchange : public ScheduleProgram {
 protected:
    void Fill() const {
        Output("folder add Finance");
        Output("folder add Month --in Finance");
        Output(std::string(AddSales) + " --folder Month");
        Output(std::string(AddPlain) + " --user scott --password-stdin", "tiger\n");
        Output(
            "package add Pack --report sales.rpt -p Region=East --output out --to b@example.com --at 06:00 "
            "--start 2990-01-01");
    }
    // Everything that the windows can leave: words that no poll knows, folders that no window shows, two
    // schedules of one title, reports and folders that are gone.
    void FillAsTheWindowsDo() const {
        Fill();
        std::filesystem::create_directories(m_folder / "gone");
        std::filesystem::copy_file(m_folder / "plain.rpt", m_folder / "gone" / "gone.rpt");
        for (const char* title : {"Days", "Blank", "Lost", "Twin", "Other"}) {
            Output("add plain.rpt --to a@example.com --at 07:30 --start 2990-01-01 --title " +
                   std::string(title));
        }
        Sql("update ReportScheduler set Frequency = 'WeekDays' where ReportTitle = 'Days'; "
            "update ReportScheduler set Frequency = '', Format = '' where ReportTitle = 'Blank'; "
            "update ReportScheduler set Parent = 'Deleted' where ReportTitle = 'Lost'; "
            "update ReportScheduler set Subject = 's', ReportTitle = 'Twin' where ReportTitle = 'Other'; "
            "insert into Folders(FolderName, Parent) values('Orphan', 99)");
    }
    void Empty() const {
        Sql("delete from ReportScheduler; delete from ReportParameter; delete from ReportBatch; "
            "delete from ReportBatchDtls; delete from ReportBatchPar; delete from Folders");
    }
    // Every table without its keys.
    Texts Everything() const {
        Texts all =
            Sql("select ReportTitle, ReportPath, OriginalPath, SendTo, Subject, Message, StartDate, EndDate, "
                "RunAt, Frequency, NextRun, Client, SelectionForm, Format, Parent, UserName, Password, "
                "LoginReq from ReportScheduler order by ReportTitle");
        for (const char* rest :
             {"select ReportTitle, ParName, ParValue from ReportParameter p join ReportScheduler s on "
              "p.ReportID = "
              "s.ReportID order by p.rowid",
              "select BatchName, ReportTitle, ReportPath, ReportFormat, ParValue, Destination, Recipients, "
              "NextRunDate from ReportBatch b join ReportBatchDtls d on b.ReportID = d.ReportID join "
              "ReportBatchPar p "
              "on p.DetailID = d.DetailID and p.ReportID = b.ReportID order by ParID",
              "select f.FolderName, p.FolderName from Folders f left join Folders p on f.Parent = p.FolderID "
              "order by 1"}) {
            const Texts rows = Sql(rest);
            all.insert(all.end(), rows.begin(), rows.end());
        }
        return all;
    }
};

}  // namespace

TEST_F(Exchange, ImportRestoresWhatExportWrote) {
    Fill();
    const Texts before = Everything();
    EXPECT_EQ(Output("export all.json --with-passwords"), "");
    const std::string text = ReadBytes(m_folder / "all.json");
    EXPECT_THAT(text, HasSubstr("\"password\": \"tiger\""));
    EXPECT_EQ(Output("export --with-passwords"), text);
    Empty();
    const std::string plan =
        "add folder \"Finance\"\nadd folder \"Month\"\nadd schedule \"Plain\" in the folder \"Desktop\"\n"
        "add schedule \"Sales\" in the folder \"Month\"\nadd package \"Pack\"\n";
    EXPECT_EQ(Output("import all.json --dry-run"), plan + "Nothing is changed.\n");
    EXPECT_EQ(Everything(), Texts{});
    EXPECT_EQ(Output("import all.json"), plan);
    EXPECT_EQ(Everything(), before);
    EXPECT_EQ(Output("export --with-passwords"), text);
}

TEST_F(Exchange, PasswordsAreLeftOutAndKept) {
    Fill();
    Output("export all.json");
    EXPECT_THAT(ReadBytes(m_folder / "all.json"), Not(HasSubstr("tiger")));
    EXPECT_EQ(
        Output("import all.json"),
        "keep schedule \"Plain\" in the folder \"Desktop\"\nkeep schedule \"Sales\" in the folder \"Month\"\n"
        "keep package \"Pack\"\n");
    EXPECT_EQ(Sql("select Password from ReportScheduler where ReportTitle = 'Plain'"), (Texts{"tiger"}));
    Output("remove Plain");
    EXPECT_THAT(Output("import all.json"),
                HasSubstr("  it has no password: set it with oxc-schedule set --user\n"));
}

TEST_F(Exchange, AnotherItemIsReplacedOnlyOnRequest) {
    Fill();
    Output("export all.json");
    Sql("update ReportScheduler set NextRun = '2990-05-05' where ReportTitle = 'Sales'");
    Output("set Sales --to c@example.com");
    EXPECT_EQ(Refusal("import all.json"),
              "There is another schedule \"Sales\" in the folder \"Month\"; --replace takes its place");
    EXPECT_THAT(Output("import all.json --replace"), HasSubstr("replace schedule \"Sales\""));
    EXPECT_EQ(Sql("select SendTo, NextRun, Password from ReportScheduler order by ReportTitle"),
              (Texts{"ann@example.com;|2990-01-01|tiger", "ann@example.com;|2990-05-05|"}));
}

TEST_F(Exchange, NextRunIsTheFirstOneToCome) {
    WriteBytes(m_folder / "in.json", R"({"oxbow-courier": 1, "schedules": [{"title": "Plain", "report": ")" +
                                         (m_folder / "plain.rpt").string() +
                                         R"(", "to": "a@example.com", "start": "2020-01-06", "at": "00:00",
        "frequency": "Weekly"}]})");
    Output("import in.json");
    EXPECT_EQ(Sql("select strftime('%w', NextRun), NextRun > date('now', 'localtime'), "
                  "NextRun <= date('now', 'localtime', '+7 day') from ReportScheduler"),
              (Texts{"1|1|1"}));
}

TEST_F(Exchange, OneBadItemKeepsAllOut) {
    Fill();
    Output("export all.json --with-passwords");
    const std::string text = ReadBytes(m_folder / "all.json");
    Empty();
    const std::vector<std::array<std::string, 3>> faults = {
        {"\"West\"", "\"North\"",
         "The schedule \"Sales\", number 2 of the file: The value \"North\" of the parameter \"Region\" is "
         "not one of "
         "its values: West, East"},
        {"\"subject\"", "\"sobject\"",
         "The package \"Pack\", number 1 of the file: the field \"sobject\" is not known"},
        {"\"07:30\"", "7", "The schedule \"Plain\", number 1 of the file: the field \"at\" is not a text"},
        {"\"Daily\"", "\"daily\"",
         "The package \"Pack\", number 1 of the file: the frequency \"daily\" is not one of Daily, Weekly, "
         "Monthly, "
         "Quartely"},
        {"\"title\": \"Plain\"", "\"title\": \"\\u0000\"",
         "The schedule \" \", number 1 of the file: the field \"title\" contains a zero character"},
        {"\"in\": \"Finance\"", "\"in\": \"None\"", "The folder \"Month\": there is no folder \"None\""},
        {"\"folder\": \"Month\"", "\"folder\": \"None\"",
         "The schedule \"Sales\": There is no folder \"None\""},
        {"\"oxbow-courier\": 1", "\"oxbow-courier\": 2",
         "The file is not an export of version 1: its field \"oxbow-courier\" is not 1"},
    };
    for (const auto& [from, to, refusal] : faults) {
        std::string changed = text;
        ASSERT_NE(changed.find(from), std::string::npos) << from;
        changed.replace(changed.find(from), from.size(), to);
        WriteBytes(m_folder / "bad.json", changed);
        EXPECT_EQ(Refusal("import bad.json"), refusal);
    }
    WriteBytes(m_folder / "bad.json", "{");
    EXPECT_THAT(Refusal("import bad.json"), testing::StartsWith("The file is not JSON, at byte 1: "));
    EXPECT_EQ(Refusal("import none.json"), "none.json: " + TextOfTheMachine(ENOENT));
    EXPECT_EQ(Everything(), Texts{});
}

TEST_F(Exchange, FailedStatementRollsAllBack) {
    Fill();
    Output("export all.json");
    Empty();
    Sql("create trigger stop before insert on ReportBatchPar begin select raise(abort, 'no space'); end");
    EXPECT_THAT(Refusal("import all.json"), HasSubstr("no space"));
    EXPECT_EQ(Everything(), Texts{});
}

TEST_F(Exchange, ImportTakesWhatTheWindowsCanLeave) {
    FillAsTheWindowsDo();
    Output("export all.json --with-passwords");
    EXPECT_EQ(
        Output("import all.json"),
        "add folder \"Deleted\"\n"
        "keep schedule \"Lost\" in the folder \"Deleted\"\nkeep schedule \"Blank\" in the folder "
        "\"Desktop\"\nkeep schedule \"Days\" in the folder \"Desktop\"\nkeep schedule \"Plain\" in the "
        "folder "
        "\"Desktop\"\nkeep schedule \"Twin\" in the folder \"Desktop\"\nkeep schedule \"Twin\" in the folder "
        "\"Desktop\"\nkeep schedule \"Sales\" in the folder \"Month\"\nkeep package \"Pack\"\n");
    const Texts before = Everything();
    Sql("delete from Folders where FolderName = 'Orphan'");
    Empty();
    Output("import all.json");
    Texts after = Everything();
    std::erase(after, "Deleted|null");
    Texts expected = before;
    std::erase(expected, "Deleted|null");
    std::erase(expected, "Orphan|null");
    EXPECT_EQ(after, expected);
}

TEST_F(Exchange, KeptItemsNeedNoReportAndNoFolder) {
    Fill();
    Sql("update ReportScheduler set SendTo = 'Nobody;' where ReportTitle = 'Plain'; "
        "update ReportScheduler set Parent = 'Orphan' where ReportTitle = 'Sales'; "
        "insert into Folders(FolderName, Parent) values('Orphan', 99)");
    Output("export all.json");
    std::filesystem::remove(m_folder / "plain.rpt");
    std::filesystem::remove(m_folder / "sales.rpt");
    std::filesystem::remove_all(m_folder / "out");
    EXPECT_EQ(Output("import all.json"),
              "keep schedule \"Plain\" in the folder \"Desktop\"\nkeep schedule \"Sales\" in the folder "
              "\"Orphan\"\nkeep package \"Pack\"\n");
    Sql("delete from ReportBatch");
    EXPECT_THAT(Refusal("import all.json"),
                testing::StartsWith("The package \"Pack\", number 1 of the file: The output folder \""));
}

TEST_F(Exchange, RangeThatIsOverIsSaidAndBadDatesAreRefused) {
    const auto write = [this](const std::string& start, const std::string& output) {
        WriteBytes(m_folder / "in.json",
                   R"({"oxbow-courier": 1, "schedules": [{"title": "Plain", "report": ")" +
                       (m_folder / "plain.rpt").string() + R"(", "to": "a@example.com", "start": ")" + start +
                       R"(", "end": "2020-03-01", "at": "00:00", "frequency": "Weekly"}], "packages": [)" +
                       output + "]}");
    };
    write("2020-01-06", "");
    Output("init");
    EXPECT_EQ(
        Output("import in.json --dry-run"),
        "add schedule \"Plain\" in the folder \"Desktop\"\n  its dates are over: it does not run\nNothing is "
        "changed.\n");
    for (const char* date : {"12:30", "1", "0999-01-01"}) {
        write(date, "");
        EXPECT_EQ(Refusal("import in.json"), "The schedule \"Plain\", number 1 of the file: the date \"" +
                                                 std::string(date) + "\" is not a date");
    }
    write("2020-01-06",
          R"({"name": "P", "output": "", "start": "2020-01-06", "at": "00:00", "frequency": "Daily",
        "mail": false, "reports": []})");
    EXPECT_EQ(Refusal("import in.json"),
              "The package \"P\", number 1 of the file: The output folder is empty");
}

TEST_F(Exchange, ImportReadsStandardInputAndPipes) {
    Fill();
    Output("export all.json");
    const std::string text = ReadBytes(m_folder / "all.json");
    const std::string kept =
        "keep schedule \"Plain\" in the folder \"Desktop\"\nkeep schedule \"Sales\" in the folder \"Month\"\n"
        "keep package \"Pack\"\n";
    EXPECT_EQ(Output("import -", text), kept);
    EXPECT_EQ(Output("import /dev/stdin", text), kept);
    EXPECT_EQ(Refusal("import ."), ".: " + TextOfTheMachine(EISDIR));
}
