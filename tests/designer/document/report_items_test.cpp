// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/document/report_items.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace designer {
namespace {

// One line for each item: kind, name, place in points, depth.
std::string Listed(const std::string& text) {
    const Document document(text);
    const ReportItems items = ReadReportItems(document);
    std::string lines;
    const auto number = [](double value) { return " " + std::to_string(std::lround(value)); };
    for (const ReportItem& item : items.items) {
        lines += item.kind + " " + item.name + number(item.place.left) + number(item.place.top) +
                 number(item.place.width) + number(item.place.height) + " in " + std::to_string(item.band) +
                 "." + std::to_string(item.depth) + "\n";
    }
    return lines;
}

std::string InBody(const std::string& items) {
    return "<Report><Width>500pt</Width><Body><Height>300pt</Height><ReportItems>" + items +
           "</ReportItems></Body></Report>";
}

TEST(ReportItems, HaveTheirPlaceOnTheBand) {
    EXPECT_EQ(
        Listed(InBody("<Rectangle Name='R'><Left>10pt</Left><Top>1in</Top><Width>100pt</Width><ReportItems>"
                      "<Textbox Name='A'><Left>5pt</Left><Top>6pt</Top><Height>12pt</Height></Textbox>"
                      "<Line Name='L'><Width>-20pt</Width></Line></ReportItems></Rectangle>"
                      "<Image Name='I'/>")),
        "Rectangle R 10 72 100 228 in 0.0\n"
        "Textbox A 15 78 95 12 in 0.1\n"
        "Line L 10 72 -20 0 in 0.1\n"
        "Image I 0 0 500 300 in 0.0\n");
}

TEST(ReportItems, KnowTheBandsOfAllSections) {
    const Document document(
        "<Report><ReportSections><ReportSection><Body><Height>1in</Height></Body><Width>2in</Width><Page>"
        "<PageHeader><Height>10pt</Height><ReportItems><Textbox "
        "Name='H'><ZIndex>3</ZIndex></Textbox></ReportItems>"
        "</PageHeader><PageFooter/></Page></ReportSection><ReportSection><Body/></ReportSection></"
        "ReportSections></Report>");
    const ReportItems items = ReadReportItems(document);
    ASSERT_EQ(items.bands.size(), 4u);
    EXPECT_EQ(items.bands[0].kind, BandKind::PageHeader);
    EXPECT_EQ(items.bands[1].kind, BandKind::Body);
    EXPECT_EQ(items.bands[1].width, 144);
    EXPECT_EQ(items.bands[1].height, 72);
    EXPECT_EQ(items.bands[2].kind, BandKind::PageFooter);
    EXPECT_EQ(items.bands[3].section, 1u);
    EXPECT_EQ(items.bands[1].element, BodyOf(document));
    ASSERT_EQ(items.items.size(), 1u);
    EXPECT_EQ(items.items[0].band, 0u);
    EXPECT_EQ(items.items[0].zIndex, 3);
    EXPECT_EQ(items.items[0].place.height, 10);
    EXPECT_EQ(items.items[0].container, items.bands[0].element);
}

std::string Cell(const std::string& name) {
    return "<CellContents><Textbox Name='" + name + "'/></CellContents>";
}

TEST(ReportItems, OfATablixFillTheirCells) {
    const std::string column = "<TablixColumn><Width>50pt</Width></TablixColumn>";
    EXPECT_EQ(
        Listed(InBody(
            "<Tablix Name='T'><Left>100pt</Left><Top>10pt</Top><Width>1pt</Width>"
            "<TablixCorner><TablixCornerRows><TablixCornerRow><TablixCornerCell>" +
            Cell("C") +
            "</TablixCornerCell></TablixCornerRow></TablixCornerRows></TablixCorner>"
            "<TablixBody><TablixColumns>" +
            column + column +
            "</TablixColumns><TablixRows>"
            "<TablixRow><Height>20pt</Height><TablixCells><TablixCell>" +
            Cell("A") + "</TablixCell><TablixCell>" + Cell("B") +
            "</TablixCell></TablixCells></TablixRow>"
            "<TablixRow><Height>30pt</Height><TablixCells><TablixCell><CellContents><Textbox Name='S'/>"
            "<ColSpan>2</ColSpan></CellContents></TablixCell><TablixCell/></TablixCells></TablixRow></"
            "TablixRows></TablixBody>"
            "<TablixColumnHierarchy><TablixMembers><TablixMember><TablixHeader><Size>15pt</Size>" +
            Cell("H") +
            "</TablixHeader><TablixMembers><TablixMember/><TablixMember/></TablixMembers></TablixMember></"
            "TablixMembers>"
            "</TablixColumnHierarchy>"
            "<TablixRowHierarchy><TablixMembers><TablixMember><TablixHeader><Size>40pt</Size>" +
            Cell("G") + "</TablixHeader></TablixMember><TablixMember><TablixHeader><Size>40pt</Size>" +
            Cell("K") + "</TablixHeader></TablixMember></TablixMembers></TablixRowHierarchy></Tablix>")),
        "Tablix T 100 10 140 65 in 0.0\n"
        "Textbox H 140 10 100 15 in 0.1\n"
        "Textbox G 100 25 40 20 in 0.1\n"
        "Textbox K 100 45 40 30 in 0.1\n"
        "Textbox C 100 10 40 15 in 0.1\n"
        "Textbox A 140 25 50 20 in 0.1\n"
        "Textbox B 190 25 50 20 in 0.1\n"
        "Textbox S 140 45 100 30 in 0.1\n");
}

TEST(ReportItems, OfATableOfTheOlderSchemasFillTheirCells) {
    const auto row = [](const std::string& name, const std::string& height) {
        return "<TableRows><TableRow><Height>" + height +
               "</Height><TableCells><TableCell><ReportItems><Textbox Name='" + name +
               "'/></ReportItems></TableCell></TableCells></TableRow></TableRows>";
    };
    EXPECT_EQ(
        Listed(InBody(
            "<Table Name='T'><TableColumns><TableColumn><Width>60pt</Width></TableColumn></TableColumns>"
            "<Details>" +
            row("D", "10pt") + "</Details><Header>" + row("H", "11pt") +
            "</Header><TableGroups><TableGroup><Footer>" + row("F", "12pt") + "</Footer><Header>" +
            row("G", "13pt") + "</Header></TableGroup></TableGroups></Table>")),
        "Table T 0 0 60 46 in 0.0\n"
        "Textbox H 0 0 60 11 in 0.1\n"
        "Textbox G 0 11 60 13 in 0.1\n"
        "Textbox D 0 24 60 10 in 0.1\n"
        "Textbox F 0 34 60 12 in 0.1\n");
}

TEST(ReportItems, OfAMatrixOfTheOlderSchemasFillTheirCells) {
    const auto box = [](const std::string& name) {
        return "<ReportItems><Textbox Name='" + name + "'/></ReportItems>";
    };
    EXPECT_EQ(
        Listed(InBody("<Matrix Name='M'><Corner>" + box("C") +
                      "</Corner>"
                      "<ColumnGroupings><ColumnGrouping><Height>10pt</Height><DynamicColumns><Subtotal>" +
                      box("CT") + "</Subtotal>" + box("CH") +
                      "</DynamicColumns></ColumnGrouping></ColumnGroupings>"
                      "<RowGroupings><RowGrouping><Width>30pt</"
                      "Width><DynamicRows><Subtotal><Position>Before</Position>" +
                      box("RT") + "</Subtotal>" + box("RH") +
                      "</DynamicRows></RowGrouping></RowGroupings>"
                      "<MatrixColumns><MatrixColumn><Width>50pt</Width></MatrixColumn></MatrixColumns>"
                      "<MatrixRows><MatrixRow><Height>20pt</Height><MatrixCells><MatrixCell>" +
                      box("V") + "</MatrixCell></MatrixCells></MatrixRow></MatrixRows></Matrix>")),
        "Matrix M 0 0 130 50 in 0.0\n"
        "Textbox C 0 0 30 10 in 0.1\n"
        "Textbox CH 30 0 50 10 in 0.1\n"
        "Textbox CT 80 0 50 10 in 0.1\n"
        "Textbox RT 0 10 30 20 in 0.1\n"
        "Textbox RH 0 30 30 20 in 0.1\n"
        "Textbox V 30 30 50 20 in 0.1\n");
}

TEST(ReportItems, OfATableWithHostileSpansEndSoon) {
    std::string columns, rows;
    for (int i = 0; i < 4000; ++i) {
        columns += "<TableColumn><Width>1pt</Width></TableColumn>";
        rows +=
            "<TableRow><TableCells><TableCell><ColSpan>9999</ColSpan></TableCell></TableCells></TableRow>";
    }
    const Document document(InBody("<Table Name='T'><TableColumns>" + columns +
                                   "</TableColumns><Details><TableRows>" + rows +
                                   "</TableRows></Details></Table>"));
    const ReportItems items = ReadReportItems(document);
    ASSERT_EQ(items.items.size(), 1u);
    EXPECT_EQ(items.items[0].place.width, 4000);
    const TablixGrid grid = GridOf(document, items.items[0].id);
    EXPECT_EQ(grid.cells.back().columnSpan, 4000u);
    EXPECT_EQ(grid.cells.back().place.width, 4000);
}

TEST(ReportItems, AHostileMatrixEndsSoon) {
    std::string columns;
    for (int level = 0; level < 3000; ++level) {
        columns +=
            "<ColumnGrouping><StaticColumns><StaticColumn/><StaticColumn/></StaticColumns></ColumnGrouping>";
    }
    const Document document(
        InBody("<Matrix Name='M'><ColumnGroupings>" + columns + "</ColumnGroupings></Matrix>"));
    EXPECT_EQ(ReadReportItems(document).items.size(), 1u);
}

}  // namespace
}  // namespace designer
