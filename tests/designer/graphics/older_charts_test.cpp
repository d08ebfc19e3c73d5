// SPDX-License-Identifier: GPL-3.0-or-later
// Charts in the form of 2003 and 2005.
#include "designer/graphics/older_charts.h"

#include "designer/document/editing.h"
#include "sales_report.h"

namespace designer::test {
namespace {

std::string Sales(const std::string& more) {
    const std::string field = "<Field Name=\"";
    return "<Report "
           "xmlns=\"http://schemas.microsoft.com/sqlserver/reporting/2005/01/reportdefinition\"><DataSources>"
           "<DataSource "
           "Name=\"D\"><ConnectionProperties><DataProvider>ENTERDATA</DataProvider><ConnectString/>"
           "</ConnectionProperties></DataSource></DataSources><DataSets><DataSet Name=\"Sales\"><Query>"
           "<DataSourceName>D</DataSourceName><CommandText/></Query><Fields>" +
           field + "Region\"><DataField>Region</DataField></Field>" + field +
           "Amount\"><DataField>Amount</DataField></Field></Fields><Rows><Row><Region>North</"
           "Region><Amount>10</Amount>"
           "</Row><Row><Region>South</Region><Amount>30</Amount></Row></Rows></DataSet></"
           "DataSets><Body><ReportItems>"
           "<Chart Name=\"C\"><DataSetName>Sales</DataSetName>" +
           more +
           "<Height>5cm</Height><Width>5cm</Width></Chart></ReportItems><Height>6cm</Height></"
           "Body><Width>8cm</Width>"
           "</Report>";
}

constexpr const char* Categories =
    "<CategoryGroupings><CategoryGrouping><DynamicCategories><Grouping Name=\"G\"><GroupExpressions>"
    "<GroupExpression>=Fields!Region.Value</GroupExpression></GroupExpressions></Grouping>"
    "<Label>=UCase(Fields!Region.Value)</Label></DynamicCategories></CategoryGrouping></CategoryGroupings>";

std::string Data(const std::string& values) {
    return "<ChartData><ChartSeries><DataPoints><DataPoint><DataValues>" + values +
           "</DataValues><Style><Color>Red</Color></Style></DataPoint></DataPoints></ChartSeries></"
           "ChartData>";
}
std::string One(const std::string& value) {
    return "<DataValue><Value>" + value + "</Value></DataValue>";
}

class OlderCharts : public testing::Test {
 protected:
    void Open(const std::string& chart) {
        m_document.emplace(Sales(chart));
        m_chart = ReadReportItems(*m_document).items.front().id;
        ASSERT_TRUE(IsOlderChart(*m_document, m_chart));
    }
    ChartDesign Read() const { return ReadChartDesign(*m_document, m_chart); }
    void Put(const ChartDesign& design) { PutChartDesign(*m_document, m_chart, design); }
    std::string At(const std::string& path) const { return m_document->TextAt(m_chart, path).value_or("-"); }
    std::string Rows() const {
        std::string csv = Csv(*m_document);
        for (std::size_t at; (at = csv.find("\r\n")) != std::string::npos;) {
            csv.replace(at, 2, "|");
        }
        return csv.substr(3);
    }

    std::optional<Document> m_document;
    ElementId m_chart = NoElement;
};

const std::string Columns = "<Type>Column</Type><Subtype>Stacked</Subtype>" + std::string(Categories) +
                            Data(One("=Sum(Fields!Amount.Value)"));

TEST_F(OlderCharts, AreReadAndWrittenAsTheyAre) {
    Open(Columns);
    const ChartDesign design = Read();
    EXPECT_EQ(design.type + design.subtype + design.dataSet, "ColumnStackedSales");
    ASSERT_EQ(design.categories.size(), 1u);
    EXPECT_EQ(design.categories[0].expression, "=Fields!Region.Value");
    ASSERT_EQ(design.values.size(), 1u);
    EXPECT_EQ(design.values[0].values.at("Y"), "=Sum(Fields!Amount.Value)");
    EXPECT_FALSE(design.hasOtherGroups);
    EXPECT_EQ(design.legend, "");
    Put(design);
    EXPECT_EQ(m_document->Text(), Sales(Columns));
}

TEST_F(OlderCharts, ValuesAndGroupsChange) {
    Open(Columns);
    ChartDesign design = Read();
    design.values.push_back({.label = "Most", .values = {{"Y", "=Max(Fields!Amount.Value)"}}});
    design.values[0].label = "Sum";
    Put(design);
    EXPECT_EQ(Rows(), "Category,Series,Value|NORTH,Sum,10|SOUTH,Sum,30|NORTH,Most,10|SOUTH,Most,30|");
    EXPECT_EQ(At("ChartData/ChartSeries/DataPoints/DataPoint/Style/Color"), "Red");
    design = Read();
    std::swap(design.values[0], design.values[1]);
    design.values[0].values["Y"] = "=1";
    design.categories.clear();
    design.series.push_back({NoElement, "=Fields!Region.Value"});
    Put(design);
    EXPECT_EQ(At("CategoryGroupings"), "-");
    design = Read();
    EXPECT_FALSE(design.hasOtherGroups);
    ASSERT_EQ(design.series.size(), 1u);
    EXPECT_EQ(design.values[0].label, "Most");
    EXPECT_EQ(m_document->Text().find("GroupName"), std::string::npos);
    design.values.pop_back();
    design.values[0].label = "";
    Put(design);
    EXPECT_EQ(m_document->Text().find("StaticSeries"), std::string::npos);
    while (m_document->Undo()) {
    }
    EXPECT_EQ(m_document->Text(), Sales(Columns));
}

TEST_F(OlderCharts, AnotherTypeHasItsValues) {
    Open(Columns);
    ChartDesign design = Read();
    design.type = "Range";
    design.subtype = "Stock";
    Put(design);
    EXPECT_EQ(At("Type") + " " + At("Subtype"), "Stock OpenHighLowClose");
    design = Read();
    EXPECT_EQ(design.type + " " + design.subtype, "Range Stock");
    EXPECT_EQ(design.values[0].values.at("End"), "=Sum(Fields!Amount.Value)");
    design.type = "Shape";
    design.subtype = "Pie";
    Put(design);
    EXPECT_EQ(At("Type") + " " + At("Subtype"), "Pie Plain");
    EXPECT_EQ(Read().values[0].values.size(), 1u);
    EXPECT_EQ(At("ChartData/ChartSeries/DataPoints/DataPoint/Style/Color"), "Red");
    design.subtype = "Funnel";
    EXPECT_THROW(Put(design), EditError);
}

TEST_F(OlderCharts, TitlesLegendAndLabels) {
    Open(Columns);
    ChartDesign design = Read();
    design.title = "Sales";
    design.categoryTitle = "Region";
    design.legend = "BottomCenter";
    design.showsLabels = true;
    design.palette = "Pastel";
    Put(design);
    EXPECT_EQ(At("Title/Caption") + At("CategoryAxis/Axis/Title/Caption") + At("CategoryAxis/Axis/Visible"),
              "SalesRegiontrue");
    EXPECT_EQ(At("Legend/Visible") + At("Legend/Position") + At("Palette"), "trueBottomCenterPastel");
    const ChartDesign now = Read();
    EXPECT_EQ(now, design);
    EXPECT_EQ(Rows(), "Category,Series,Value|NORTH,series 1,10|SOUTH,series 1,30|");
    design.title = design.legend = "";
    design.showsLabels = false;
    Put(design);
    EXPECT_EQ(Read(), design);
    EXPECT_EQ(At("Title"), "-");
}

// High, low and close; what the designer has no picture for stays.
TEST_F(OlderCharts, OtherTypesAndGroupsStay) {
    const std::string stock =
        "<Type>Stock</Type>" + std::string(Categories) + Data(One("=3") + One("=1") + One("=2"));
    Open(stock);
    ChartDesign design = Read();
    EXPECT_EQ(ValueNamesOf(design), (std::vector<std::string>{"End", "High", "Low"}));
    design.values[0].values["End"] = "=2.5";
    Put(design);
    EXPECT_NE(m_document->Text().find(One("=3") + One("=1") + One("=2.5")), std::string::npos);
    EXPECT_EQ(At("Subtype"), "-");
    Open(
        "<CategoryGroupings><CategoryGrouping><StaticCategories><StaticMember><Label>A</Label></StaticMember>"
        "<StaticMember><Label>B</Label></StaticMember></StaticCategories></CategoryGrouping></"
        "CategoryGroupings>" +
        Data(One("=1")));
    EXPECT_TRUE(Read().hasOtherGroups);
    const std::string before = m_document->Text();
    Put(Read());
    EXPECT_EQ(m_document->Text(), before);
}

TEST_F(OlderCharts, HaveNoGroupsBesideEachOther) {
    Open(Columns);
    ChartDesign design = Read();
    design.categories.push_back({NoElement, "=1", 1});
    EXPECT_THROW(Put(design), EditError);
}

TEST_F(OlderCharts, ShowTheirLegendAndLabelsWithOne) {
    std::string data = Data(One("=1"));
    data.insert(data.find("<Style>"), "<DataLabel><Visible> 1 </Visible></DataLabel>");
    Open("<Type>Column</Type><Legend><Visible>1</Visible><Position>TopLeft</Position></Legend>" +
         std::string(Categories) + data);
    EXPECT_EQ(Read().legend, "TopLeft");
    EXPECT_TRUE(Read().showsLabels);
}

}  // namespace
}  // namespace designer::test
