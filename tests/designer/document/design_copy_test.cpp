// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/document/design_copy.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>

#include "designer/document/all_reports.h"
#include "designer/document/placeholder_text.h"
#include "rdl/api/report.h"
#include "support/temporary_folder.h"

namespace designer {
namespace {

std::unique_ptr<rdl::Pages> PagesOf(const DesignCopy& copy, const TemporaryFolder& folder) {
    const std::filesystem::path file = folder / "design.rdl";
    WriteBytes(file, copy.text);
    std::unique_ptr<rdl::Pages> pages = rdl::OpenReport(file)->OpenPages();
    while (!pages->AllMade()) {
        pages->Reach(pages->Made() + 1);
    }
    return pages;
}

// The texts of a page, a line feed after each line.
std::string TextsOf(rdl::Pages& pages, int page) {
    std::string texts;
    for (const rdl::PageCharacter& character : pages.Characters(page)) {
        texts += character.text;
        texts += character.endsLine ? "\n" : "";
    }
    return texts;
}

std::string Shown(const std::string& report) {
    const TemporaryFolder folder;
    const Document document(report);
    const std::unique_ptr<rdl::Pages> pages = PagesOf(MakeDesignCopy(document), folder);
    EXPECT_EQ(pages->Made(), 1);
    return TextsOf(*pages, 1);
}

TEST(PlaceholderText, StandsForValues) {
    EXPECT_EQ(PlaceholderOf("=Fields!Customer.Value"), "[Customer]");
    EXPECT_EQ(PlaceholderOf(" = fields!Customer . value "), "«Expr»");
    EXPECT_EQ(PlaceholderOf(" = fields!Customer.value "), "[Customer]");
    EXPECT_EQ(PlaceholderOf("=Sum(Fields!Amount.Value)"), "[Sum(Amount)]");
    EXPECT_EQ(PlaceholderOf("=Sum( Fields!Amount.Value , \"Group1\" )"), "[Sum(Amount)]");
    EXPECT_EQ(PlaceholderOf("=CountRows()"), "[CountRows()]");
    EXPECT_EQ(PlaceholderOf("=Parameters!P.Value"), "[@P]");
    EXPECT_EQ(PlaceholderOf("=Parameters!P.Label"), "[@P]");
    EXPECT_EQ(PlaceholderOf("=Globals!PageNumber"), "[&PageNumber]");
    EXPECT_EQ(PlaceholderOf("=User!UserID"), "[&UserID]");
    EXPECT_EQ(PlaceholderOf("=Fields!A.Value + 1"), "«Expr»");
    EXPECT_EQ(PlaceholderOf("=Sum(Fields!A.Value * 2)"), "«Expr»");
    EXPECT_EQ(PlaceholderOf("="), "«Expr»");
    EXPECT_EQ(PlaceholderOf("=Fields!.Value"), "«Expr»");
    EXPECT_EQ(PlaceholderOf("Page {@PageNumber} of {?Year}, {x} {?1}"),
              "Page [&PageNumber] of [@Year], {x} {?1}");
    EXPECT_EQ(PlaceholderOf("{?open"), "{?open");
}

TEST(DesignCopy, ShowsPlaceholdersAndWhatIsHidden) {
    EXPECT_EQ(
        Shown(
            "<Report><Width>4in</Width><Body><Height>1in</Height><ReportItems>"
            "<Textbox Name='A'><Height>14pt</Height><Value>=Fields!Customer.Value</Value>"
            "<Visibility><Hidden>true</Hidden></Visibility><CanGrow>true</CanGrow></Textbox>"
            "<Textbox Name='B'><Top>20pt</Top><Height>14pt</Height><Value>=1 / 0</Value><Style>"
            "<Color>=Fields!Nothing.Value</Color></Style></Textbox>"
            "<Subreport "
            "Name='S'><Top>40pt</Top><Height>14pt</Height><ReportName>detail</ReportName></Subreport>"
            "<Image Name='I'><Top>55pt</Top><Height>14pt</Height><Source>Database</Source>"
            "<Value>=Fields!Photo.Value</Value></Image></ReportItems></Body>"
            "<Code>broken(</Code><ReportParameters><ReportParameter Name='1'/></ReportParameters></Report>"),
        "[Customer]\n«Expr»\nSubreport: detail\nImage: [Photo]\n");
}

TEST(DesignCopy, PutsTheBandsBelowEachOther) {
    const Document document(
        "<Report xmlns='http://schemas.microsoft.com/sqlserver/reporting/2008/01/reportdefinition'>"
        "<Width>300pt</Width><Body><Height>50pt</Height><ReportItems><Textbox "
        "Name='A'><Left>250pt</Left><Top>40pt</Top>"
        "<Width>100pt</Width><Height>40pt</Height><Value>x</Value></Textbox></ReportItems></Body><Page>"
        "<PageFooter><Height>20pt</Height><ReportItems><Textbox "
        "Name='F'><Value>=Globals!PageNumber</Value></Textbox>"
        "</ReportItems></PageFooter><PageHeader><Height>30pt</Height><PrintOnFirstPage>false</"
        "PrintOnFirstPage>"
        "<ReportItems><Textbox Name='H'><Value>head</Value></Textbox></ReportItems></PageHeader>"
        "<LeftMargin>1in</LeftMargin><PageWidth>100pt</PageWidth></Page></Report>");
    const DesignCopy copy = MakeDesignCopy(document);
    ASSERT_EQ(copy.bands.size(), 3u);
    const auto place = [&copy](std::size_t band) {
        const Rect& at = copy.bands[band].place;
        return std::vector<double>{at.left, at.top, at.width, at.height};
    };
    EXPECT_THAT(place(0), testing::ElementsAre(0, 0, 351, 30));
    EXPECT_THAT(place(1), testing::ElementsAre(0, 30, 351, 80));
    EXPECT_THAT(place(2), testing::ElementsAre(0, 111, 351, 20));
    const TemporaryFolder folder;
    const auto pages = PagesOf(copy, folder);
    EXPECT_EQ(pages->Width(1), 351);
    EXPECT_EQ(pages->Height(1), 131);
    EXPECT_EQ(TextsOf(*pages, 1), "head\nx\n[&PageNumber]\n");
}

TEST(DesignCopy, GivesEachSectionItsPage) {
    const auto section = [](const std::string& text, const std::string& width) {
        return "<ReportSection><Body><Height>50pt</Height><ReportItems><Textbox Name='" + text + "'><Value>" +
               text + "</Value></Textbox></ReportItems></Body><Width>" + width + "</Width></ReportSection>";
    };
    const Document document("<Report><ReportSections>" + section("one", "100pt") + section("two", "200pt") +
                            "</ReportSections></Report>");
    const DesignCopy copy = MakeDesignCopy(document);
    const TemporaryFolder folder;
    const auto pages = PagesOf(copy, folder);
    ASSERT_EQ(pages->Made(), 2);
    EXPECT_EQ(copy.bands[1].page, 2);
    EXPECT_EQ(TextsOf(*pages, 1), "one\n");
    EXPECT_EQ(TextsOf(*pages, 2), "two\n");
}

TEST(DesignCopy, ShowsAnItemAsABoxOnRequest) {
    Document document(
        "<Report><Body><Height>1in</Height><ReportItems><Chart "
        "Name='Sales'><Width>2in</Width><Type>Nonsense</Type>"
        "<ChartData><ChartSeries><DataPoints><DataPoint/></DataPoints></ChartSeries></ChartData></Chart>"
        "<Textbox Name='Sale'/></ReportItems></Body></Report>");
    const TemporaryFolder folder;
    std::string message;
    try {
        PagesOf(MakeDesignCopy(document), folder);
    } catch (const std::exception& error) {
        message = error.what();
    }
    EXPECT_EQ(message, "design.rdl, line 1: Chart Sales: a chart of the type Nonsense cannot be drawn");
    const ElementId chart = document.Find(document.Root(), "Body/ReportItems/Chart");
    EXPECT_EQ(ItemNamedIn(document, message), chart);
    EXPECT_EQ(ItemNamedIn(document, "Textbox Sales: no"), NoElement);
    DesignOptions options;
    options.boxes.insert(chart);
    EXPECT_EQ(TextsOf(*PagesOf(MakeDesignCopy(document, options), folder), 1), "Chart: Sales\n");
}

// Whether the character touches the item. A text that is longer than its box goes on below it, or beside it
// if it is vertical, where it is not drawn.
bool Touches(const Rect& place, const rdl::Area& character, bool isVertical) {
    if (isVertical) {
        return character.y + character.height >= place.top && character.y <= place.Bottom();
    }
    constexpr double Near = 1;
    return character.x + character.width >= place.left - Near && character.x <= place.Right() + Near &&
           character.y + character.height >= place.top - Near;
}

// What the text boxes show, one after the other; a box that is too low for a line shows nothing.
std::string MissingTexts(const Document& document, const DesignCopy& copy, rdl::Pages& pages) {
    const ReportItems items = ReadReportItems(document);
    std::string missing;
    for (const ReportItem& item : items.items) {
        const DesignBand& band = copy.bands[item.band];
        std::string text = document.TextAt(item.id, "Value").value_or("");
        text += document.TextAt(item.id, "Paragraphs/Paragraph/TextRuns/TextRun/Value").value_or("");
        const bool isShown = item.kind == "Textbox" &&
                             text.find_first_not_of(" \t\r\n") != std::string::npos && item.place.width > 0 &&
                             item.place.height > 0;
        const std::vector<rdl::PageCharacter> characters = pages.Characters(band.page);
        const bool isThere =
            std::any_of(characters.begin(), characters.end(), [&](const rdl::PageCharacter& at) {
                const double x = at.area.x + at.area.width / 2 - band.place.left;
                const double y = at.area.y - band.place.top;
                return x >= item.place.left && x <= item.place.Right() && y >= item.place.top - 1 &&
                       y <= item.place.Bottom() + 1;
            });
        missing += isShown && !isThere ? item.name + "\n" : "";
    }
    return missing;
}

std::string PlaceProblems(const Document& document, const DesignCopy& copy, rdl::Pages& pages) {
    const ReportItems items = ReadReportItems(document);
    std::string problems;
    for (int page = 1; page <= pages.Made(); ++page) {
        for (const rdl::PageCharacter& character : pages.Characters(page)) {
            const bool isWithin =
                std::any_of(items.items.begin(), items.items.end(), [&](const ReportItem& item) {
                    const DesignBand& band = copy.bands[item.band];
                    Rect place = item.place;
                    place.left += band.place.left;
                    place.top += band.place.top;
                    return band.page == page && item.kind != "Tablix" && item.kind != "Table" &&
                           item.kind != "Rectangle" &&
                           Touches(place, character.area,
                                   document.Find(item.id, "Style/WritingMode") != NoElement);
                });
            problems += isWithin ? "" : character.text;
        }
    }
    return problems;
}

TEST(DesignCopy, OfEveryReportIsLaidOutWhereItsItemsAre) {
    int count = 0;
    for (const std::filesystem::path& file : AllReports()) {
        SCOPED_TRACE(file.string());
        const std::string bytes = ReadBytes(file);
        const Document document(bytes);
        const DesignCopy copy = MakeDesignCopy(document);
        const TemporaryFolder folder;
        try {
            const std::unique_ptr<rdl::Pages> pages = PagesOf(copy, folder);
            const int sections = copy.bands.empty() ? 1 : copy.bands.back().page;
            EXPECT_EQ(pages->Made(), sections);
            EXPECT_EQ(PlaceProblems(document, copy, *pages), "");
            EXPECT_EQ(MissingTexts(document, copy, *pages), "");
            ++count;
        } catch (const std::exception& error) {
            ADD_FAILURE() << error.what() << "\n" << copy.text.substr(0, 3000);
        }
    }
    EXPECT_GE(count, 60);
}

}  // namespace
}  // namespace designer
