// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/engine/problems.h"

#include <gmock/gmock.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "rdl/layout/plan/style_check.h"

namespace rdl::engine {
namespace {

using layout::FlawOfStyle;
using testing::ElementsAre;
using testing::IsEmpty;
using P = StyleProperty;

class Problems : public testing::Test {
 protected:
    ~Problems() override { std::filesystem::remove(m_file); }

    // A report with these items; the first of them is in line 2.
    std::vector<std::string> OfItems(const std::string& items) const {
        return Of("<Report><Body><Height>1in</Height><ReportItems>\n" + items +
                  "</ReportItems></Body></Report>");
    }
    std::vector<std::string> Of(const std::string& report) const {
        std::ofstream(m_file) << report;
        return ProblemsOf(m_file);
    }
    std::string Name() const { return m_file.filename().string(); }
    std::string Line(int line) const { return Name() + ", line " + std::to_string(line) + ": "; }

 private:
    const std::filesystem::path m_file =
        std::filesystem::temp_directory_path() / ("problems-" + std::to_string(getpid()) + ".rpt");
};

TEST_F(Problems, NameItemPropertyAndValueAndWhatIsNear) {
    EXPECT_THAT(
        OfItems("<Textbox Name=\"Total\"><Style>\n"
                "<FontWeight>Boldd</FontWeight>\n"
                "<TextAlign>Centre</TextAlign>\n"
                "<Color>Redd</Color>\n"
                "<FontSize>12</FontSize>\n"
                "<BorderStyle><Left>Soild</Left></BorderStyle>\n"
                "<BottomBorder><Style>Wavy</Style></BottomBorder>\n"
                "</Style><Value/></Textbox>"),
        ElementsAre(
            Line(3) + "Textbox Total, FontWeight: \"Boldd\" is not known; the nearest is \"Bold\"",
            Line(4) + "Textbox Total, TextAlign: \"Centre\" is not known; the nearest is \"Center\"",
            Line(5) + "Textbox Total, Color: \"Redd\" is no colour; the nearest is \"red\"",
            Line(6) + "Textbox Total, FontSize: \"12\" is not a size (a number with in, cm, mm, pt or pc)",
            Line(7) + "Textbox Total, BorderStyle, Left: \"Soild\" is not known; the nearest is \"Solid\"",
            Line(8) + "Textbox Total, BottomBorder, Style: \"Wavy\" is not known"));
}

TEST_F(Problems, AreNoneOfExpressionsAndOfWhatIsDrawn) {
    EXPECT_THAT(OfItems("<Textbox Name=\"t\"><Style><FontWeight>=\"Boldd\"</FontWeight><Color>#12F</Color>"
                        "<FontFamily>Nowhere</FontFamily><Format>Boldd</Format><FontSize>9pt</FontSize>"
                        "<Language>xx</Language><TextAlign/></Style><Value>Boldd</Value></Textbox>"),
                IsEmpty());
}

TEST_F(Problems, AreThoseOfChartsAndOfPagesToo) {
    EXPECT_THAT(
        Of("<Report><Body><Height>1in</Height><Style><BackgroundColor>Whit</BackgroundColor></Style>\n"
           "<ReportItems><Chart "
           "Name=\"c\"><Legend><Visible>true</Visible><Style><Color>Bleu</Color></Style></Legend>"
           "<ChartData><ChartSeries><DataPoints><DataPoint><DataValues><DataValue><Value>1</Value>"
           "</DataValue></DataValues></DataPoint></DataPoints></ChartSeries></ChartData></Chart>"
           "</ReportItems></Body></Report>"),
        ElementsAre(Line(1) + "Body, BackgroundColor: \"Whit\" is no colour; the nearest is \"white\"",
                    Line(2) + "Chart c, Legend, Color: \"Bleu\" is no colour; the nearest is \"blue\""));
}

TEST_F(Problems, AreAtMostAThousandAndALine) {
    std::string items;
    for (int i = 0; i < 1'002; ++i) {
        items += "<Line Name=\"l" + std::to_string(i) +
                 "\"><Style><BorderStyle><Default>Wavy</Default>"
                 "</BorderStyle></Style></Line>";
    }
    const std::vector<std::string> problems = OfItems(items);
    ASSERT_EQ(problems.size(), 1'001U);
    EXPECT_EQ(problems[999], Line(2) + "Line l999, BorderStyle, Default: \"Wavy\" is not known");
    EXPECT_EQ(problems[1000], "there are more");
}

TEST(StyleCheck, KnowsTheWordsOfTheFormat) {
    const std::vector<std::pair<P, std::vector<const char*>>> words = {
        {P::BackgroundGradientType,
         {"Default", "None", "LeftRight", "TopBottom", "Center", "DiagonalLeft", "DiagonalRight",
          "HorizontalCenter", "VerticalCenter"}},
        {P::BackgroundRepeat, {"Default", "Repeat", "NoRepeat", "RepeatX", "RepeatY", "Clip", "Fit"}},
        {P::BackgroundPosition,
         {"Default", "Top", "TopLeft", "TopRight", "Left", "Center", "Right", "BottomRight", "Bottom",
          "BottomLeft"}},
        {P::BorderStyleTop,
         {"Default", "None", "Dotted", "Dashed", "Solid", "Double", "DashDot", "DashDotDot", "Groove",
          "Ridge", "Inset", "WindowInset", "Outset"}},
        {P::Direction, {"Default", "LTR", "RTL", "rtl"}},
        {P::FontStyle, {"Default", "Normal", "Italic"}},
        {P::FontWeight,
         {"Default", "Normal", "Thin", "ExtraLight", "Light", "Lighter", "Medium", "SemiBold", "Bold",
          "Bolder", "ExtraBold", "Heavy", "100", "900"}},
        {P::TextAlign, {"Default", "General", "Left", "Center", "Right"}},
        {P::TextDecoration, {"Default", "None", "Underline", "Overline", "LineThrough"}},
        {P::VerticalAlign, {"Default", "Top", "Middle", "Bottom"}},
        {P::WritingMode, {"Default", "Horizontal", "Vertical", "Rotate270", "lr-tb", "tb-rl"}},
        {P::BorderColorLeft, {"Red", "lightgrey", "Transparent", "#102030", "#80102030"}},
        {P::PaddingTop, {"2pt", "1mm", "0.1in", "0pt"}},
    };
    for (const auto& [property, known] : words) {
        for (const char* word : known) {
            EXPECT_EQ(FlawOfStyle(property, word), "") << word;
        }
        EXPECT_NE(FlawOfStyle(property, "Zebra"), "") << known.front();
    }
    EXPECT_EQ(FlawOfStyle(P::FontWeight, "1001"), "\"1001\" is not known");
}

TEST(StyleCheck, ShowsTheBeginningOfALongValue) {
    EXPECT_EQ(FlawOfStyle(P::Color, std::string(100, 'x')),
              "\"" + std::string(80, 'x') + "...\" is no colour");
    EXPECT_EQ(FlawOfStyle(P::Color, "'red'"), "\"\"red\"\" is no colour");
}

}  // namespace
}  // namespace rdl::engine
