// SPDX-License-Identifier: GPL-3.0-or-later
// What a change leaves: all of it or nothing, also when the report file has changed or another program
// writes.
#include "schedule_program.h"

using testing::HasSubstr;

namespace {

class Changes : public ScheduleProgram {
 protected:
    // A report with these text parameters, each "NAME" or "NAME=DEFAULT".
    void WriteReport(const std::string& file, const Texts& parameters) const {
        std::string xml;
        for (const std::string& parameter : parameters) {
            const std::size_t sign = parameter.find('=');
            xml += "<ReportParameter Name=\"" + parameter.substr(0, sign) + "\"><DataType>String</DataType>";
            if (sign != std::string::npos) {
                xml += "<DefaultValue><Values><Value>" + parameter.substr(sign + 1) +
                       "</Value></Values></DefaultValue>";
            }
            xml += "</ReportParameter>";
        }
        WriteBytes(m_folder / file, Report("<ReportParameters>" + xml + "</ReportParameters>", "text"));
    }
    void UseOutbox() const {
        std::filesystem::create_directories(m_folder.Folder());
        WriteBytes(m_folder.MailProfile(), "[Profile]\nFrom=r@example.com\nTransport=outbox\nOutboxFolder=" +
                                               (m_folder / "outbox").string() + "\n");
    }
    Texts Values() const { return Sql("select ParName, ParValue from ReportParameter order by rowid"); }
    std::string Cached(const std::string& name) const { return ReadBytes(m_folder / "app" / "Cache" / name); }
    static constexpr const char* AddDates =
        "add dates.rpt --title T --to a@example.com --at 07:30 -p From=1 -p Until=2";
};

}  // namespace

TEST_F(Changes, SetLeavesTheValuesOfAReportThatHasChangedSince) {
    UseOutbox();
    WriteReport("dates.rpt", {"From", "Until"});
    Output(AddDates);
    WriteReport("dates.rpt", {"Extra", "Until", "From"});
    Output("set T --subject hello --at 11:30");
    EXPECT_EQ(Values(), (Texts{"From|1", "Until|2"}));
    Output("set T -p Until=3");
    EXPECT_EQ(Values(), (Texts{"From|1", "Until|3"}));
    EXPECT_EQ(Output("run T"), "Schedule executed successfully\n");
    EXPECT_EQ(Refusal("set T -p Extra=7"),
              "The report has no parameter \"Extra\"; it has From, Until. The report file has changed since: "
              "oxc-schedule refresh copies it again");
    std::filesystem::remove(m_folder / "dates.rpt");
    Output("set T --subject again");
    EXPECT_EQ(Sql("select Subject from ReportScheduler"), (Texts{"again"}));
}

TEST_F(Changes, RefreshCopiesTheReportAndKeepsValuesByName) {
    UseOutbox();
    WriteReport("dates.rpt", {"From", "Until"});
    Output(AddDates);
    WriteReport("dates.rpt", {"Extra", "Until", "From"});
    EXPECT_EQ(Refusal("refresh T"),
              "The parameter \"Extra\" has no default value: give it with -p \"Extra=VALUE\"");
    EXPECT_NE(Cached("dates.rpt"), ReadBytes(m_folder / "dates.rpt"));
    EXPECT_EQ(Output("refresh T -p Extra=7"), "Schedule 1, \"T\" in the folder \"Desktop\", is refreshed.\n");
    EXPECT_EQ(Values(), (Texts{"Extra|7", "Until|2", "From|1"}));
    EXPECT_EQ(Cached("dates.rpt"), ReadBytes(m_folder / "dates.rpt"));
    EXPECT_EQ(Output("run T"), "Schedule executed successfully\n");
    WriteReport("dates.rpt", {});
    Output("refresh T");
    EXPECT_EQ(Values(), Texts{});
    Output("add dates.rpt --title U --to a@example.com --at 07:30");
    EXPECT_EQ(
        Output("refresh U"),
        "Schedule 2, \"U\" in the folder \"Desktop\", is refreshed. The same copy is run by schedule 1: "
        "refresh it, too.\n");
}

TEST_F(Changes, ValuesOfPackagesAreByPositionAndMustFitTheReport) {
    WriteReport("dates.rpt", {"From", "Until"});
    Output("package add P --report dates.rpt -p From=1 -p Until=2 --output out --no-mail --at 06:00");
    WriteReport("dates.rpt", {"Extra", "From", "Until"});
    EXPECT_EQ(
        Refusal("package set P --report 1 -p Until=3"),
        "The report \"1>dates.rpt\" has 3 parameters, and 2 values are stored: it has changed since. Give "
        "all of its values with -p");
    Output("package set P --report 1 -p Until=3 -p From=1 -p Extra=7");
    EXPECT_EQ(Sql("select ParValue from ReportBatchPar"), (Texts{"7", "1", "3"}));
}

TEST_F(Changes, FailedSetChangesNothing) {
    Output(AddSales);
    const Texts before = Sql("select * from ReportScheduler");
    Sql("create trigger stop before insert on ReportParameter begin select raise(abort, 'no space'); end");
    EXPECT_THAT(Refusal("set Sales --subject x -p Region=East"), HasSubstr("no space"));
    EXPECT_EQ(Sql("select * from ReportScheduler"), before);
    EXPECT_EQ(Values(), (Texts{"Region|West", "Year|2025"}));
    Output("package add P --report sales.rpt -p Region=West --output out --no-mail --at 06:00");
    Sql("create trigger stop2 before insert on ReportBatchPar begin select raise(abort, 'no space'); end");
    EXPECT_THAT(Refusal("package set P --report 1 -p Region=East"), HasSubstr("no space"));
    EXPECT_EQ(Sql("select ParValue from ReportBatchPar"), (Texts{"West", "2025"}));
}

TEST_F(Changes, RefusedCommandLeavesTheCopyOfAnotherSchedule) {
    Output(AddPlain);
    const std::string former = Cached("plain.rpt");
    Output("export all.json");
    std::filesystem::create_directories(m_folder / "other");
    for (const char* name : {"plain.rpt", "new.rpt"}) {
        WriteBytes(m_folder / "other" / name, Report("", "another text"));
    }
    Sql("create trigger stop before insert on ReportScheduler begin select raise(abort, 'no space'); end");
    EXPECT_THAT(Refusal("add other/plain.rpt --title O --to a@example.com --at 07:30"),
                HasSubstr("no space"));
    EXPECT_THAT(Refusal("add other/new.rpt --title O --to a@example.com --at 07:30"), HasSubstr("no space"));
    std::string text = ReadBytes(m_folder / "all.json");
    text.replace(text.find("/plain.rpt"), 10, "/other/plain.rpt");
    WriteBytes(m_folder / "all.json", text);
    EXPECT_THAT(Refusal("import all.json --replace"), HasSubstr("no space"));
    EXPECT_EQ(Cached("plain.rpt"), former);
    std::size_t copies = 0;
    for (const auto& entry : std::filesystem::directory_iterator(m_folder / "app" / "Cache")) {
        copies += entry.is_regular_file() ? 1 : 0;
    }
    EXPECT_EQ(copies, 1U);
}

// Each command makes its checks while the other program has not yet stored its rows.
TEST_F(Changes, NoCommandStoresWhatAnotherProgramHasMadeWrong) {
    Output("folder add Old");
    EXPECT_EQ(
        RunWhileWritten("folder add New", "insert into Folders(FolderName, Parent) values('New', 0)").code,
        1);
    EXPECT_EQ(Sql("select FolderName from Folders"), (Texts{"Old", "New"}));
    EXPECT_EQ(
        RunWhileWritten("folder rename Old Next", "insert into Folders(FolderName, Parent) values('Next', 0)")
            .complaint,
        "oxc-schedule: The name \"Next\" already exists in the system. Please specify a new name.\n");
    Output(AddPlain);
    EXPECT_EQ(RunWhileWritten("folder remove Old", "update ReportScheduler set Parent = 'Old'").complaint,
              "oxc-schedule: The folder \"Old\" is not empty: schedules 1, folders 0\n");
    EXPECT_EQ(RunWhileWritten(AddPlain, "update ReportScheduler set Parent = 'Desktop'").complaint,
              "oxc-schedule: The folder \"Desktop\" has a schedule \"Plain\" already, number 1\n");
    EXPECT_EQ(RunWhileWritten("set Plain --subject s", "update ReportScheduler set Message = 'm'").complaint,
              "oxc-schedule: Schedule 1 was changed by another program meanwhile; give the command again\n");
    EXPECT_EQ(Sql("select Subject, Message from ReportScheduler"), (Texts{"|m"}));
    const std::string add = "package add P --report plain.rpt --output out --no-mail --at 06:00";
    Output(add);
    Sql("update ReportBatch set BatchName = 'Q'");
    EXPECT_EQ(RunWhileWritten(add, "update ReportBatch set BatchName = 'P'").complaint,
              "oxc-schedule: There is a package \"P\" already, number 1\n");
    Output("export all.json");
    Sql("delete from ReportScheduler");
    EXPECT_EQ(
        RunWhileWritten("import all.json", "delete from Folders").complaint,
        "oxc-schedule: The database was changed by another program meanwhile; give the command again\n");
}
