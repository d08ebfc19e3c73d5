// SPDX-License-Identifier: GPL-3.0-or-later
// The program as scripts use it: exit codes, one line for an error, files.
#include <gmock/gmock.h>
#include <stdlib.h>
#include <sys/wait.h>

#include <filesystem>
#include <fstream>
#include <sstream>

namespace {

using testing::HasSubstr;
using testing::StartsWith;

struct Outcome {
    int code = -1;
    std::string output, complaint;
};

class OxcReport : public testing::Test {
 protected:
    void SetUp() override {
        std::string name = (std::filesystem::temp_directory_path() / "oxc-report-test-XXXXXX").string();
        ASSERT_NE(mkdtemp(name.data()), nullptr);
        m_folder = name;
        Write("people.rpt",
              R"(<Report><DataSources><DataSource Name="db"><ConnectionProperties><DataProvider>SQLITE
            </DataProvider><ConnectString>Data Source=none.db</ConnectString></ConnectionProperties></DataSource></DataSources>
            <DataSets><DataSet Name="People"><Query><DataSourceName>db</DataSourceName><CommandText>select 'Ann' as Name
            </CommandText></Query><Fields><Field Name="Name"><DataField>Name</DataField></Field></Fields></DataSet></DataSets>
            <ReportParameters><ReportParameter Name="Year"><DataType>Integer</DataType><DefaultValue><Values><Value>2025
            </Value></Values></DefaultValue></ReportParameter></ReportParameters><Width>4in</Width><Body><Height>1in</Height>
            <ReportItems><Textbox Name="y"><Value>="Year " &amp; Parameters!Year.Value &amp; " " &amp; First(Fields!Name.Value,
            "People")</Value></Textbox></ReportItems></Body></Report>)");
        Write("empty.db", "");
    }
    void TearDown() override { std::filesystem::remove_all(m_folder); }

    std::string Path(const std::string& name) const { return (m_folder / name).string(); }
    void Write(const std::string& name, const std::string& text) const { std::ofstream(Path(name)) << text; }
    std::string Read(const std::string& name) const {
        std::ostringstream text;
        text << std::ifstream(Path(name), std::ios::binary).rdbuf();
        return text.str();
    }
    // `arguments` as in a shell in the folder of the test.
    Outcome Run(const std::string& arguments) const {
        const std::string line =
            "cd '" + m_folder.string() +
            "' && env -u DISPLAY -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM OXC_HOME=\"$PWD/app\" '" +
            OXC_REPORT_PROGRAM "' " + arguments + " >stdout 2>stderr";
        const int status = std::system(line.c_str());
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, Read("stdout"), Read("stderr")};
    }
    static void ExpectOneLine(const std::string& complaint) {
        EXPECT_THAT(complaint, StartsWith("oxc-report: "));
        EXPECT_EQ(std::count(complaint.begin(), complaint.end(), '\n'), 1) << complaint;
    }

    std::filesystem::path m_folder;
};

TEST_F(OxcReport, InfoTellsTitleTablesAndParameters) {
    const Outcome outcome = Run("info people.rpt");
    EXPECT_EQ(outcome.code, 0);
    EXPECT_THAT(outcome.output, HasSubstr("\"title\": \"people\""));
    EXPECT_THAT(outcome.output, HasSubstr("\"People\""));
    EXPECT_THAT(outcome.output, HasSubstr("\"type\": 7"));
    EXPECT_THAT(outcome.output, HasSubstr("\"2025\""));
    EXPECT_EQ(outcome.complaint, "");
}

TEST_F(OxcReport, ExportWritesTheFile) {
    const Outcome outcome = Run(
        "export people.rpt -f html -o out.htm -p year=2030 --data-source 'db=SQLITE;Data Source=empty.db'");
    EXPECT_EQ(outcome.code, 0) << outcome.complaint;
    EXPECT_EQ(outcome.complaint, "");
    EXPECT_THAT(Read("out.htm"), HasSubstr("Year 2030 Ann"));
}

TEST_F(OxcReport, RowsOfAFileReplaceAQuery) {
    Write("people.csv", "Name\nZoe\n");
    const Outcome outcome = Run("export people.rpt -f html -o out.htm -p year=2030 --rows people=people.csv");
    EXPECT_EQ(outcome.code, 0) << outcome.complaint;
    EXPECT_THAT(Read("out.htm"), HasSubstr("Year 2030 Zoe"));
    const Outcome unknown = Run("export people.rpt -f html -o out.htm --rows nobody=people.csv");
    EXPECT_EQ(unknown.code, 1);
    EXPECT_THAT(unknown.complaint, HasSubstr("The report has no data set \"nobody\""));
}

TEST_F(OxcReport, InfoTellsWhatFontsBecome) {
    std::string report = Read("people.rpt");
    const std::size_t at = report.find("<Textbox");
    report.insert(report.find('>', at) + 1, "<Style><FontFamily>No Such Font</FontFamily></Style>");
    Write("fonts.rpt", report);
    const Outcome outcome = Run("info --fonts fonts.rpt");
    EXPECT_THAT(outcome.output, HasSubstr("\"name\": \"No Such Font\""));
    EXPECT_THAT(outcome.output, HasSubstr("\"becomes\": \""));
    EXPECT_THAT(Run("info fonts.rpt").output, Not(HasSubstr("\"becomes\"")));
}

TEST_F(OxcReport, InfoTellsProblemsAndTheReportRuns) {
    std::string report = Read("people.rpt");
    const std::size_t at = report.find("<Textbox");
    report.insert(report.find('>', at) + 1, "<Style><FontWeight>Boldd</FontWeight></Style>");
    Write("bold.rpt", report);
    Write("people.csv", "Name\nZoe\n");
    const Outcome outcome = Run("info --problems bold.rpt");
    EXPECT_EQ(outcome.code, 0) << outcome.complaint;
    EXPECT_THAT(outcome.output,
                HasSubstr("FontWeight: \\\"Boldd\\\" is not known; the nearest is \\\"Bold\\\"\""));
    EXPECT_THAT(Run("info bold.rpt").output, Not(HasSubstr("\"problems\"")));
    EXPECT_THAT(Run("info --problems people.rpt").output, HasSubstr("\"problems\": [\n    ]"));
    EXPECT_EQ(Run("export bold.rpt -f html -o out.htm -p Year=2030 --rows people=people.csv").code, 0);
}

TEST_F(OxcReport, FaultOfReportDataOrValueIsOneLineAndExitCode1) {
    Write("text.rpt", "hello");
    for (const char* arguments :
         {"info none.rpt", "info text.rpt", "export people.rpt -f html -o out.htm",
          "export people.rpt -f html -o out.htm -p Year=soon",
          "export people.rpt -f html -o out.htm -p Colour=red", "export people.rpt -f html -o no/out.htm",
          "export people.rpt -f html -o out.htm --data-source 'x=SQLITE;Data Source=empty.db'"}) {
        const Outcome outcome = Run(arguments);
        EXPECT_EQ(outcome.code, 1) << arguments;
        ExpectOneLine(outcome.complaint);
        EXPECT_FALSE(std::filesystem::exists(Path("out.htm")));
    }
}

TEST_F(OxcReport, WrongUsageIsExitCode2) {
    const Outcome outcome = Run("export people.rpt -f odt -o out");
    EXPECT_EQ(outcome.code, 2);
    ExpectOneLine(outcome.complaint);
}

TEST_F(OxcReport, HelpTellsHow) {
    const Outcome outcome = Run("--help");
    EXPECT_EQ(outcome.code, 0);
    EXPECT_THAT(outcome.output, HasSubstr("oxc-report export"));
}

TEST_F(OxcReport, VersionIsOneLine) {
    const Outcome outcome = Run("--version");
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(outcome.output, "oxc-report " OXC_VERSION "\n");
}

}  // namespace
