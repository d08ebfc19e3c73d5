// SPDX-License-Identifier: GPL-3.0-or-later
// Charts and gauges in HTML, and the sheets that a browser prints on.
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "rdl/layout/drawing/canvas.h"
#include "rdl/layout/drawing/drawing.h"
#include "rdl/values/error.h"
#include "rdl/writers/sample_report.h"

namespace rdl::writers {
namespace {

using namespace test;
using layout::Border;
using layout::Canvas;
using layout::DrawingInstance;
using layout::Instance;
using layout::LineStyle;
using Segment = layout::PathOp::Segment;

std::string HtmlOf(std::unique_ptr<layout::ReportInstance> report) {
    StringOutput output;
    WriteHtml(*report, output, {});
    return output.bytes;
}

std::string HtmlOf(std::vector<Instance> items) {
    return HtmlOf(SampleReport(std::move(items)));
}

Instance DrawingItem(const std::shared_ptr<DrawingInstance>& drawing) {
    Instance item;
    item.kind = layout::InstanceKind::Drawing;
    item.name = "Chart1";
    item.width = drawing->content.width = 200;
    item.height = drawing->content.height = 100.5;
    item.drawing = drawing;
    return item;
}

// Returns what the svg element of the first drawing holds, from its view box on.
std::string SvgOf(const std::shared_ptr<DrawingInstance>& drawing) {
    const std::string html = HtmlOf(std::vector{DrawingItem(drawing)});
    const std::size_t begin = html.find("viewBox"), end = html.rfind("</svg></div>");
    return begin < end ? html.substr(begin, end - begin) : std::string();
}

Border Line(float width, layout::Color color, LineStyle style = LineStyle::Solid) {
    Border border;
    border.width = width;
    border.color = color;
    border.style = style;
    return border;
}

TEST(HtmlDrawing, ShapesAreSvgInPoints) {
    const auto drawing = std::make_shared<DrawingInstance>();
    Canvas canvas(drawing->content);
    canvas.Rectangle({1, 2.5, 30, 40}, 0xFF123456, {});
    canvas.Rectangle({0, 0, 10, 10}, 0x80FF0000, {});
    canvas.Rectangle({0, 0, 10, 10}, 0x00FF0000, {});  // cannot be seen
    canvas.Line({0, 50}, {200, 50}, Line(2, 0xFF00FF00, LineStyle::Dashed));
    canvas.Line({0, 60}, {0, 90}, Line(3, 0xFF0000FF, LineStyle::Double));
    canvas.Path({{Segment::Move, {1}, {2}},
                 {Segment::LineTo, {3}, {4}},
                 {Segment::CurveTo, {5, 6, 7}, {8, 9, 10}},
                 {Segment::Close, {}, {}}},
                layout::Transparent, Line(0.1F, 0xFF000000));
    EXPECT_EQ(SvgOf(drawing),
              "viewBox=\"0 0 200 100.5\"><g id=\"g1\">"
              "<rect x=\"1\" y=\"2.5\" width=\"30\" height=\"40\" fill=\"#123456\"/>"
              "<rect x=\"0\" y=\"0\" width=\"10\" height=\"10\" fill=\"#ff000080\"/>"
              "<line x1=\"0\" y1=\"50\" x2=\"200\" y2=\"50\" stroke=\"#00ff00\" stroke-width=\"2\" "
              "stroke-dasharray=\"6 4\"/>"
              "<line x1=\"1\" y1=\"60\" x2=\"1\" y2=\"90\" stroke=\"#0000ff\" stroke-width=\"1\"/>"
              "<line x1=\"-1\" y1=\"60\" x2=\"-1\" y2=\"90\" stroke=\"#0000ff\" stroke-width=\"1\"/>"
              "<path d=\"M1 2L3 4C5 8 6 9 7 10Z\" fill=\"none\" stroke=\"#000000\" stroke-width=\"0.25\"/>"
              "</g>");
}

TEST(HtmlDrawing, TextsStayTextsAsWideAsInTheLayout) {
    const auto drawing = std::make_shared<DrawingInstance>();
    layout::CharStyle style;
    style.family = "Liberation Sans";
    style.size = 8;
    style.color = 0xFF123456;
    style.bold = true;
    Canvas canvas(drawing->content);
    canvas.Text("A < B & \"C\"", style, {10, 20}, {0, 0}, 90);
    ASSERT_EQ(drawing->content.ops.size(), 1U);
    const std::string html = HtmlOf(std::vector{DrawingItem(drawing)});
    std::string length;
    const std::size_t at = html.find("textLength=\"");
    ASSERT_NE(at, std::string::npos);
    length = html.substr(at + 12, html.find('"', at + 12) - at - 12);
    EXPECT_EQ(static_cast<int>(Canvas::Measure("A < B & \"C\"", style).width), std::stoi(length));
    EXPECT_NE(html.find(" lengthAdjust=\"spacingAndGlyphs\" transform=\"rotate(90 "), std::string::npos);
    EXPECT_NE(html.find(">A &lt; B &amp; &quot;C&quot;</text>"), std::string::npos);
    EXPECT_NE(html.find("{font-family:\"Liberation Sans\",sans-serif;font-size:8px;font-weight:bold;"
                        "fill:#123456;white-space:pre;}"),
              std::string::npos);
}

TEST(HtmlDrawing, ClippedPartsAreClosedWhereTheyAreLeftOpen) {
    const auto drawing = std::make_shared<DrawingInstance>();
    Canvas canvas(drawing->content);
    canvas.Unclip();  // of nothing
    canvas.Clip({10, 20, 30, 40});
    canvas.Clip({11, 21, 5, 6});
    canvas.Unclip();
    canvas.Rectangle({0, 0, 1, 1}, layout::Black, {});
    EXPECT_EQ(SvgOf(drawing),
              "viewBox=\"0 0 200 100.5\"><g id=\"g1\">"
              "<clipPath id=\"k1\"><rect x=\"10\" y=\"20\" width=\"30\" height=\"40\"/></clipPath>"
              "<g clip-path=\"url(#k1)\">"
              "<clipPath id=\"k2\"><rect x=\"11\" y=\"21\" width=\"5\" height=\"6\"/></clipPath>"
              "<g clip-path=\"url(#k2)\"></g>"
              "<rect x=\"0\" y=\"0\" width=\"1\" height=\"1\" fill=\"#000000\"/></g></g>");
}

TEST(HtmlDrawing, ClipPathOfAnAreaIsThereOnce) {
    std::vector<Instance> items;
    for (int i = 0; i < 2; ++i) {
        const auto drawing = std::make_shared<DrawingInstance>();
        Canvas canvas(drawing->content);
        canvas.Clip({10, 20, 30, 40});
        canvas.Rectangle({0, 0, 1, 1.0 + i}, layout::Black, {});
        canvas.Unclip();
        items.push_back(DrawingItem(drawing));
        items.back().y = 200.0 * i;
    }
    const std::string html = HtmlOf(items);
    EXPECT_NE(html.find("<clipPath"), std::string::npos);
    EXPECT_EQ(html.find("<clipPath"), html.rfind("<clipPath"));
    EXPECT_NE(html.find("clip-path=\"url(#k1)\"><rect x=\"0\" y=\"0\" width=\"1\" height=\"2\""),
              std::string::npos);
}

TEST(HtmlDrawing, EqualDrawingsAreWrittenOnce) {
    std::vector<Instance> items;
    for (const double size : {5, 6, 5}) {
        const auto drawing = std::make_shared<DrawingInstance>();
        Canvas(drawing->content).Rectangle({0, 0, size, size}, layout::Black, {});
        items.push_back(DrawingItem(drawing));
        items.back().y = 200.0 * static_cast<double>(items.size());
    }
    const std::string html = HtmlOf(items);
    EXPECT_EQ(html.find("<g id=\"g1\"><rect x=\"0\" y=\"0\" width=\"5\""), html.rfind("<g id=\"g1\">"));
    EXPECT_NE(html.find("<g id=\"g2\"><rect x=\"0\" y=\"0\" width=\"6\""), std::string::npos);
    EXPECT_NE(html.find("viewBox=\"0 0 200 100.5\"><use href=\"#g1\"/></svg></div>"), std::string::npos);
    EXPECT_EQ(html.find("#g2"), std::string::npos);
}

TEST(HtmlDrawing, AlternativeTextIsTheToolTipElseTheTitles) {
    const auto drawing = std::make_shared<DrawingInstance>();
    EXPECT_EQ(HtmlOf(std::vector{DrawingItem(drawing)}).find("role=\"img\""), std::string::npos);
    drawing->description = "Turnover & more";
    Instance item = DrawingItem(drawing);
    EXPECT_NE(HtmlOf(std::vector{item}).find(" role=\"img\" aria-label=\"Turnover &amp; more\">"),
              std::string::npos);
    item.toolTip = "By region";
    item.hyperlink = "https://example.com/";
    const std::string html = HtmlOf(std::vector{item});
    EXPECT_NE(
        html.find(" title=\"By region\"><a href=\"https://example.com/\" rel=\"noopener noreferrer\"><svg"),
        std::string::npos);
    EXPECT_NE(html.find(" role=\"img\" aria-label=\"By region\">"), std::string::npos);
}

TEST(HtmlDrawing, ImagesWithinAreCheckedAsOthersAre) {
    const auto drawing = std::make_shared<DrawingInstance>();
    layout::ImageOp image{1, 2, 3, 4, std::make_shared<const std::string>("\x89PNG\r\n\x1a\n"), "Chart1"};
    drawing->content.ops.emplace_back(image);
    EXPECT_EQ(SvgOf(drawing),
              "viewBox=\"0 0 200 100.5\"><g id=\"g1\"><image x=\"1\" y=\"2\" width=\"3\" height=\"4\" "
              "preserveAspectRatio=\"none\" href=\"data:image/png;base64,iVBORw0KGgo=\"/></g>");
    image.bytes = std::make_shared<const std::string>("<svg onload=alert(1)>");
    drawing->content.ops.back() = image;
    EXPECT_THROW(SvgOf(drawing), Error);
}

TEST(HtmlPrint, SheetsAreTheReports) {
    auto report = SampleReport({TextItem("one")});
    for (int i = 0; i < 3; ++i) {
        report->sections.push_back(std::move(SampleReport({TextItem("more")})->sections.front()));
    }
    for (std::size_t i = 0; i < report->sections.size(); ++i) {
        layout::PageSetup& page = report->sections[i]->page;
        page.width = i == 1 || i == 2 ? 842 : 595.28;
        page.height = i == 1 || i == 2 ? 595.28 : 842;
        page.marginTop = 1;
        page.marginRight = 2;
        page.marginBottom = 3;
        page.marginLeft = 0;
    }
    const std::string html = HtmlOf(std::move(report));
    EXPECT_NE(html.find("@page{size:595.28pt 842pt;margin:1pt 2pt 3pt 0}\n"), std::string::npos);
    EXPECT_NE(html.find("@page q1{size:842pt 595.28pt;margin:1pt 2pt 3pt 0}\n.q1{page:q1}\n"),
              std::string::npos);
    std::size_t named = 0;
    for (std::size_t at = html.find(" bb q1\">"); at != std::string::npos;
         at = html.find(" bb q1\">", at + 1)) {
        ++named;
    }
    EXPECT_EQ(named, 2U);
    EXPECT_EQ(html.find("q2"), std::string::npos);
}

}  // namespace
}  // namespace rdl::writers
