// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/model/report_body.h"

#include <gtest/gtest.h>

namespace designer::test {
namespace {

std::string InSections(const std::string& sections, const std::string& year = "2016") {
    return "<Report xmlns=\"http://schemas.microsoft.com/sqlserver/reporting/" + year +
           "/01/reportdefinition\"><ReportSections>" + sections + "</ReportSections></Report>";
}

// The kinds of the bands by their sections, those that are not there in brackets, with the band of each item.
std::string Bands(const Document& document) {
    ReportItems items = ReadReportItems(document);
    AddMissingBodies(document, items);
    std::string text;
    for (const ReportBand& band : items.bands) {
        const std::string kind = band.kind == BandKind::Body         ? "B"
                                 : band.kind == BandKind::PageHeader ? "H"
                                                                     : "F";
        text += (band.element == NoElement ? "(" + kind + ")" : kind) + std::to_string(band.section) + " ";
    }
    for (const ReportItem& item : items.items) {
        text += item.name + std::to_string(item.band) + " ";
    }
    return text;
}

constexpr const char* Page =
    "<Page><PageHeader><Height>1cm</Height><ReportItems><Rectangle Name=\"h\"/></ReportItems></PageHeader>"
    "<PageFooter><Height>1cm</Height><ReportItems><Rectangle Name=\"f\"/></ReportItems></PageFooter></Page>";

TEST(MissingBodies, StandBetweenHeaderAndFooter) {
    const std::string page = Page;
    EXPECT_EQ(Bands(Document(InSections("<ReportSection>" + page + "</ReportSection>"))),
              "H0 (B)0 F0 h0 f2 ");
    EXPECT_EQ(Bands(Document(InSections("<ReportSection>" + page +
                                        "</ReportSection><ReportSection><Body>"
                                        "<Height>1cm</Height></Body></ReportSection><ReportSection/>"))),
              "H0 (B)0 F0 B1 (B)2 h0 f2 ");
    EXPECT_EQ(Bands(Document(InSections(""))), "(B)0 ");
}

TEST(MissingBodies, AreCompletedInTheirSection) {
    Document document(
        InSections("<ReportSection><Body><Height>1cm</Height></Body><Width>5cm</Width><Page/>"
                   "</ReportSection><ReportSection/>"));
    ReportItems items = ReadReportItems(document);
    AddMissingBodies(document, items);
    ASSERT_EQ(items.bands.size(), 2u);
    const ReportBand there = CompleteBand(document, items.bands[0]);
    EXPECT_EQ(there.element, items.bands[0].element);
    EXPECT_EQ(document.UndoCount(), 0u);
    const ReportBand made = CompleteBand(document, items.bands[1]);
    EXPECT_NE(made.element, NoElement);
    EXPECT_EQ(document.Parent(made.element), SectionsOf(document)[1]);
}

// A hostile file: as many steps as there are sections, not their square.
TEST(MissingBodies, OfManySectionsAreFoundAtOnce) {
    std::string sections;
    for (int count = 0; count < 100'000; ++count) {
        sections += "<ReportSection/>";
    }
    const Document document(InSections(sections));
    ReportItems items = ReadReportItems(document);
    AddMissingBodies(document, items);
    EXPECT_EQ(items.bands.size(), 100'000u);
}

}  // namespace
}  // namespace designer::test
