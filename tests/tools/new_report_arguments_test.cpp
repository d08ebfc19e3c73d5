// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/new_report_arguments.h"

#include <gmock/gmock.h>

#include "tools/report_arguments.h"

namespace tools {
namespace {

using testing::ElementsAre;

ReportArguments Parse(std::vector<std::string> more) {
    std::vector<std::string> all = {"new", "-o", "a.rdl", "--data-source", "a.csv"};
    all.insert(all.end(), more.begin(), more.end());
    return ParseArguments(all);
}

std::string Refusal(const std::vector<std::string>& all) {
    try {
        ParseArguments(all);
    } catch (const UsageError& error) {
        return error.what();
    }
    return {};
}

std::string RefusalOf(std::vector<std::string> more) {
    more.insert(more.begin(), {"new", "-o", "a.rdl", "--data-source", "a.csv"});
    return Refusal(more);
}

TEST(NewReportArguments, TakeEveryOption) {
    const ReportArguments arguments =
        Parse({"--query", "select 1", "--columns", "a,b",        "--columns", "c",       "--group",
               "d",       "--sum",    "e",         "--layout",   "blocked",   "--chart", "pie",
               "--theme", "ember",    "--title",   "T",          "--page",    "letter",  "--landscape",
               "--force", "--user",   "ann",       "--password", "secret"});
    const designer::NewReport& report = arguments.newReport.report;
    EXPECT_EQ(arguments.command, Command::New);
    EXPECT_EQ(arguments.output, "a.rdl");
    EXPECT_EQ(arguments.user, "ann");
    EXPECT_EQ(arguments.password, "secret");
    EXPECT_TRUE(arguments.newReport.force);
    EXPECT_EQ(report.query, "select 1");
    EXPECT_THAT(report.shown, ElementsAre("a,b", "c"));
    EXPECT_THAT(report.groups, ElementsAre("d"));
    EXPECT_THAT(report.sums, ElementsAre("e"));
    EXPECT_EQ(report.layout, designer::ReportLayout::Blocked);
    EXPECT_EQ(report.chart, designer::ReportChart::Pie);
    EXPECT_EQ(report.theme, "ember");
    EXPECT_EQ(report.title, "T");
    EXPECT_EQ(report.paper, designer::ReportPaper::Letter);
    EXPECT_TRUE(report.landscape);
    const ReportArguments matrix =
        Parse({"--layout", "matrix", "--rows", "a", "--cols", "b", "--values", "c"});
    EXPECT_THAT(matrix.newReport.report.rows, ElementsAre("a"));
    EXPECT_THAT(matrix.newReport.report.across, ElementsAre("b"));
    EXPECT_THAT(matrix.newReport.report.values, ElementsAre("c"));
    EXPECT_FALSE(matrix.newReport.force);
}

TEST(NewReportArguments, TakeADataSourceInEachForm) {
    struct Case {
        std::string text, name, provider, connectString;
    };
    const std::vector<Case> cases = {
        {"sales.csv", "", "", "sales.csv"},
        {"/srv/a=b;c.db", "", "", "/srv/a=b;c.db"},
        {"Z:\\srv\\sales.db", "", "", "Z:\\srv\\sales.db"},
        {"./odd:name.csv", "", "", "./odd:name.csv"},
        {"sqlite:northwind.db", "", "sqlite", "northwind.db"},
        {"postgresql:Host=db;Database=sales", "", "postgresql", "Host=db;Database=sales"},
        {"Sales=SQLITE;Data Source=/srv/sales.db", "Sales", "SQLITE", "Data Source=/srv/sales.db"},
        {"db=Microsoft SQL Server;Data Source=tcp:x,1433", "db", "Microsoft SQL Server",
         "Data Source=tcp:x,1433"},
    };
    for (const Case& one : cases) {
        const NewReportArguments made =
            ParseArguments({"new", "-o", "a.rdl", "--data-source", one.text}).newReport;
        EXPECT_EQ(made.sourceName, one.name) << one.text;
        EXPECT_EQ(made.provider, one.provider) << one.text;
        EXPECT_EQ(made.connectString, one.connectString) << one.text;
    }
}

TEST(NewReportArguments, UnknownWordsNameAllOthers) {
    EXPECT_EQ(RefusalOf({"--layout", "grid"}),
              "\"grid\" is no layout: table, blocked, matrix, labels or letter");
    EXPECT_EQ(RefusalOf({"--chart", "none"}), "\"none\" is no chart: column, bar, line or pie");
    EXPECT_EQ(RefusalOf({"--theme", "neon"}), "\"neon\" is no theme: plain, ocean, forest, slate or ember");
    EXPECT_EQ(RefusalOf({"--page", "a5"}), "\"a5\" is no paper: a4 or letter");
    EXPECT_EQ(RefusalOf({"-f"}), "new has no option \"-f\"");
    EXPECT_EQ(RefusalOf({"b.rdl"}), "new takes no file: \"b.rdl\"");
    EXPECT_EQ(RefusalOf({"--title"}), "--title needs a value");
    EXPECT_EQ(RefusalOf({"--group", ""}), "--group needs a name");
}

TEST(NewReportArguments, HelpAfterACommandIsHelp) {
    for (const char* command : {"new", "export", "info"}) {
        EXPECT_EQ(ParseArguments({command, "--help"}).command, Command::Help) << command;
        EXPECT_EQ(ParseArguments({command, "-h"}).command, Command::Help) << command;
    }
}

TEST(NewReportArguments, WhatIsMissingIsNamed) {
    EXPECT_EQ(Refusal({"new", "--data-source", "a.csv"}), "no output file is given (-o)");
    EXPECT_EQ(Refusal({"new", "-o", "a.rdl"}), "no data source is given (--data-source)");
    EXPECT_EQ(Refusal({"new", "-o", "a.rdl", "--data-source", "sqlite:"}),
              "--data-source needs a file, PROVIDER:CONNECT STRING or NAME=PROVIDER;CONNECT STRING");
    EXPECT_EQ(RefusalOf({"--data-source", "b.csv"}), "there is more than one --data-source");
    EXPECT_EQ(RefusalOf({"--password", "x"}), "a password without --user");
}

TEST(NewReportArguments, OptionsThatTheLayoutIgnoresAreRefused) {
    EXPECT_EQ(RefusalOf({"--layout", "matrix", "--rows", "a"}), "a matrix needs --rows, --cols and --values");
    EXPECT_EQ(RefusalOf({"--rows", "a"}), "--rows, --cols and --values are options of --layout matrix");
    EXPECT_EQ(RefusalOf({"--layout", "matrix", "--rows", "a", "--cols", "b", "--values", "c", "--sum", "d"}),
              "a matrix has no --columns, --group and --sum");
    EXPECT_EQ(RefusalOf({"--layout", "labels", "--group", "a"}), "labels have no --group and --sum");
    EXPECT_EQ(RefusalOf({"--layout", "labels", "--landscape"}), "labels have no --landscape");
    EXPECT_EQ(RefusalOf({"--layout", "letter", "--sum", "a"}), "letters with a --sum need a --group");
    EXPECT_EQ(RefusalOf({"--layout", "letter", "--chart", "pie"}), "labels and letters have no --chart");
}

}  // namespace
}  // namespace tools
