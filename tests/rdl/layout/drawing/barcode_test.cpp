// SPDX-License-Identifier: GPL-3.0-or-later
// Bar codes: their bars' places, the texts below them, and what cannot be encoded.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <map>

#include "rdl/definition/barcode.h"
#include "rdl/guide.h"
#include "rdl/layout/drawing/chart_kit.h"
#include "rdl/layout/drawing/drawing.h"
#include "rdl/raises.h"

namespace rdl::layout {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

// An item of `width` by 40 points.
std::string BarcodeReport(const std::string& properties, int width = 66, const std::string& style = {}) {
    return "<Report xmlns=\"http://schemas.microsoft.com/sqlserver/reporting/2016/01/reportdefinition\">"
           "<ReportSections><ReportSection><Body><ReportItems><BarCode Name=\"Code\"><Width>" +
           std::to_string(width) + "pt</Width><Height>40pt</Height><Style><FontSize>8pt</FontSize>" + style +
           "</Style>" + properties +
           "</BarCode></ReportItems><Height>100pt</Height></Body><Width>500pt</Width><Page/></ReportSection>"
           "</ReportSections></Report>";
}

Drawn DrawnCode(const std::string& properties, int width = 66, const std::string& style = {}) {
    return {BuildKit(BarcodeReport(properties, width, style), Sales({}))};
}

std::string ValueOf(const std::string& value) {
    return "<Value>" + value + "</Value>";
}

// The bars from left to right as "place+width".
std::vector<std::string> Bars(const Drawn& drawn) {
    std::vector<std::pair<int, int>> places;
    for (const PathOp& path : drawn.Paths()) {
        for (std::size_t i = 0; i + 4 < path.segments.size(); i += 5) {
            const double left = path.segments[i].x[0], right = path.segments[i + 1].x[0];
            places.emplace_back(static_cast<int>(std::lround(left)),
                                static_cast<int>(std::lround(right - left)));
        }
    }
    std::sort(places.begin(), places.end());
    std::vector<std::string> bars;
    for (const auto& [place, width] : places) {
        bars.push_back(std::to_string(place) + "+" + std::to_string(width));
    }
    return bars;
}

// Code 128 of "A": ten modules of quiet zone, start B 11010010000, A 10100011000, check character 34
// 10001011000 and stop 1100011101011, ten modules of quiet zone.
TEST(Barcode, Code128HasThePublishedBarsWithinItsQuietZones) {
    const Drawn drawn = DrawnCode(ValueOf("A"));
    EXPECT_THAT(Bars(drawn), ElementsAre("10+2", "13+1", "16+1", "21+1", "23+1", "27+2", "32+1", "36+1",
                                         "38+2", "43+2", "48+3", "52+1", "54+2"));
    EXPECT_THAT(drawn.Texts(), ElementsAre("A"));
    ASSERT_EQ(drawn.Paths().size(), 1U);  // one shape: no seams
    EXPECT_EQ(drawn.Paths().front().segments.front().y[0], 0);
    const double foot = drawn.Paths().front().segments[2].y[0];
    EXPECT_LT(foot, 34);  // a line of 8 points below them
    EXPECT_GT(foot, 28);
    EXPECT_EQ(drawn.kit.report->sections.front()->items.front().drawing->description, "Code 128: A");
}

TEST(Barcode, BarsHaveTheColourOfTheTextAndLieWithinThePadding) {
    const Drawn drawn =
        DrawnCode(ValueOf("A") + "<ShowText>false</ShowText>", 96,
                  "<Color>#123456</Color><PaddingLeft>20pt</PaddingLeft><PaddingRight>10pt"
                  "</PaddingRight><PaddingTop>3pt</PaddingTop><PaddingBottom>7pt</PaddingBottom>");
    EXPECT_EQ(Bars(drawn).front(), "30+2");
    ASSERT_EQ(drawn.Paths().size(), 1U);
    EXPECT_EQ(drawn.Paths().front().fill, 0xFF123456);
    EXPECT_EQ(drawn.Paths().front().segments[0].y[0], 3);
    EXPECT_EQ(drawn.Paths().front().segments[2].y[0], 33);
    EXPECT_THAT(drawn.Texts(), IsEmpty());
}

TEST(Barcode, CheckDigitIsAdded) {
    EXPECT_THAT(DrawnCode("<Symbology>EAN-13</Symbology>" + ValueOf("400638133393")).Texts(),
                ElementsAre("4006381333931"));
    EXPECT_THAT(DrawnCode("<Symbology>UPC A</Symbology>" + ValueOf("03600029145")).Texts(),
                ElementsAre("036000291452"));
}

TEST(Barcode, MatrixKeepsItsShapeInTheMiddleAndHasNoText) {
    // 10 by 10 modules and a quiet zone of one.
    const Drawn drawn = DrawnCode("<Symbology>DataMatrix</Symbology>" + ValueOf("A1"), 120);
    ASSERT_EQ(drawn.Paths().size(), 1U);
    double left = 1e9, right = 0, top = 1e9, bottom = 0;
    const PathOp bars = drawn.Paths().front();
    for (const PathOp::Segment& segment : bars.segments) {
        if (segment.kind != PathOp::Segment::Close) {
            left = std::min(left, segment.x[0]);
            right = std::max(right, segment.x[0]);
            top = std::min(top, segment.y[0]);
            bottom = std::max(bottom, segment.y[0]);
        }
    }
    EXPECT_NEAR(right - left, bottom - top, 0.01);
    EXPECT_NEAR(right - left, 40.0 * 10 / 12, 0.01);
    EXPECT_NEAR((left + right) / 2, 60, 0.01);
    EXPECT_THAT(drawn.Texts(), IsEmpty());
}

TEST(Barcode, CorrectionOfAQrCodeMakesItLarger) {
    const auto modules = [](const std::string& level) {
        const Drawn drawn = DrawnCode("<Symbology>QR</Symbology><ErrorCorrection>" + level +
                                      "</ErrorCorrection>" + ValueOf("HTTPS://EXAMPLE.COM/A/LONG/WAY"));
        return Bars(drawn).size();
    };
    EXPECT_GT(modules("H"), modules("L"));
    EXPECT_EQ(modules("H"), modules("h"));
}

TEST(Barcode, WhatCannotBeEncodedSaysWhy) {
    const auto text = [](const std::string& symbology, const std::string& value) {
        std::string said;
        for (const std::string& line :
             DrawnCode("<Symbology>" + symbology + "</Symbology>" + ValueOf(value), 480).Texts()) {
            said += line;
        }
        return said;
    };
    EXPECT_EQ(text("EAN13", "12345"), "EAN-13: needs 12 or 13 digits");
    EXPECT_EQ(text("EAN13", "1234567"), "EAN-13: needs 12 or 13 digits");  // no EAN-8 instead
    EXPECT_EQ(text("EAN8", "123"), "EAN-8: needs 7 or 8 digits");
    EXPECT_EQ(text("UPCA", "123"), "UPC-A: needs 11 or 12 digits");
    EXPECT_EQ(text("ITF14", "123"), "ITF-14: needs 13 or 14 digits");
    EXPECT_EQ(text("EAN13", "40063813339A"), "EAN-13: Invalid character in data (digits and \"+\" only)");
    EXPECT_EQ(text("EAN13", "4006381333930"), "EAN-13: Invalid check digit '0', expecting '1'");
    EXPECT_EQ(text("Code128", std::string(9000, 'x')), "Code 128: Input too long");
    EXPECT_EQ(text("=\"Morse\"", "1"), "\"Morse\" is no bar code");
    EXPECT_EQ(text("=StrDup(100, \"x\")", "1"), "\"" + std::string(60, 'x') + "\" is no bar code");
    EXPECT_EQ(text("Code128", "=CInt(&quot;x&quot;)"), "#Error");
}

TEST(Barcode, EverySymbologyDrawsAValueOfItsKind) {
    const std::map<Symbology, std::string> values = {
        {Symbology::Code128, "Ab 1"},
        {Symbology::Gs1128, "(01)04006381333931"},
        {Symbology::Code39, "AB-1"},
        {Symbology::Code39Extended, "Ab 1"},
        {Symbology::Code93, "AB1"},
        {Symbology::Code11, "12-3"},
        {Symbology::Ean13, "400638133393"},
        {Symbology::Ean8, "1234567"},
        {Symbology::UpcA, "03600029145"},
        {Symbology::UpcE, "1234567"},
        {Symbology::Isbn, "9783161484100"},
        {Symbology::Interleaved2of5, "1234"},
        {Symbology::Itf14, "1234567890123"},
        {Symbology::Codabar, "A1234B"},
        {Symbology::Msi, "1234"},
        {Symbology::Postnet, "55555"},
        {Symbology::IntelligentMail, "01234567094987654321"},
        {Symbology::RoyalMail, "BX11LT1A"},
        {Symbology::Gs1DataBar, "0950110153001"},
        {Symbology::Pdf417, "text"},
        {Symbology::MicroPdf417, "text"},
        {Symbology::QrCode, "text"},
        {Symbology::MicroQr, "12345"},
        {Symbology::DataMatrix, "text"},
        {Symbology::Gs1DataMatrix, "(01)04006381333931"},
        {Symbology::Aztec, "text"},
    };
    for (const SymbologyRow& row : Symbologies) {
        const Drawn drawn = DrawnCode("<ShowText>false</ShowText><Symbology>" + std::string(row.name) +
                                      "</Symbology>" + ValueOf(values.at(row.symbology)));
        EXPECT_EQ(drawn.Paths().size(), 1U) << row.name;
        EXPECT_THAT(drawn.Texts(), IsEmpty()) << row.name;
    }
}

TEST(Barcode, NoValueDrawsNothing) {
    for (const char* value : {"=Nothing", "=\"\"", ""}) {
        const Drawn drawn = DrawnCode(ValueOf(value));
        EXPECT_TRUE(drawn.Content().ops.empty()) << value;
    }
    EXPECT_TRUE(DrawnCode(ValueOf("A"), 0).Content().ops.empty());
}

TEST(Barcode, LowItemHasNoRoomForTheText) {
    const std::string report = BarcodeReport(ValueOf("A"));
    const std::string height = "<Height>40pt</Height>";
    std::string low = report;
    low.replace(low.find(height), height.size(), "<Height>12pt</Height>");
    EXPECT_THAT((Drawn{BuildKit(low, Sales({}))}.Texts()), IsEmpty());
}

std::string Custom(const std::string& type, const std::string& more) {
    std::string report = BarcodeReport("");
    const std::size_t begin = report.find("<BarCode"), end = report.find("</BarCode>") + 10;
    return report.replace(
        begin, end - begin,
        "<CustomReportItem Name=\"Code\"><Type>" + type +
            "</Type><Left>5pt</Left><Top>6pt</Top><Width>66pt</Width><Height>40pt</Height>" + more +
            "</CustomReportItem>");
}

std::string Property(const std::string& name, const std::string& value) {
    return "<CustomProperty><Name>" + name + "</Name><Value>" + value + "</Value></CustomProperty>";
}

TEST(Barcode, CustomItemOfAnyDesignerIsRead) {
    for (const auto& [type, name] : {std::pair("BarCode", "Barcode:Text"),
                                     std::pair("My.Barcode.Item", "VALUE"), std::pair("Code 128", "data")}) {
        const Drawn drawn{BuildKit(Custom(type, "<CustomProperties>" + Property(name, "A") +
                                                    Property("Other", "x") + "</CustomProperties>"),
                                   Sales({}))};
        EXPECT_THAT(drawn.Texts(), ElementsAre("A")) << type;
        EXPECT_EQ(Bars(drawn).front(), "10+2") << type;
    }
    const Drawn chosen{
        BuildKit(Custom("BarCode", "<CustomProperties>" + Property("Symbology", "=\"Code39\"") +
                                       Property("Value", "A") + "</CustomProperties>"),
                 Sales({}))};
    EXPECT_EQ(chosen.kit.report->sections.front()->items.front().drawing->description, "Code 39: *A*");
}

TEST(Barcode, OtherCustomItemsHaveTheirAlternativeOrAreRefused) {
    const BuiltKit kit =
        BuildKit(Custom("Widget",
                        "<AltReportItem><ReportItems><Textbox Name=\"T\"><Value>instead</Value></Textbox>"
                        "</ReportItems></AltReportItem>"),
                 Sales({}));
    const Instance& item = kit.report->sections.front()->items.front();
    EXPECT_EQ(item.kind, InstanceKind::Container);
    EXPECT_EQ(item.x, 5);
    ASSERT_EQ(item.children.size(), 1U);
    EXPECT_EQ(item.children.front().paragraphs.front().runs.front().text, "instead");
    EXPECT_EQ(item.children.front().width, 66);
    const auto error = [](const std::string& report) {
        return ErrorRaisedBy([&] { ParseDefinition(report, "test.rdl"); });
    };
    EXPECT_EQ(error(Custom("Widget", "")),
              "test.rdl, line 1: CustomReportItem Code: an item of the type \"Widget\" cannot be drawn, and "
              "it has no "
              "AltReportItem");
    EXPECT_EQ(error(BarcodeReport("<Symbology>Morse</Symbology><Value>1</Value>")),
              "test.rdl, line 1: BarCode Code, Symbology: \"Morse\" is not known");
    EXPECT_EQ(error(BarcodeReport("")), "test.rdl, line 1: BarCode Code: the bar code has no value");
}

TEST(Barcode, GuideNamesEverySymbology) {
    std::set<std::string> known;
    for (const SymbologyRow& row : Symbologies) {
        AddOnce(known, LowerAscii(row.name));
    }
    EXPECT_EQ(GuideNames("bar codes"), known);
}

// Outside of tables nothing else checks the time of a run whose items are all bar codes.
TEST(Barcode, ATimeLimitOfTheRunEndsIt) {
    const auto definition =
        std::make_unique<Definition>(ParseDefinition(BarcodeReport(ValueOf("A")), "test.rdl"));
    ReportInput input;
    input.definition = definition.get();
    RunBounds bounds;
    bounds.work = std::chrono::milliseconds(0);
    input.watch = std::make_shared<RunWatch>(bounds);
    const RunWatch::Work work(input.watch);
    EXPECT_THAT(ErrorRaisedBy([&] { Build(std::move(input)); }), HasSubstr(" of the processor"));
}

}  // namespace
}  // namespace rdl::layout
