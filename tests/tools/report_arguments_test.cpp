// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/report_arguments.h"

#include <gmock/gmock.h>

#include <fstream>
#include <sstream>

#include "platform/contracts/export_formats.h"
#include "support/source_dir.h"

namespace tools {
namespace {

using testing::HasSubstr;

TEST(ReportArguments, ExportTakesEveryOption) {
    const ReportArguments arguments = ParseArguments({"export",
                                                      "a.rpt",
                                                      "-f",
                                                      "xls",
                                                      "-o",
                                                      "out.xls",
                                                      "-p",
                                                      "Year=2025",
                                                      "-p",
                                                      "Filter=a=b",
                                                      "--formula",
                                                      "{a} > 1",
                                                      "--user",
                                                      "ann",
                                                      "--password",
                                                      "",
                                                      "--data-source",
                                                      "db=SQLITE;Data Source=/x.db;Mode=ro",
                                                      "--rows",
                                                      "Orders=o.csv"});
    EXPECT_EQ(arguments.command, Command::Export);
    EXPECT_EQ(arguments.file, "a.rpt");
    EXPECT_EQ(arguments.format, report::CodeOf(report::DocumentFormat::Excel));
    EXPECT_EQ(arguments.output, "out.xls");
    ASSERT_EQ(arguments.parameters.size(), 2u);
    EXPECT_EQ(arguments.parameters[1], (std::pair<std::string, std::string>{"Filter", "a=b"}));
    EXPECT_TRUE(arguments.hasFormula);
    EXPECT_EQ(arguments.user, "ann");
    ASSERT_EQ(arguments.dataSources.size(), 1u);
    EXPECT_EQ(arguments.rows, (std::vector<std::pair<std::string, std::string>>{{"Orders", "o.csv"}}));
    EXPECT_EQ(arguments.dataSources[0].provider, "SQLITE");
    EXPECT_EQ(arguments.dataSources[0].connectString, "Data Source=/x.db;Mode=ro");
}

TEST(ReportArguments, PasswordComesFromTheArgumentTheInputOrTheEnvironment) {
    const auto sourceOf = [](const std::vector<std::string>& options) {
        std::vector<std::string> arguments{"export", "a.rpt", "-f", "pdf", "-o", "x", "--user", "ann"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        return ParseArguments(arguments).passwordSource;
    };
    EXPECT_EQ(sourceOf({"--password", "p"}), PasswordSource::Argument);
    EXPECT_EQ(sourceOf({"--password-stdin"}), PasswordSource::StandardInput);
    EXPECT_EQ(sourceOf({}), PasswordSource::Environment);
}

TEST(ReportArguments, InfoTellsFontsIfItIsAsked) {
    EXPECT_TRUE(ParseArguments({"info", "--fonts", "a.rpt"}).withFonts);
    EXPECT_FALSE(ParseArguments({"info", "a.rpt"}).withFonts);
    EXPECT_THROW(ParseArguments({"export", "a.rpt", "-f", "pdf", "-o", "x", "--fonts"}), UsageError);
}

TEST(ReportArguments, InfoTellsProblemsIfItIsAsked) {
    const ReportArguments both = ParseArguments({"info", "--problems", "--fonts", "a.rpt"});
    EXPECT_TRUE(both.withProblems && both.withFonts);
    EXPECT_FALSE(ParseArguments({"info", "--fonts", "a.rpt"}).withProblems);
    EXPECT_THROW(ParseArguments({"export", "a.rpt", "-f", "pdf", "-o", "x", "--problems"}), UsageError);
}

TEST(ReportArguments, CsvHasOptionsOfItsOwn) {
    const ReportArguments arguments =
        ParseArguments({"export", "a.rpt", "-f", "csv", "-o", "x", "--unformatted", "--data-set", "Orders"});
    EXPECT_TRUE(arguments.options.unformatted);
    EXPECT_EQ(arguments.options.dataSet, "Orders");
}

TEST(ReportArguments, PdfHasOptionsOfItsOwn) {
    const ReportArguments plain = ParseArguments({"export", "a.rpt", "-f", "pdf", "-o", "x"});
    EXPECT_FALSE(plain.options.forArchive);
    EXPECT_FALSE(plain.options.tagged);
    EXPECT_TRUE(ParseArguments({"export", "a.rpt", "-f", "pdf", "-o", "x", "--pdf-a"}).options.forArchive);
    EXPECT_TRUE(ParseArguments({"export", "a.rpt", "-f", "pdf", "-o", "x", "--tagged"}).options.tagged);
}

TEST(ReportArguments, PngHasOptionsOfItsOwn) {
    const ReportArguments arguments =
        ParseArguments({"export", "a.rpt", "-f", "png", "-o", "x", "--page", "3", "--dpi", "300"});
    EXPECT_EQ(arguments.options.page, 3);
    EXPECT_EQ(arguments.options.dotsPerInch, 300);
}

TEST(ReportArguments, FileMayBeginWithAHyphenAfterTwo) {
    EXPECT_EQ(ParseArguments({"info", "--", "-f"}).file, "-f");
}

TEST(ReportArguments, WhatMakesNoSenseIsAUsageError) {
    const std::vector<std::vector<std::string>> wrong = {
        {},
        {"print", "a.rpt"},
        {"info"},
        {"info", "a.rpt", "b.rpt"},
        {"info", "a.rpt", "-f", "pdf"},
        {"export", "a.rpt", "-f", "pdf"},
        {"export", "a.rpt", "-o", "x"},
        {"export", "-f", "pdf", "-o", "x"},
        {"export", "a.rpt", "-f", "odt", "-o", "x"},
        {"export", "a.rpt", "-f", "pdf", "-o"},
        {"export", "a.rpt", "-f", "pdf", "-o", "x", "-p", "novalue"},
        {"export", "a.rpt", "-f", "pdf", "-o", "x", "--rows", "D="},
        {"export", "a.rpt", "-f", "pdf", "-o", "x", "--rows", "D=a.csv", "--rows", "d=b.csv"},
        {"export", "a.rpt", "-f", "pdf", "-o", "x", "--password", "p"},
        {"export", "a.rpt", "-f", "pdf", "-o", "x", "--password-stdin"},
        {"export", "a.rpt", "-f", "pdf", "-o", "x", "--user", "ann", "--password", "p", "--password-stdin"},
        {"export", "a.rpt", "-f", "pdf", "-o", "x", "--data-source", "db=SQLITE"},
        {"export", "a.rpt", "-f", "pdf", "-o", "x", "--colour"},
        {"export", "a.rpt", "-f", "pdf", "-o", "x", "--unformatted"},
        {"export", "a.rpt", "-f", "pdf", "-o", "x", "--data-set", "Orders"},
        {"export", "a.rpt", "-f", "csv", "-o", "x", "--data-set", ""},
        {"export", "a.rpt", "-f", "pdf", "-o", "x", "--page", "1"},
        {"export", "a.rpt", "-f", "xls", "-o", "x", "--pdf-a"},
        {"export", "a.rpt", "-f", "html", "-o", "x", "--tagged"},
        {"export", "a.rpt", "-f", "png", "-o", "x", "--page", "0"},
        {"export", "a.rpt", "-f", "png", "-o", "x", "--dpi", "9999"},
        {"export", "a.rpt", "-f", "png", "-o", "x", "--page", "1x"},
    };
    for (const std::vector<std::string>& arguments : wrong) {
        EXPECT_THROW(ParseArguments(arguments), UsageError) << testing::PrintToString(arguments);
    }
}

TEST(ReportArguments, EveryFormatIsTakenAndListed) {
    std::string list;
    for (const report::FormatRow& row : report::FormatTable) {
        const std::string word(row.word);
        EXPECT_EQ(ParseArguments({"export", "a.rpt", "-f", word, "-o", "x"}).format, row.Code());
        list += (list.empty() ? "" : "|") + word;
    }
    EXPECT_THAT(Usage(), HasSubstr(" -f " + list + " -o OUT"));
}

TEST(ReportArguments, UnknownFormatNamesAllOthers) {
    try {
        ParseArguments({"export", "a.rpt", "-f", "PDF", "-o", "x"});
        FAIL() << "no error";
    } catch (const UsageError& error) {
        EXPECT_STREQ(error.what(), "\"PDF\" is no format: pdf, rtf, xls, html, doc, docx, csv, xlsx or png");
    }
}

// The guide shows the usage as it is, and nothing else as usage.
TEST(ReportArguments, GuideShowsTheUsage) {
    std::ostringstream guide;
    guide << std::ifstream(SourceDir() + "/docs/report-files.md").rdbuf();
    const std::string usage = Usage();
    const std::string synopsis = usage.substr(0, usage.find("The password"));
    EXPECT_THAT(guide.str(), HasSubstr("```\n" + synopsis + "```\n"));
}

}  // namespace
}  // namespace tools
