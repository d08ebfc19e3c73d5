// SPDX-License-Identifier: GPL-3.0-or-later
// Paper, sections, headers and footers of RTF.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "rdl/writers/rtf_kit.h"
#include "rdl/writers/sample_report.h"

namespace rdl::writers {
namespace {

using namespace test;
using layout::Instance;
using testing::Contains;
using testing::HasSubstr;
using testing::Not;

TEST(Rtf, ASectionWithoutHeaderHasNotTheOneBefore) {
    auto report = SampleReport({TextItem("first")}, {TextItem("Head")});
    const auto add = [&report](const std::string& text, const std::string& header) {
        auto next = SampleReport({TextItem(text)}, {TextItem(header)});
        next->sections[0]->page.headerHeight = header.empty() ? 0 : 20;
        report->sections.push_back(std::move(next->sections[0]));
    };
    report->sections[0]->page.footerHeight = 20;
    add("second", "");
    add("third", "Other");
    const RtfDocument document = RtfReader::Read(Rtf(report));
    EXPECT_THAT(document.hidden, Contains(std::pair<std::string, std::string>("header", "Head")));
    EXPECT_EQ(document.Count("header"), 3);  // the second one is empty
    EXPECT_EQ(document.Count("footer"), 2);  // the third section has the second one's, which is empty
    EXPECT_EQ(document.Count("headerf"), 0);
}

// A body 500 points wide and 100 high.
TEST(Rtf, ABodysFillIsThatOfItsCellsAndGaps) {
    auto report = SampleReport({TextItem("a"), TextItem("below", 0, 40)});
    auto style = std::make_shared<layout::BoxStyle>();
    style->background = 0xFF000080;
    report->sections.front()->bodyStyle = style;
    const std::string rtf = Rtf(report);
    EXPECT_EQ(Count(rtf, "\\clcbpat"), 4U);  // a cell and the rest of its row, twice
    EXPECT_EQ(Count(rtf, "\\cbpat"), 2U);    // between the items and below them
    EXPECT_EQ(Count(rtf, "\\red0\\green0\\blue128"), 1U);
    EXPECT_EQ(Count(Rtf(SampleReport({TextItem("a")})), "cbpat"), 0U);
}

TEST(Rtf, ATitlePageWithoutHeaderHasNotTheOneBefore) {
    auto report = SampleReport({TextItem("first")}, {TextItem("Head")});
    auto next = SampleReport({TextItem("second")}, {TextItem("Head")});
    report->sections[0]->page.footerHeight = next->sections[0]->page.footerHeight = 20;
    report->sections[0]->page.footerOnFirst = false;  // its first page has a header of its own
    next->sections[0]->page.headerOnFirst = false;
    report->sections.push_back(std::move(next->sections[0]));
    const RtfDocument document = RtfReader::Read(Rtf(report));
    EXPECT_EQ(document.Count("headerf"), 2);
    EXPECT_EQ(document.Count("footerf"), 1);
}

TEST(Rtf, PageMarksAreFieldsOfTheHeader) {
    const std::string rtf = Rtf(SampleReport({TextItem("body")}, {TextItem("Page \uE000 of \uE001")}));
    EXPECT_THAT(
        rtf, HasSubstr("Page {\\field{\\*\\fldinst PAGE}{\\fldrslt 1}} of {\\field{\\*\\fldinst NUMPAGES}"));
    EXPECT_THAT(rtf, HasSubstr("{\\header "));
    EXPECT_THAT(rtf, Not(HasSubstr("\\u-8192")));
}

TEST(Rtf, PageSetupIsInTwips) {
    const auto report = SampleReport({TextItem("body")}, {TextItem("head")});
    layout::PageSetup& page = report->sections[0]->page;
    page.width = 842;
    page.height = 595;
    page.marginLeft = 36;
    page.marginTop = 30;
    page.headerOnFirst = false;
    const RtfDocument document = RtfReader::Read(Rtf(report));
    for (const char* word : {"pgwsxn16840", "pghsxn11900", "marglsxn720", "margtsxn1000", "headery600",
                             "lndscpsxn", "titlepg"}) {
        EXPECT_EQ(document.Count(word), 1) << word;
    }
    EXPECT_EQ(document.Count("headerf"), 0);  // the first page has none
}

TEST(Rtf, PagesDoNotBreakBeforeAnythingIsThere) {
    Instance item = TextItem("first");
    item.breakBefore = true;
    EXPECT_EQ(Document({item}).Count("pagebb"), 0);
    Instance second = TextItem("second", 0, 40);
    second.breakBefore = true;
    EXPECT_EQ(Document({item, second}).Count("pagebb"), 1);
}

}  // namespace
}  // namespace rdl::writers
