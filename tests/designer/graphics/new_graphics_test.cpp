// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/graphics/new_graphics.h"

#include <gmock/gmock.h>

#include "designer/document/editing.h"
#include "sales_report.h"

namespace designer::test {
namespace {

using testing::StartsWith;

constexpr Rect Place{36, 72, 200, 150};

ElementId Insert(Document& document, NewGraphic kind, const GraphicChoice& choice = {},
                 BandKind where = BandKind::Body) {
    for (const ReportBand& band : ReadReportItems(document).bands) {
        if (band.kind == where) {
            return InsertGraphic(document, band, Place, kind, choice);
        }
    }
    return NoElement;
}

template <typename Work>
std::string RefusalOf(Work work) {
    try {
        work();
    } catch (const EditError& error) {
        return error.what();
    }
    return {};
}

TEST(NewGraphics, AChartHasTheFirstTextAndTheSumOfTheFirstNumber) {
    Document document(SalesReport());
    const ElementId chart = Insert(document, NewGraphic::Chart);
    EXPECT_EQ(document.Attribute(chart, "Name"), "Chart1");
    EXPECT_EQ(document.TextAt(chart, "Left"), "1.27cm");
    EXPECT_EQ(document.TextAt(chart, "Width"), "7.05556cm");
    EXPECT_EQ(document.TextAt(chart, "ChartTitles/ChartTitle/Caption"), "Amount by Region");
    EXPECT_EQ(Csv(document),
              "\xEF\xBB\xBF"
              "Category,Series,Value\r\nNorth,Amount,30\r\nSouth,Amount,30\r\n");
}

TEST(NewGraphics, OfEachTypeOfChartRun) {
    for (const ChartType& type : ChartTypes()) {
        Document document(SalesReport());
        Insert(document, NewGraphic::Chart, {.chart = &type});
        EXPECT_THAT(Exported(document, rdl::DocumentFormat::Pdf), StartsWith("%PDF-1.7"))
            << type.type << " " << type.subtype;
    }
}

TEST(NewGraphics, WithoutNumbersCountTheRows) {
    std::string report = SalesReport();
    for (std::size_t at; (at = report.find("System.Int32")) != std::string::npos;) {
        report.replace(at, 12, "System.String");
    }
    Document document(report);
    const ElementId chart = Insert(document, NewGraphic::Chart);
    EXPECT_EQ(document.TextAt(chart,
                              "ChartData/ChartSeriesCollection/ChartSeries/ChartDataPoints/"
                              "ChartDataPoint/ChartDataPointValues/Y"),
              "=CountRows()");
    Insert(document, NewGraphic::Gauge);
    EXPECT_THAT(Exported(document, rdl::DocumentFormat::Pdf), StartsWith("%PDF-1.7"));
}

TEST(NewGraphics, GaugeIndicatorAndBarCodeRun) {
    for (const NewGraphic kind : {NewGraphic::Gauge, NewGraphic::Indicator, NewGraphic::BarCode}) {
        Document document(SalesReport());
        Insert(document, kind);
        EXPECT_THAT(Exported(document, rdl::DocumentFormat::Pdf), StartsWith("%PDF-1.7"));
    }
    Document document(SalesReport());
    const ElementId gauge = Insert(document, NewGraphic::Gauge);
    const std::string scale = "RadialGauges/RadialGauge/GaugeScales/RadialScale";
    EXPECT_EQ(document.TextAt(gauge, scale + "/GaugePointers/RadialPointer/GaugeInputValue/Value"),
              "=Avg(Fields!Amount.Value)");
    EXPECT_EQ(document.TextAt(gauge, scale + "/MaximumValue/Value"), "=Max(Fields!Amount.Value)");
    const ElementId code = Insert(document, NewGraphic::BarCode);
    EXPECT_EQ(document.Name(code), "CustomReportItem");
    EXPECT_EQ(document.TextAt(code, "Type"), "Barcode");
}

TEST(NewGraphics, AreRefusedWhereTheyCannotBe) {
    Document document(SalesReport());
    const auto refusal = [&](NewGraphic kind, BandKind band) {
        return RefusalOf([&] { Insert(document, kind, {}, band); });
    };
    const std::string before = document.Text();
    EXPECT_EQ(refusal(NewGraphic::Chart, BandKind::PageFooter),
              "A page header or footer cannot hold a chart");
    EXPECT_EQ(refusal(NewGraphic::Indicator, BandKind::PageFooter),
              "A page header or footer cannot hold an indicator");
    EXPECT_EQ(document.Text(), before);
    Document empty(
        "<Report xmlns=\"http://schemas.microsoft.com/sqlserver/reporting/2010/01/reportdefinition\">"
        "<Body><Height>5cm</Height></Body><Width>10cm</Width></Report>");
    EXPECT_EQ(RefusalOf([&] { Insert(empty, NewGraphic::Gauge); }),
              "The report has no data set that a gauge could show");
    EXPECT_EQ(RefusalOf([&] { Insert(empty, NewGraphic::Indicator); }),
              "The report has no data set that an indicator could show");
    Document older(
        "<Report xmlns=\"http://schemas.microsoft.com/sqlserver/reporting/2005/01/reportdefinition\">"
        "<Body><Height>5cm</Height></Body><Width>10cm</Width></Report>");
    EXPECT_EQ(RefusalOf([&] { Insert(older, NewGraphic::Gauge); }),
              "A new gauge needs a report of the schema 2008 or later");
    Insert(older, NewGraphic::BarCode);
    EXPECT_THAT(Exported(older, rdl::DocumentFormat::Pdf), StartsWith("%PDF-1.7"));
}

}  // namespace
}  // namespace designer::test
