// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <cstdlib>
#include <iostream>

#include "platform/reports/failure.h"
#include "platform/reports/report_folder.h"
#include "rdl/engine/images.h"
#include "support/format_beginning.h"
#include "support/sanitizer.h"

namespace reports::test {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class ReportEngine : public ReportFolder {
 protected:
    static void Aim(report::Report& report, int format, const std::string& path) {
        report.SetExportDestination(report::DestinationDisk);
        report.SetExportFormat(format);
        report.SetDiskFileName(path);
        report.SetHtmlFileName(path);
    }
    RuntimeError OpenError(const std::string& name, const std::string& bytes) const {
        const std::string path = Write(name, bytes);
        return ErrorOf([&] { CreateRdlEngine()->OpenReport(path); });
    }
};

TEST_F(ReportEngine, EmptyPathIsAMissingFile) {
    const RuntimeError error = ErrorOf([] { CreateRdlEngine()->OpenReport(""); });
    EXPECT_EQ(error.Number(), err::FileNotFound);
    EXPECT_EQ(error.Description(), "File not found: \"\"");
}

TEST_F(ReportEngine, MissingFileIs53) {
    const RuntimeError error = ErrorOf([&] { CreateRdlEngine()->OpenReport(Path("none.rpt")); });
    EXPECT_EQ(error.Number(), err::FileNotFound);
    EXPECT_THAT(error.Description(), HasSubstr("none.rpt"));
}

TEST_F(ReportEngine, FolderIsNoReport) {
    EXPECT_EQ(ErrorOf([&] { CreateRdlEngine()->OpenReport(m_folder.string()); }).Number(),
              err::PathFileAccess);
}

TEST_F(ReportEngine, FileThatIsNoReportSaysWhatItIs) {
    EXPECT_EQ(OpenError("a.rpt", "").Number(), InvalidReport);
    EXPECT_THAT(OpenError("a.rpt", "hello").Description(), HasSubstr("plain text"));
    EXPECT_THAT(OpenError("a.rpt", "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1").Description(),
                HasSubstr("compound binary"));
    EXPECT_THAT(OpenError("it's.rpt", "hello").Description(), Not(HasSubstr("'")));
}

TEST_F(ReportEngine, ExpressionThatDoesNotCompileIsToldWhenTheReportIsOpened) {
    const RuntimeError error =
        OpenError("a.rpt", PeopleReport("<PageHeader><Height>1in</Height><ReportItems><Textbox "
                                        "Name=\"Total\"><Value>=1 +</Value></Textbox></ReportItems>"
                                        "</PageHeader>"));
    EXPECT_EQ(error.Number(), InvalidReport);
    EXPECT_THAT(error.Description(), HasSubstr("Textbox Total, Value"));
}

TEST_F(ReportEngine, TitleIsThePropertyElseTheFileName) {
    EXPECT_EQ(OpenPeople("", "sales 2025.rpt")->Title(), "sales 2025");
    EXPECT_EQ(
        OpenPeople(
            "<CustomProperties><CustomProperty><Name>Title</Name><Value>All sales</Value></CustomProperty>"
            "</CustomProperties>")
            ->Title(),
        "All sales");
}

TEST_F(ReportEngine, TitleOfAnEmptyPropertyIsEmpty) {
    const std::string before = "<CustomProperties><CustomProperty><Name>Title</Name>";
    const std::string after = "</CustomProperty></CustomProperties>";
    EXPECT_EQ(OpenPeople(before + "<Value/>" + after)->Title(), "");
    EXPECT_EQ(OpenPeople(before + "<Value>  </Value>" + after)->Title(), "");
    EXPECT_EQ(OpenPeople(before + after)->Title(), "");
    EXPECT_EQ(OpenPeople("<CustomProperties/>", "sales.rpt")->Title(), "sales");
}

TEST_F(ReportEngine, TitleIsOneLine) {
    EXPECT_EQ(
        OpenPeople("<CustomProperties><CustomProperty><Name>Title</Name><Value>\n  All\n\tsales\n</Value>"
                   "</CustomProperty></CustomProperties>")
            ->Title(),
        "All  sales");
}

TEST_F(ReportEngine, FormulaOfTheFileHoldsNoSingleMark) {
    EXPECT_EQ(OpenPeople("<CustomProperties><CustomProperty><Name>RecordSelectionFormula</Name>"
                         "<Value>{Name} = 'Ann'</Value></CustomProperty></CustomProperties>")
                  ->RecordSelectionFormula(),
              "{Name} = \"Ann\"");
}

TEST_F(ReportEngine, DescriptionIsThatOfTheDefinition) {
    EXPECT_EQ(OpenPeople("<Description>All of them, by age</Description>")->Description(),
              "All of them, by age");
    EXPECT_EQ(OpenPeople("")->Description(), "");
}

TEST_F(ReportEngine, TablesAreTheDataSetsWithAQuery) {
    const std::string more =
        "<DataSources><DataSource "
        "Name=\"db\"><ConnectionProperties><DataProvider>SQLITE</DataProvider><ConnectString>Data "
        "Source=none.db</ConnectString></ConnectionProperties></DataSource></DataSources>";
    std::string text = PeopleReport(more);
    text.insert(text.find("</DataSets>"),
                "<DataSet Name=\"Orders\"><Query><DataSourceName>db</DataSourceName><CommandText>select 1 as "
                "a</CommandText>"
                "</Query><Fields><Field Name=\"a\"><DataField>a</DataField></Field></Fields></DataSet>");
    const auto report = OpenRdlReport(Write("a.rpt", text));
    EXPECT_EQ(report->TableCount(), 1);
    EXPECT_EQ(report->TableName(1), "Orders");
    EXPECT_EQ(ErrorOf([&] { report->SetTableLogon(1, "", "", "ann", "secret"); }).Number(), 0);
    EXPECT_EQ(ErrorOf([&] { report->SetTableLogon(2, "", "", "ann", "secret"); }).Number(),
              err::SubscriptOutOfRange);
    Aim(*report, report::CodeOf(report::DocumentFormat::Html), Path("out.htm"));
    const RuntimeError error = ErrorOf([&] { report->Export(false); });
    EXPECT_EQ(error.Number(), DataFailed);
    EXPECT_THAT(error.Description(), AllOf(HasSubstr("none.db"), Not(HasSubstr("secret"))));
    EXPECT_FALSE(std::filesystem::exists(Path("out.htm")));
}

TEST_F(ReportEngine, DataSourceCanBeReplacedByNameOnly) {
    const auto report = OpenPeople();
    EXPECT_THAT(ErrorOf([&] { report->SetDataSource("other", "SQLITE", "x"); }).Description(),
                HasSubstr("\"other\""));
}

TEST_F(ReportEngine, EveryFormatHasItsOwnContent) {
    const auto report = OpenPeople();
    for (const report::FormatRow& row : report::FormatTable) {
        Aim(*report, row.Code(), Path("out"));
        report->Export(false);
        EXPECT_THAT(Read("out"), StartsWith(std::string(BeginningOf(row.format)))) << row.word;
    }
}

TEST_F(ReportEngine, CsvOfADataSetHasItsRows) {
    const auto report = OpenPeople();
    report->SetExportOptions({.dataSet = "people"});
    report->SetRecordSelectionFormula("{Number} > 1");
    Aim(*report, report::CodeOf(report::DocumentFormat::Csv), Path("out"));
    report->Export(false);
    EXPECT_EQ(Read("out"), "\xEF\xBB\xBFName,Number\r\nBob,2\r\nCleo,3\r\n");
    report->SetExportOptions({.dataSet = "Animals"});
    EXPECT_EQ(ErrorOf([&] { report->Export(false); }).Description(),
              "The report has no data set \"Animals\"");
    report->SetExportOptions({.dataSet = "People"});
    Aim(*report, report::CodeOf(report::DocumentFormat::Pdf), Path("out"));
    EXPECT_EQ(ErrorOf([&] { report->Export(false); }).Description(),
              "The rows of a data set are exported as CSV only");
}

TEST_F(ReportEngine, FormulaReplacesTheReportsOwn) {
    const auto report = OpenPeople(
        "<CustomProperties><CustomProperty><Name>RecordSelectionFormula</Name><Value>{Number} = "
        "1</Value></CustomProperty>"
        "</CustomProperties>");
    EXPECT_EQ(report->RecordSelectionFormula(), "{Number} = 1");
    Aim(*report, report::CodeOf(report::DocumentFormat::Html), Path("out.htm"));
    report->Export(false);
    EXPECT_THAT(Read("out.htm"), AllOf(HasSubstr("Ann"), Not(HasSubstr("Bob"))));
    report->SetRecordSelectionFormula("{People.Number} > 1");
    report->Export(false);
    EXPECT_THAT(Read("out.htm"), AllOf(Not(HasSubstr("Ann")), HasSubstr("Bob"), HasSubstr("Cleo")));
    report->SetRecordSelectionFormula("{Number} >");
    EXPECT_EQ(ErrorOf([&] { report->Export(false); }).Number(), InvalidFormula);
}

TEST_F(ReportEngine, FailedRunLeavesTheOldFileAndNothingElse) {
    const auto report = OpenPeople(Parameters(Parameter("must", "String")));
    Write("out.pdf", "old");
    Aim(*report, report::CodeOf(report::DocumentFormat::Pdf), Path("out.pdf"));
    EXPECT_NE(ErrorOf([&] { report->Export(false); }).Number(), 0);
    EXPECT_EQ(Read("out.pdf"), "old");
    EXPECT_EQ(FileCount(), 2);
}

TEST_F(ReportEngine, MissingFolderIs76) {
    const auto report = OpenPeople();
    Aim(*report, report::CodeOf(report::DocumentFormat::Pdf), Path("none/out.pdf"));
    EXPECT_EQ(ErrorOf([&] { report->Export(false); }).Number(), err::PathNotFound);
}

TEST_F(ReportEngine, ExportsCanBeReadByOthers) {
    const mode_t before = umask(022);
    const auto report = OpenPeople();
    Aim(*report, report::CodeOf(report::DocumentFormat::Html), Path("out.htm"));
    report->Export(false);
    umask(before);
    struct stat facts {};
    ASSERT_EQ(stat(Path("out.htm").c_str(), &facts), 0);
    EXPECT_EQ(facts.st_mode & 0777, 0644u);
}

TEST_F(ReportEngine, PathsOfTheSystemAreUnderstood) {
    std::string target = Path("out.htm");
    std::replace(target.begin(), target.end(), '/', '\\');
    const auto report = OpenPeople();
    Aim(*report, report::CodeOf(report::DocumentFormat::Html), "Z:" + target);
    report->Export(false);
    EXPECT_TRUE(std::filesystem::exists(Path("out.htm")));
}

TEST_F(ReportEngine, UnknownFormatAndDestinationAreErrors) {
    const auto report = OpenPeople();
    Aim(*report, 99, Path("out"));
    EXPECT_EQ(ErrorOf([&] { report->Export(false); }).Number(), InvalidOption);
    Aim(*report, report::CodeOf(report::DocumentFormat::Pdf), Path("out"));
    report->SetExportDestination(7);
    EXPECT_EQ(ErrorOf([&] { report->Export(false); }).Number(), InvalidOption);
    EXPECT_EQ(FileCount(), 1);
}

TEST_F(ReportEngine, SameDataAndClockGiveTheSameBytes) {
    const auto report = OpenPeople();
    for (const char* name : {"a", "b"}) {
        Aim(*report, report::CodeOf(report::DocumentFormat::Html), Path(name));
        report->Export(false);
    }
    EXPECT_EQ(Read("a"), Read("b"));
}

TEST_F(ReportEngine, SubreportRunsWithItsParameters) {
    std::string child = PeopleReport(Parameters(Parameter("Greeting", "String")));
    const std::string plain = "=Fields!Name.Value";
    child.replace(child.find(plain), plain.size(), "=Parameters!Greeting.Value &amp; Fields!Name.Value");
    Write("child.rpt", child);
    std::string parent = PeopleReport();
    parent.insert(
        parent.find("<Table "),
        "<Subreport "
        "Name=\"s\"><Top>1in</Top><Height>1in</Height><ReportName>child</ReportName><Parameters><Parameter "
        "Name=\"Greeting\"><Value>Hello-</Value></Parameter></Parameters></Subreport>");
    const auto report = OpenRdlReport(Write("parent.rpt", parent));
    Aim(*report, report::CodeOf(report::DocumentFormat::Html), Path("out.htm"));
    report->Export(false);
    EXPECT_THAT(Read("out.htm"), AllOf(HasSubstr("Hello-Ann"), HasSubstr("Hello-Cleo")));
    std::filesystem::remove(Path("child.rpt"));
    EXPECT_THAT(ErrorOf([&] { report->Export(false); }).Description(), HasSubstr("Subreport s"));
}

TEST_F(ReportEngine, ParameterOfSeveralValuesTakesAllDefaultsOfItsQuery) {
    const std::string defaults =
        "<DefaultValue><DataSetReference><DataSetName>People</DataSetName><ValueField>Name</ValueField>"
        "</DataSetReference></DefaultValue>";
    const auto shown = [&](const std::string& more, const std::string& value) {
        std::string text = PeopleReport(Parameters(Parameter("who", "String", defaults + more)));
        const std::string plain = "=Fields!Name.Value";
        text.replace(text.find(plain), plain.size(), value);
        const auto report = OpenRdlReport(Write("a.rpt", text));
        Aim(*report, report::CodeOf(report::DocumentFormat::Html), Path("out.htm"));
        report->Export(false);
        return Read("out.htm");
    };
    EXPECT_THAT(shown("<MultiValue>true</MultiValue>", "=Join(Parameters!who.Value, \"+\")"),
                HasSubstr("Ann+Bob+Cleo"));
    EXPECT_THAT(shown("", "=\"[\" &amp; Parameters!who.Value &amp; \"]\""), HasSubstr("[Ann]"));
}

// A parameter that takes null has it where the report around passes null or nothing; any other needs a value.
TEST_F(ReportEngine, SubreportTakesNullOnlyWhereItsParameterDoes) {
    const auto shown = [this](const std::string& nullable, const std::string& passed) {
        std::string child = PeopleReport(Parameters(Parameter("Greeting", "String", nullable)));
        const std::string plain = "=Fields!Name.Value";
        child.replace(
            child.find(plain), plain.size(),
            "=IIf(Parameters!Greeting.Value Is Nothing, \"none-\", \"some-\") &amp; Fields!Name.Value");
        Write("child.rpt", child);
        std::string parent = PeopleReport();
        parent.insert(
            parent.find("<Table "),
            "<Subreport Name=\"s\"><Top>1in</Top><Height>1in</Height><ReportName>child</ReportName>" +
                passed + "</Subreport>");
        const auto report = OpenRdlReport(Write("parent.rpt", parent));
        Aim(*report, report::CodeOf(report::DocumentFormat::Html), Path("out.htm"));
        const std::string error = ErrorOf([&] { report->Export(false); }).Description();
        return error.empty() ? Read("out.htm") : error;
    };
    const std::string takesNull = "<Nullable>true</Nullable>";
    const auto pass = [](const std::string& value) {
        return "<Parameters><Parameter Name=\"Greeting\"><Value>" + value +
               "</Value></Parameter></Parameters>";
    };
    EXPECT_THAT(shown(takesNull, pass("=Nothing")), AllOf(HasSubstr("none-Ann"), HasSubstr("none-Cleo")));
    EXPECT_THAT(shown(takesNull, ""), AllOf(HasSubstr("none-Ann"), HasSubstr("none-Cleo")));
    EXPECT_THAT(shown(takesNull, pass("x")), HasSubstr("some-Ann"));
    EXPECT_THAT(shown("", pass("=Nothing")), HasSubstr("Parameter \"Greeting\" has no value"));
    EXPECT_THAT(shown("", ""), HasSubstr("Parameter \"Greeting\" has no value and no default"));
}

TEST_F(ReportEngine, SubreportOfAServersFolderIsTheFileBesideTheReport) {
    Write("child.rdl", PeopleReport());
    std::string parent = PeopleReport();
    parent.insert(parent.find("<Table "),
                  "<Subreport Name=\"s\"><Top>1in</Top><Height>1in</Height><ReportName>/Sales/Monthly/child"
                  "</ReportName></Subreport>");
    const auto report = OpenRdlReport(Write("parent.rpt", parent));
    Aim(*report, report::CodeOf(report::DocumentFormat::Html), Path("out.htm"));
    report->Export(false);
    const std::string html = Read("out.htm");
    EXPECT_NE(html.find("Ann"), html.rfind("Ann"));
}

TEST_F(ReportEngine, CopiedReportFindsItsFilesInTheApplicationsFolders) {
    for (const char* folder : {"app/Cache", "app/samples"}) {
        std::filesystem::create_directories(m_folder / folder);
    }
    std::string text = PeopleReport();
    const std::size_t rows = text.find("<Rows>");
    const std::size_t end = text.find("</Rows>") + 7;
    Write("app/samples/people.xml", text.substr(rows, end - rows));
    text.replace(rows, end - rows, "<Rows File=\"people.xml\"/>");
    text.insert(text.find("<Table "),
                "<Subreport Name=\"s\"><Top>2in</Top><Height>1in</Height><ReportName>child</ReportName>"
                "</Subreport>");
    std::string child = PeopleReport();
    const std::string plain = "=Fields!Name.Value";
    child.replace(child.find(plain), plain.size(), "=&quot;Dear &quot; &amp; Fields!Name.Value");
    Write("app/child.rdl", child);
    const auto report = OpenRdlReport(Write("app/Cache/copy.rpt", text));
    Aim(*report, report::CodeOf(report::DocumentFormat::Html), Path("out.htm"));
    report->Export(false);
    EXPECT_THAT(Read("out.htm"), AllOf(HasSubstr(">Cleo<"), HasSubstr("Dear Cleo")));
    std::filesystem::remove(Path("app/samples/people.xml"));
    EXPECT_THAT(ErrorOf([&] { report->Export(false); }).Description(),
                AllOf(HasSubstr("People"), HasSubstr("people.xml")));
}

TEST_F(ReportEngine, ImageFileIsFoundByTheSystemsRulesForPaths) {
    std::filesystem::create_directories(m_folder / "pictures");
    // One pixel: the file's head of 14 bytes, the image's of 40, one row.
    const unsigned char head[] = {'B', 'M', 58, 0, 0, 0, 0, 0, 0, 0, 54, 0, 0, 0, 40,
                                  0,   0,   0,  1, 0, 0, 0, 1, 0, 0, 0,  1, 0, 24};
    std::string pixel(std::begin(head), std::end(head));
    pixel.resize(58);
    Write("pictures/Logo.bmp", pixel);
    std::string text = PeopleReport();
    text.insert(
        text.find("<Table "),
        "<Image Name=\"i\"><Top>2in</Top><Height>1in</Height><Width>1in</Width><Source>External</Source>"
        "<Value>Pictures\\logo.BMP</Value></Image>");
    const auto report = OpenRdlReport(Write("people.rpt", text));
    Aim(*report, report::CodeOf(report::DocumentFormat::Html), Path("out.htm"));
    report->Export(false);
    EXPECT_THAT(Read("out.htm"), HasSubstr("data:image/bmp;base64,Qk06"));
    std::filesystem::remove(Path("pictures/Logo.bmp"));
    EXPECT_THAT(ErrorOf([&] { report->Export(false); }).Description(),
                AllOf(HasSubstr("Image \"i\""), HasSubstr("no image file")));
}

TEST_F(ReportEngine, ImageFileThatCannotBeOpenedSaysWhy) {
    if (ChecksNeedDescriptors) {
        GTEST_SKIP() << "the sanitizers need file descriptors of their own";
    }
    Write("logo.bmp", "BM and the rest");
    const auto loadWithoutHandles = [this] {
        rdl::engine::ImageFiles images({m_folder.string()});
        std::string why;
        const rlimit none{3, 3};
        setrlimit(RLIMIT_NOFILE, &none);
        const bool isLoaded = images.Load("logo.bmp", why) != nullptr;
        std::cerr << why;
        std::_Exit(isLoaded ? 1 : 0);
    };
    EXPECT_EXIT(loadWithoutHandles(), testing::ExitedWithCode(0),
                "image file \"logo.bmp\" cannot be read: Too many open files$");
}

TEST_F(ReportEngine, ReportThatHoldsItselfEndsWithAnError) {
    std::string text = PeopleReport();
    text.insert(text.find("<Table "),
                "<Subreport Name=\"s\"><Height>1in</Height><ReportName>self</ReportName></Subreport>");
    const auto report = OpenRdlReport(Write("self.rpt", text));
    Aim(*report, report::CodeOf(report::DocumentFormat::Html), Path("out.htm"));
    EXPECT_THAT(ErrorOf([&] { report->Export(false); }).Description(), HasSubstr("nested"));
}

}  // namespace
}  // namespace reports::test
