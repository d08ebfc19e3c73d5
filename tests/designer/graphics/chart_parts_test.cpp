// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/graphics/chart_parts.h"

#include "designer/document/editing.h"
#include "designer/graphics/new_graphics.h"
#include "sales_report.h"

namespace designer::test {
namespace {

class ChartParts : public testing::Test {
 protected:
    ChartParts() { m_chart = InsertGraphic(m_document, Body(), {0, 0, 200, 150}, NewGraphic::Chart, {}); }

    ReportBand Body() const { return ReadReportItems(m_document).bands.front(); }
    ChartDesign Read() const { return ReadChartDesign(m_document, m_chart); }
    void Put(const ChartDesign& design) { PutChartDesign(m_document, m_chart, design); }
    std::string At(const std::string& path) const { return m_document.TextAt(m_chart, path).value_or("-"); }
    std::string Data() const {
        std::string csv = Csv(m_document);
        for (std::size_t at; (at = csv.find("\r\n")) != std::string::npos;) {
            csv.replace(at, 2, "|");
        }
        return csv.substr(3);
    }
    static ChartValue Value(const std::string& label, const std::string& expression) {
        return {.label = label, .values = {{"Y", expression}}};
    }

    Document m_document{SalesReport()};
    ElementId m_chart;
};

TEST_F(ChartParts, AreReadAsTheyAreWritten) {
    const ChartDesign design = Read();
    EXPECT_EQ(design.type + " " + design.subtype + " " + design.dataSet, "Column Plain Sales");
    ASSERT_EQ(design.values.size(), 1u);
    EXPECT_EQ(design.values[0].label, "Amount");
    EXPECT_EQ(design.values[0].values.at("Y"), "=Sum(Fields!Amount.Value)");
    ASSERT_EQ(design.categories.size(), 1u);
    EXPECT_EQ(design.categories[0].expression, "=Fields!Region.Value");
    EXPECT_EQ(design.series.size(), 0u);
    EXPECT_EQ(design.legend, "");
    EXPECT_FALSE(design.hasOtherGroups);
    const std::string before = m_document.Text();
    Put(design);
    EXPECT_EQ(m_document.Text(), before);
}

TEST_F(ChartParts, AnotherTypeKeepsTheData) {
    const std::size_t steps = m_document.UndoCount();
    ChartDesign design = Read();
    design.type = "Range";
    design.subtype = "Stock";
    Put(design);
    const std::string point =
        "ChartData/ChartSeriesCollection/ChartSeries/ChartDataPoints/ChartDataPoint/"
        "ChartDataPointValues/";
    EXPECT_EQ(At(point + "Y"), "=Sum(Fields!Amount.Value)");
    EXPECT_EQ(At(point + "Low"), "=Sum(Fields!Amount.Value)");
    design = Read();
    design.type = "Line";
    design.subtype = "Smooth";
    Put(design);
    EXPECT_EQ(Data(), "Category,Series,Value|North,Amount,30|South,Amount,30|");
    EXPECT_EQ(m_document.UndoCount(), steps + 2);
}

// A box without its average is one on purpose.
TEST_F(ChartParts, WhatATypeCouldHaveIsNotAdded) {
    Document document(SalesReport(
        "<Chart Name=\"C\"><ChartSeriesHierarchy/><ChartData><ChartSeriesCollection><ChartSeries Name=\"S\">"
        "<ChartDataPoints><ChartDataPoint><ChartDataPointValues><Low>=1</Low></ChartDataPointValues>"
        "</ChartDataPoint></ChartDataPoints><Type>Range</Type><Subtype>BoxPlot</Subtype></ChartSeries>"
        "</ChartSeriesCollection></ChartData></Chart>"));
    const ElementId chart = ReadReportItems(document).items.front().id;
    const std::string before = document.Text();
    PutChartDesign(document, chart, ReadChartDesign(document, chart));
    EXPECT_EQ(document.Text(), before);
}

TEST_F(ChartParts, ValuesAreAddedMovedAndRemoved) {
    ChartDesign design = Read();
    design.values.insert(design.values.begin(), Value("Pieces", "=Sum(Fields!Pieces.Value)"));
    Put(design);
    EXPECT_EQ(Data(), "Category,Series,Value|North,Pieces,3|South,Pieces,5|North,Amount,30|South,Amount,30|");
    const ElementId pieces = Read().values[0].series;
    design = Read();
    std::swap(design.values[0], design.values[1]);
    design.values[0].label = "Total";
    Put(design);
    EXPECT_EQ(Data(), "Category,Series,Value|North,Total,30|South,Total,30|North,Pieces,3|South,Pieces,5|");
    EXPECT_EQ(Read().values[1].series, pieces);
    design = Read();
    design.values.erase(design.values.begin());
    Put(design);
    EXPECT_EQ(Data(), "Category,Series,Value|North,Pieces,3|South,Pieces,5|");
}

TEST_F(ChartParts, GroupsAreAddedAndChanged) {
    ChartDesign design = Read();
    design.series.push_back({NoElement, "=Fields!City.Value"});
    Put(design);
    EXPECT_EQ(Read().series.size(), 1u);
    EXPECT_FALSE(Read().hasOtherGroups);
    design = Read();
    design.categories.clear();
    Put(design);
    EXPECT_EQ(Read().categories.size(), 0u);
    design = Read();
    design.categories = {{NoElement, "=Fields!Region.Value"}, {NoElement, "=Fields!City.Value", 2}};
    design.series.clear();
    Put(design);
    EXPECT_EQ(Read().categories.size(), 2u);
    EXPECT_EQ(Data(),
              "Category1,Category,Series,Value|North,Bergen,Amount,20|North,Oslo,Amount,10|"
              "South,Rome,Amount,30|");
}

TEST_F(ChartParts, AGroupThatStaysKeepsWhatItHas) {
    const ElementId member = Read().categories[0].member;
    SetText(m_document, member, "Label", "=UCase(Fields!Region.Value)");
    ChartDesign design = Read();
    design.categories.push_back({NoElement, "=Fields!City.Value", 2});
    Put(design);
    EXPECT_EQ(At("ChartCategoryHierarchy/ChartMembers/ChartMember/Label"), "=UCase(Fields!Region.Value)");
    EXPECT_EQ(At("ChartCategoryHierarchy/ChartMembers/ChartMember/ChartMembers/ChartMember/Label"),
              "=Fields!City.Value");
}

TEST_F(ChartParts, TitlesLegendPaletteAndLabels) {
    ChartDesign design = Read();
    design.title = "Sales < 2026";
    design.categoryTitle = "Region";
    design.valueTitle = "Amount";
    design.legend = "BottomCenter";
    design.palette = "Pastel";
    design.showsLabels = true;
    Put(design);
    EXPECT_EQ(At("ChartTitles/ChartTitle/Caption"), "Sales < 2026");
    EXPECT_EQ(At("ChartAreas/ChartArea/ChartCategoryAxes/ChartAxis/ChartAxisTitle/Caption"), "Region");
    EXPECT_EQ(At("ChartLegends/ChartLegend/Position"), "BottomCenter");
    EXPECT_EQ(At("Palette"), "Pastel");
    ChartDesign now = Read();
    now.values = design.values;
    now.categories = design.categories;
    EXPECT_EQ(now, design);
    design.title = design.categoryTitle = design.legend = "";
    design.showsLabels = false;
    Put(design);
    EXPECT_EQ(At("ChartTitles"), "-");
    EXPECT_EQ(At("ChartAreas/ChartArea/ChartCategoryAxes/ChartAxis/ChartAxisTitle"), "-");
    EXPECT_EQ(At("ChartLegends/ChartLegend/Hidden"), "true");
    EXPECT_EQ(Data(), "Category,Series,Value|North,Amount,30|South,Amount,30|");
}

TEST_F(ChartParts, OfAnEmptyChartAreMade) {
    Document document(SalesReport("<Chart Name=\"C\"><ChartSeriesHierarchy/></Chart>"));
    const ElementId chart = ReadReportItems(document).items.front().id;
    ASSERT_TRUE(HasChartDesign(document, chart));
    ChartDesign design = ReadChartDesign(document, chart);
    EXPECT_TRUE(design.values.empty());
    design.type = "Column";
    design.subtype = "Plain";
    design.dataSet = "Sales";
    design.values.push_back(Value("Amount", "=Sum(Fields!Amount.Value)"));
    design.hasOtherGroups = false;
    design.title = design.categoryTitle = "Region";
    design.legend = "RightTop";
    PutChartDesign(document, chart, design);
    EXPECT_EQ(Csv(document),
              "\xEF\xBB\xBF"
              "Category,Series,Value\r\n,Amount,60\r\n");
}

TEST_F(ChartParts, GroupsThatHaveNoOneExpressionStay) {
    const ElementId members = m_document.Find(m_chart, "ChartCategoryHierarchy/ChartMembers");
    InsertXml(m_document, members,
              "<ChartMember><Group Name=\"G\"><GroupExpressions><GroupExpression>=1</GroupExpression>"
              "<GroupExpression>=2</GroupExpression></GroupExpressions></Group></ChartMember>");
    ChartDesign design = Read();
    EXPECT_TRUE(design.hasOtherGroups);
    design.categories.clear();
    design.title = "Two";
    Put(design);
    EXPECT_EQ(m_document.Children(members).size(), 2u);
    EXPECT_EQ(At("ChartTitles/ChartTitle/Caption"), "Two");
}

std::vector<ElementId> PointsOf(const Document& document, ElementId chart) {
    return ChartPointsOf(document, ReadChartDesign(document, chart).values.at(0).series);
}

TEST_F(ChartParts, CategoriesStandBesideEachOther) {
    const std::string before = m_document.Text();
    ChartDesign design = Read();
    design.categories.push_back({NoElement, "All", 1});
    design.categories.push_back({NoElement, "=Fields!City.Value", 1});
    Put(design);
    EXPECT_EQ(Data(),
              "Category,Series,Value|North,Amount,30|South,Amount,30|All,Amount,60|Bergen,Amount,20|"
              "Oslo,Amount,10|Rome,Amount,30|");
    ASSERT_EQ(PointsOf(m_document, m_chart).size(), 3u);
    design = Read();
    ASSERT_EQ(design.categories.size(), 3u);
    EXPECT_EQ(design.categories[1].expression, "All");
    EXPECT_FALSE(design.hasOtherGroups);
    // A point of its own stays with its category, and is not changed with the others.
    SetText(m_document, PointsOf(m_document, m_chart)[1], "ChartDataPointValues/Y", "=7");
    design = Read();
    design.values[0].values["Y"] = "=Sum(Fields!Pieces.Value)";
    design.categories.erase(design.categories.begin());
    Put(design);
    EXPECT_EQ(Data(), "Category,Series,Value|All,Amount,7|Bergen,Amount,1|Oslo,Amount,2|Rome,Amount,5|");
    while (m_document.Text() != before && m_document.Undo()) {
    }
    EXPECT_EQ(m_document.Text(), before);
}

TEST_F(ChartParts, ACategoryWithinOneOfTwo) {
    ChartDesign design = Read();
    design.categories = {{NoElement, "All", 1},
                         {design.categories[0].member, design.categories[0].expression, 1},
                         {NoElement, "=Fields!City.Value", 2}};
    Put(design);
    EXPECT_EQ(PointsOf(m_document, m_chart).size(), 2u);
    const ChartDesign now = Read();
    ASSERT_EQ(now.categories.size(), 3u);
    EXPECT_EQ(now.categories[2].level, 2);
    EXPECT_EQ(At("ChartCategoryHierarchy/ChartMembers/ChartMember/Label"), "All");
}

TEST_F(ChartParts, SeriesGroupsBesideEachOtherHaveAllValues) {
    ChartDesign design = Read();
    design.categories.clear();
    design.values.push_back(Value("Pieces", "=Sum(Fields!Pieces.Value)"));
    design.series = {{NoElement, "=Fields!Region.Value", 1}, {NoElement, "=Fields!City.Value", 1}};
    Put(design);
    design = Read();
    EXPECT_FALSE(design.hasOtherGroups);
    ASSERT_EQ(design.values.size(), 2u);
    ASSERT_EQ(design.values[0].copies.size(), 1u);
    const std::string data = Data();
    for (const char* row :
         {"North - Amount,30|", "Rome - Amount,30|", "South - Pieces,5|", "Oslo - Pieces,2|"}) {
        EXPECT_NE(data.find(row), std::string::npos) << row << data;
    }
    design.values[1].values["Y"] = "=Max(Fields!Pieces.Value)";
    std::swap(design.values[0], design.values[1]);
    Put(design);
    design = Read();
    EXPECT_EQ(design.values[0].values.at("Y"), "=Max(Fields!Pieces.Value)");
    EXPECT_EQ(m_document.TextAt(design.values[0].copies[0],
                                "ChartDataPoints/ChartDataPoint/ChartDataPointValues/Y"),
              "=Max(Fields!Pieces.Value)");
    design.series.pop_back();
    Put(design);
    EXPECT_TRUE(Read().values[0].copies.empty());
    EXPECT_EQ(m_document.Children(m_document.Find(m_chart, "ChartData/ChartSeriesCollection")).size(), 2u);
}

TEST_F(ChartParts, AFlagMayBeOne) {
    ChartDesign design = Read();
    design.legend = "BottomCenter";
    Put(design);
    EXPECT_EQ(Read().legend, "BottomCenter");
    SetText(m_document, m_chart, "ChartLegends/ChartLegend/Hidden", "1", "Hide");
    EXPECT_EQ(Read().legend, "");
}

}  // namespace
}  // namespace designer::test
