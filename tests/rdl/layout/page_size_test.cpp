// SPDX-License-Identifier: GPL-3.0-or-later
// Pages of all sizes, and bodies larger than they are.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "rdl/layout/report_kit.h"
#include "rdl/raises.h"

namespace rdl::layout {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;

// A GIF of 900 by 800 pixels, which are 675 by 600 points: its head is enough to lay it out.
const std::string Large = "R0lGODlhhAMgAwAAACwAAAAAhAMgAwACADs=";

std::string LargeImage() {
    std::string report = Report(
        "<Image Name=\"I\"><Source>Embedded</Source><Value>large</Value><Sizing>AutoSize</Sizing>"
        "<Top>0pt</Top><Left>0pt</Left><Height>10pt</Height><Width>10pt</Width></Image>");
    report.insert(report.find("<ReportSections>"),
                  "<EmbeddedImages><EmbeddedImage Name=\"large\"><MIMEType>image/gif</MIMEType><ImageData>" +
                      Large + "</ImageData></EmbeddedImage></EmbeddedImages>");
    return report;
}

TEST(LargeItems, AnImageLargerThanThePageGoesOnToTheRightAndDown) {
    const auto sink = PagesOf(BuildKit(LargeImage(), Sales({})));
    // 675 by 600 points on pages of 400 by 300: two across, two down.
    ASSERT_THAT(sink.pages, SizeIs(4));
    std::vector<std::pair<double, double>> places;
    for (const Page& page : sink.pages) {
        ASSERT_THAT(Of<ImageOp>(page), SizeIs(1));
        EXPECT_THAT(Of<ClipOp>(page), testing::Not(SizeIs(0)));
        places.emplace_back(Of<ImageOp>(page)[0].x, Of<ImageOp>(page)[0].y);
    }
    EXPECT_THAT(places,
                ElementsAre(std::pair(0, 0), std::pair(-400, 0), std::pair(0, -300), std::pair(-400, -300)));
}

TEST(LargeItems, ATextWiderThanThePageIsNotLost) {
    const auto sink = PagesOf(
        BuildKit(Report(Box("T", std::string(110, 'w'),
                            "<Top>0pt</Top><Left>0pt</Left><Height>20pt</Height><Width>800pt</Width>")),
                 Sales({})));
    ASSERT_THAT(sink.pages, SizeIs(2));
    EXPECT_THAT(Of<TextOp>(sink.pages[1]), SizeIs(1));
    EXPECT_NEAR(Of<TextOp>(sink.pages[1])[0].x, -400, 0.1);
}

TEST(LargeItems, ABodyWiderThanAThousandPagesIsAnError) {
    std::string report = Report(
        "<Line Name=\"L\"><Top>0pt</Top><Left>0pt</Left><Height>0pt</Height><Width>455in</Width>"
        "<Style><Border><Style>Solid</Style></Border></Style></Line>");
    const auto narrow = [&report](const std::string& from, const std::string& to) {
        report.replace(report.find(from), from.size(), to);
    };
    narrow("<PageWidth>400pt", "<PageWidth>20pt");
    const auto kit = BuildKit(report, Sales({}));
    TextSink sink;
    EXPECT_EQ(ErrorRaisedBy([&] { Paginate(*kit.report, sink); }), "The report is wider than 1000 pages");
}

TEST(PageSize, NothingLeftByHeaderAndFooterIsAnError) {
    const auto kit = BuildKit(Report("",
                                     "<PageHeader><Height>300pt</Height><PrintOnFirstPage>true"
                                     "</PrintOnFirstPage></PageHeader>"),
                              Sales({}));
    TextSink sink;
    EXPECT_EQ(ErrorRaisedBy([&] { Paginate(*kit.report, sink); }),
              "The margins, header and footer leave no room for the body on a page");
}

// Texts of the report's only page, each with its place, for a body of that width in so many columns.
std::vector<std::pair<int, int>> ColumnPlaces(double bodyWidth, int columns, int rows) {
    std::string report =
        Report(Tablix(1, RowOf(Cell("V", "=RowNumber(Nothing)")),
                      "<TablixMember><Group Name=\"D\"/></TablixMember>"),
               "<Columns>" + std::to_string(columns) + "</Columns><ColumnSpacing>20pt</ColumnSpacing>");
    const std::string width = "<Width>400pt</Width><Page>";
    report.replace(report.find(width), width.size(),
                   "<Width>" + std::to_string(bodyWidth) + "pt</Width><Page>");
    const auto sink = PagesOf(BuildKit(report, Sales(Many(rows))));
    std::vector<std::pair<int, int>> firsts;
    int last = -1;
    for (std::size_t page = 0; page < sink.pages.size(); ++page, last = -1) {
        for (const TextOp& text : Of<TextOp>(sink.pages[page])) {
            const int column = static_cast<int>(text.x / 140);
            if (column != last) {
                firsts.emplace_back(static_cast<int>(page), column);
                last = column;
            }
        }
    }
    return firsts;
}

TEST(Columns, FillOneAfterTheOtherBeforeThePage) {
    // 15 rows a column, three columns of 120 points at 0, 140 and 280.
    EXPECT_THAT(ColumnPlaces(120, 3, 50),
                ElementsAre(std::pair(0, 0), std::pair(0, 1), std::pair(0, 2), std::pair(1, 0)));
}

TEST(Columns, ShareThePagesWidth) {
    // Two columns: (400 - 20) / 2 = 190 each, so that the second begins at 210 however narrow the body is.
    std::string report =
        Report(Tablix(1, RowOf(Cell("V", "x")), "<TablixMember><Group Name=\"D\"/></TablixMember>"),
               "<Columns>2</Columns><ColumnSpacing>20pt</ColumnSpacing>");
    const std::string width = "<Width>400pt</Width><Page>";
    report.replace(report.find(width), width.size(), "<Width>100pt</Width><Page>");
    const auto sink = PagesOf(BuildKit(report, Sales(Many(16))));
    ASSERT_THAT(sink.pages, SizeIs(1));
    EXPECT_NEAR(Of<TextOp>(sink.pages[0]).back().x, 210, 0.01);
}

TEST(Columns, ThatThePageHasNoRoomForAreNotBegun) {
    EXPECT_THAT(ColumnPlaces(300, 3, 20), ElementsAre(std::pair(0, 0), std::pair(1, 0)));
}

}  // namespace
}  // namespace rdl::layout
