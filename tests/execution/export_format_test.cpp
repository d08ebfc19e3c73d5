// SPDX-License-Identifier: GPL-3.0-or-later
#include "execution/ExportFormat.h"

#include <gtest/gtest.h>

#include "platform/base/paths.h"
#include "support/fakes.h"

using Global::PackageOutputFile;
using Global::RecogniseFormat;
using Global::Runner;
using report::DocumentFormat;

TEST(FormatWord, EveryRunnerKnowsTheFourOtherGroups) {
    for (const Runner runner : {Runner::Single, Runner::PackagePoll, Runner::PackageDemand}) {
        EXPECT_EQ(RecogniseFormat(runner, "RTF"), DocumentFormat::Rtf);
        EXPECT_EQ(RecogniseFormat(runner, "Rich Text"), DocumentFormat::Rtf);
        EXPECT_EQ(RecogniseFormat(runner, "Excel"), DocumentFormat::Excel);
        EXPECT_EQ(RecogniseFormat(runner, "MS Excel"), DocumentFormat::Excel);
        EXPECT_EQ(RecogniseFormat(runner, "HTML"), DocumentFormat::Html);
        EXPECT_EQ(RecogniseFormat(runner, "DHTML"), DocumentFormat::Html);
        EXPECT_EQ(RecogniseFormat(runner, "WinWord"), DocumentFormat::Word);
        EXPECT_EQ(RecogniseFormat(runner, "MS Word"), DocumentFormat::Word);
        EXPECT_EQ(RecogniseFormat(runner, "Acrobat"), DocumentFormat::Pdf);
    }
}

TEST(FormatWord, PackagePollKnowsOnlyOneWordForPdf) {
    for (const char* word : {"PDF", "Acrobat Format (PDF)"}) {
        EXPECT_EQ(RecogniseFormat(Runner::Single, word), DocumentFormat::Pdf);
        EXPECT_EQ(RecogniseFormat(Runner::PackageDemand, word), DocumentFormat::Pdf);
        EXPECT_EQ(RecogniseFormat(Runner::PackagePoll, word), std::nullopt);
    }
}

TEST(FormatWord, SmallLettersMatchNothing) {
    for (const Runner runner : {Runner::Single, Runner::PackagePoll, Runner::PackageDemand}) {
        EXPECT_EQ(RecogniseFormat(runner, "acrobat"), std::nullopt);
        EXPECT_EQ(RecogniseFormat(runner, ""), std::nullopt);
        EXPECT_EQ(RecogniseFormat(runner, ".MS Word"), std::nullopt);
    }
}

// Every list offers each format that schedules can have once.
TEST(FormatWord, ListsOfferEachFormatOnce) {
    using Global::FormatList;
    for (const FormatList list :
         {FormatList::Schedules, FormatList::PackageWizard, FormatList::PackageCommands}) {
        std::vector<DocumentFormat> formats;
        for (const Global::OfferedFormat& offered : Global::OfferedFormats(list)) {
            formats.push_back(offered.format);
        }
        EXPECT_EQ(formats, (std::vector{DocumentFormat::Pdf, DocumentFormat::Html, DocumentFormat::Excel,
                                        DocumentFormat::Word, DocumentFormat::Rtf}));
    }
}

// Returns the words of the list that the runner does not know.
std::vector<std::string> Unknown(Runner runner, Global::FormatList list) {
    std::vector<std::string> words;
    for (const Global::OfferedFormat& offered : Global::OfferedFormats(list)) {
        if (RecogniseFormat(runner, std::string(offered.word)) != offered.format) {
            words.emplace_back(offered.word);
        }
    }
    return words;
}

TEST(FormatWord, RunnersKnowTheWordsThatAreOffered) {
    using Global::FormatList;
    const std::vector<std::string> none, wordOfWizard = {"Acrobat Format (PDF)"};
    EXPECT_EQ(Unknown(Runner::Single, FormatList::Schedules), none);
    EXPECT_EQ(Unknown(Runner::PackageDemand, FormatList::PackageWizard), none);
    EXPECT_EQ(Unknown(Runner::PackageDemand, FormatList::PackageCommands), none);
    EXPECT_EQ(Unknown(Runner::PackagePoll, FormatList::PackageCommands), none);
    EXPECT_EQ(Unknown(Runner::PackagePoll, FormatList::PackageWizard), wordOfWizard);  // sic
}

TEST(FormatWord, HasTheEnginesCode) {
    EXPECT_EQ(report::CodeOf(DocumentFormat::Pdf), 31);
    EXPECT_EQ(report::CodeOf(DocumentFormat::Rtf), 35);
    EXPECT_EQ(report::CodeOf(DocumentFormat::Excel), 27);
    EXPECT_EQ(report::CodeOf(DocumentFormat::Html), 32);
    EXPECT_EQ(report::CodeOf(DocumentFormat::Word), 14);
}

TEST(HtmlOutput, IsNamedByTitleWithoutBlanksAndTheHours) {
    SetAppPath("Z:\\opt\\courier");
    const fakes::FakeClock clock(fakes::At(2002, 1, 2, 3, 59, 59));
    EXPECT_EQ(Global::HtmlOutputFile(" Sales by Region "), "Z:\\opt\\courier\\output\\SalesbyRegion27.htm");
    SetAppPath({});
}

TEST(HtmlOutput, ChangesAtTheHour) {
    fakes::FakeClock clock(fakes::At(2026, 11, 21, 9, 59, 59));
    const std::string before = Global::HtmlOutputFile("a");
    clock.now = fakes::At(2026, 11, 21, 9, 0, 0);
    EXPECT_EQ(Global::HtmlOutputFile("a"), before);
    clock.now = fakes::At(2026, 11, 21, 10, 0, 0);
    EXPECT_NE(Global::HtmlOutputFile("a"), before);
}

TEST(HtmlOutput, OfAnEmptyTitleIsTheCountAlone) {
    SetAppPath("Z:\\c");
    const fakes::FakeClock clock(fakes::At(2002, 1, 1, 5));
    EXPECT_EQ(Global::HtmlOutputFile(""), "Z:\\c\\output\\5.htm");
    SetAppPath({});
}

// Returns the machine's path of the output, or number and description of an error.
std::string OutputOf(const std::string& title) {
    try {
        return paths::ToMachine(Global::HtmlOutputFile(title)).lexically_normal().string();
    } catch (const RuntimeError& error) {
        return std::to_string(error.Number()) + ": " + error.Description();
    }
}

TEST(HtmlOutput, NeverLeavesItsFolder) {
    SetAppPath("Z:\\c");
    const fakes::FakeClock clock(fakes::At(2002, 1, 1, 5));
    const auto refused = [](const std::string& name) {
        return "76: Path not found: \"" + name + "\" is not a file name";
    };
    EXPECT_EQ(OutputOf("../evil"), refused("../evil5.htm"));
    EXPECT_EQ(OutputOf("..\\..\\evil"), refused("..\\..\\evil5.htm"));
    EXPECT_EQ(OutputOf(". ./evil"), refused("../evil5.htm"));
    EXPECT_EQ(OutputOf(". ./. ./evil"), refused("../../evil5.htm"));
    EXPECT_EQ(OutputOf(" . .\\evil"), refused("..\\evil5.htm"));
    EXPECT_EQ(OutputOf("a/. . /b"), refused("a/../b5.htm"));
    EXPECT_EQ(OutputOf("/etc/evil"), refused("/etc/evil5.htm"));
    EXPECT_EQ(OutputOf("Z :\\evil"), refused("Z:\\evil5.htm"));
    EXPECT_EQ(OutputOf("evil\n"), refused("evil?5.htm"));
    EXPECT_EQ(OutputOf(std::string("evil\0/../x", 10)), refused("evil?/../x5.htm"));
    EXPECT_EQ(OutputOf("a.. b"), "/c/output/a..b5.htm");
    EXPECT_EQ(OutputOf(". . ."), "/c/output/...5.htm");
    EXPECT_EQ(OutputOf("A: all of it"), "/c/output/A:allofit5.htm");
    SetAppPath({});
}

TEST(HtmlOutput, LongTitlesAreRefusedByTheirName) {
    SetAppPath("Z:\\c");
    const fakes::FakeClock clock(fakes::At(2002, 1, 1, 5));
    EXPECT_EQ(OutputOf(std::string(250, 'a')), "/c/output/" + std::string(250, 'a') + "5.htm");
    EXPECT_EQ(OutputOf(std::string(251, 'a')),
              "76: Path not found: \"" + std::string(80, 'a') + "...\" is not a file name");
    SetAppPath({});
}

TEST(PackageOutput, IsNamedByKind) {
    const std::string title = "3>sales 2.rpt";
    EXPECT_EQ(PackageOutputFile(DocumentFormat::Pdf, "D\\", title), "D\\sales 2.rpt.pdf");
    EXPECT_EQ(PackageOutputFile(DocumentFormat::Html, "D\\", title), "D\\3sales2.rpt.htm");
    EXPECT_EQ(PackageOutputFile(DocumentFormat::Excel, "D\\", title), "D\\3>sales 2.rpt.xls");
    EXPECT_EQ(PackageOutputFile(DocumentFormat::Word, "D\\", title), "D\\3>sales 2.rpt.doc");
    EXPECT_EQ(PackageOutputFile(DocumentFormat::Rtf, "D\\", title), "D\\3>sales 2.rpt.rtf");
}
