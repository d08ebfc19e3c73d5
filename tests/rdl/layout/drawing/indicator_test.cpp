// SPDX-License-Identifier: GPL-3.0-or-later
// Indicators, numbers and labels of gauge panels: which state counts, and what a value comes to.
#include <gmock/gmock.h>

#include <set>

#include "rdl/layout/drawing/gauge/indicator_icons.h"
#include "rdl/layout/drawing/gauge_report.h"
#include "rdl/values/error.h"

namespace rdl::layout {
namespace {

using testing::ElementsAre;

constexpr Color Red = 0xFFFF0000, Yellow = 0xFFFFFF00, Green = 0xFF008000;
const std::string Lights =
    State("0", "33", "Red") + State("33", "66", "Yellow") + State("66", "100", "Green");

Color ColorAt(const std::string& value, const std::string& states,
              const std::string& more = "<TransformationType>None</TransformationType>") {
    const auto paths = DrawGauges(Panel(Indicator(value, states, more))).Of<PathOp>();
    return paths.empty() ? Transparent : paths.front().fill;
}

TEST(StateIndicator, ValueIsInTheStateWhoseRangeHoldsIt) {
    EXPECT_EQ(ColorAt("10", Lights), Red);
    EXPECT_EQ(ColorAt("=Sum(Fields!Amount.Value)", Lights), Yellow);
    EXPECT_EQ(ColorAt("100", Lights), Green);
}

TEST(StateIndicator, ValueBetweenTwoStatesIsInTheOneThatBeginsThere) {
    EXPECT_EQ(ColorAt("33", Lights), Yellow);
    EXPECT_EQ(ColorAt("66", Lights), Green);
}

TEST(StateIndicator, EmptyEndIsOpen) {
    const std::string trend = State("", "-1", "Red") + State("0", "0", "Yellow") + State("1", "", "Green");
    EXPECT_EQ(ColorAt("-1000", trend), Red);
    EXPECT_EQ(ColorAt("0", trend), Yellow);
    EXPECT_EQ(ColorAt("1000", trend), Green);
}

TEST(StateIndicator, ValueOutsideOfAllStatesShowsNothing) {
    EXPECT_EQ(ColorAt("101", Lights), Transparent);
    EXPECT_EQ(ColorAt("=Nothing", Lights), Transparent);
}

TEST(StateIndicator, PercentagesAreOfItsMinimumAndMaximum) {
    const std::string ends = GaugeNumber("MinimumValue", "1000") + GaugeNumber("MaximumValue", "2000");
    const std::string percentage = "<TransformationType>Percentage</TransformationType>" + ends;
    EXPECT_EQ(ColorAt("1100", Lights, percentage), Red);
    EXPECT_EQ(ColorAt("1500", Lights, percentage), Yellow);
    EXPECT_EQ(ColorAt("2000", Lights, percentage), Green);
    EXPECT_EQ(ColorAt("1500", Lights, ends), Yellow);  // what is not said is a percentage
}

// Rows of a table with an indicator in their second cell; the colours of the rows.
std::vector<Color> ColorsOfRows(const std::string& panel, const std::string& members, Table table) {
    const BuiltKit kit =
        BuildKit(Report(Tablix(2,
                               RowOf(Cell("Name", "=Fields!Region.Value") +
                                     "<TablixCell><CellContents><GaugePanel Name=\"Panel\">" + panel +
                                     "</GaugePanel></CellContents></TablixCell>"),
                               members)),
                 std::move(table));
    std::vector<Color> colors;
    layout::TableRow row;
    for (std::size_t i = 0; i < kit.Table().RowCount(); ++i) {
        kit.Table().Row(i, row);
        Color color = Transparent;
        for (const Op& op : row.cells.at(1).content.drawing->content.ops) {
            if (const auto* path = std::get_if<PathOp>(&op)) {
                color = path->fill;
            }
        }
        colors.push_back(color);
    }
    return colors;
}

const std::string Details = "<TablixMember><Group Name=\"Details\"/></TablixMember>";
const std::string ByRegion =
    "<TablixMember><Group Name=\"Regions\"><GroupExpressions><GroupExpression>=Fields!Region.Value"
    "</GroupExpression></GroupExpressions></Group></TablixMember>";

Table Five() {
    return Sales({{"A", "x", 10}, {"A", "y", 30}, {"B", "x", 70}, {"B", "y", 110}, {"C", "x", 60}});
}

TEST(StateIndicator, StandsInEachRowForTheRowsValue) {
    EXPECT_THAT(ColorsOfRows(Indicator("=Fields!Amount.Value", Lights), Details, Five()),
                ElementsAre(Red, Red, Green, Transparent, Yellow));
}

TEST(StateIndicator, PercentagesInATableAreOfTheSmallestAndLargestRow) {
    // 10 to 110: 10, 30, 70, 110, 60 are 0, 20, 60, 100 and 50 percent.
    const std::string percentage =
        "<TransformationType>Percentage</TransformationType><TransformationScope>Sales</TransformationScope>";
    EXPECT_THAT(ColorsOfRows(Indicator("=Fields!Amount.Value", Lights, percentage), Details, Five()),
                ElementsAre(Red, Red, Yellow, Green, Yellow));
}

TEST(StateIndicator, PercentagesOfGroupsAreOfTheGroupsSums) {
    // Sums of 40, 180 and 60: 0, 100 and 14 percent.
    EXPECT_THAT(ColorsOfRows(Indicator("=Sum(Fields!Amount.Value)", Lights,
                                       "<TransformationScope>Sales</TransformationScope>"),
                             ByRegion, Five()),
                ElementsAre(Red, Green, Red));
}

TEST(StateIndicator, PercentagesWithinAGroupAreOfItsOwnRows) {
    const std::string members =
        "<TablixMember><Group Name=\"Regions\"><GroupExpressions><GroupExpression>=Fields!Region.Value"
        "</GroupExpression></GroupExpressions></Group><TablixMembers><TablixMember><Group Name=\"Rows\"/>"
        "</TablixMember></TablixMembers></TablixMember>";
    EXPECT_THAT(ColorsOfRows(Indicator("=Fields!Amount.Value", Lights,
                                       "<TransformationScope>Regions</TransformationScope>"),
                             members, Five()),
                ElementsAre(Red, Green, Red, Green, Green));  // one row alone is all there is
}

TEST(StateIndicator, PanelInACellMayAskForItsRowsByItsOwnName) {
    EXPECT_THAT(ColorsOfRows(Indicator("=Sum(Fields!Amount.Value, \"Panel\")", Lights), ByRegion, Five()),
                ElementsAre(Yellow, Transparent, Yellow));
}

TEST(StateIndicator, StyleOfTheIndicatorServesAStateThatHasNone) {
    const DrawnGauges drawn = DrawGauges(Panel(
        Indicator("5",
                  "<IndicatorState Name=\"S\">" + GaugeNumber("StartValue", "0") +
                      GaugeNumber("EndValue", "9") + "<Color>Red</Color></IndicatorState>",
                  "<TransformationType>None</TransformationType><IndicatorStyle>ArrowUp</IndicatorStyle>")));
    EXPECT_EQ(drawn.Drawing().description, "5, arrow up");
}

TEST(StateIndicator, IsAsLargeAsItsScaleFactorsSay) {
    const auto width = [](const std::string& factor) {
        const Reach reach =
            ReachOf(DrawGauges(Panel(Indicator("5", State("0", "9", "Red", "ButtonPlay"),
                                               "<TransformationType>None</TransformationType>" + factor)))
                        .Of<PathOp>()
                        .at(0));
        return reach.right - reach.left;
    };
    EXPECT_NEAR(width("<ScaleFactor>0.5</ScaleFactor>"), width("") / 2, 0.01);
}

constexpr const char* Icons[] = {"ArrowDown",
                                 "ArrowDownIncline",
                                 "ArrowSide",
                                 "ArrowUp",
                                 "ArrowUpIncline",
                                 "BoxesAllFilled",
                                 "BoxesNoneFilled",
                                 "BoxesOneFilled",
                                 "BoxesThreeFilled",
                                 "BoxesTwoFilled",
                                 "ButtonPause",
                                 "ButtonPlay",
                                 "ButtonStop",
                                 "Circle",
                                 "FaceFrown",
                                 "FaceNeutral",
                                 "FaceSmile",
                                 "Flag",
                                 "QuartersAllFilled",
                                 "QuartersNoneFilled",
                                 "QuartersOneFilled",
                                 "QuartersThreeFilled",
                                 "QuartersTwoFilled",
                                 "SignalMeterFourFilled",
                                 "SignalMeterNoneFilled",
                                 "SignalMeterOneFilled",
                                 "SignalMeterThreeFilled",
                                 "SignalMeterTwoFilled",
                                 "StarQuartersAllFilled",
                                 "StarQuartersNoneFilled",
                                 "StarQuartersOneFilled",
                                 "StarQuartersThreeFilled",
                                 "StarQuartersTwoFilled",
                                 "ThreeSignsDiamond",
                                 "ThreeSignsTriangle",
                                 "ThreeSymbolCheck",
                                 "ThreeSymbolCross",
                                 "ThreeSymbolExclamation",
                                 "ThreeSymbolUnCircledCheck",
                                 "ThreeSymbolUnCircledCross",
                                 "ThreeSymbolUnCircledExclamation",
                                 "TrafficLight",
                                 "TriangleDash",
                                 "TriangleDown",
                                 "TriangleUp"};

// What an icon draws, as a text that differs between two pictures. The icon must keep to its square of 20
// points.
std::string LooksOf(const char* icon) {
    Page page;
    Canvas canvas(page);
    DrawIcon(icon, {0, 0, 20, 20}, Red, canvas);
    std::string looks;
    for (const Op& op : page.ops) {
        if (const auto* path = std::get_if<PathOp>(&op)) {
            const Reach reach = ReachOf(*path);
            EXPECT_GE(reach.left, -0.5) << icon;
            EXPECT_LE(reach.right, 20.5) << icon;
            EXPECT_GE(reach.top, -0.5) << icon;
            EXPECT_LE(reach.bottom, 20.5) << icon;
            looks += "P" + std::to_string(path->fill) + "." + std::to_string(path->segments.size());
            for (const PathOp::Segment& segment : path->segments) {
                looks += "," + std::to_string(segment.x[0]) + ":" + std::to_string(segment.y[0]);
            }
        } else if (const auto* box = std::get_if<RectOp>(&op)) {
            looks += "R" + std::to_string(box->x) + ":" + std::to_string(box->color);
        } else if (const auto* clip = std::get_if<ClipOp>(&op)) {
            looks += "C" + std::to_string(clip->width);
        }
    }
    return looks;
}

TEST(StateIndicator, EveryIconIsAPictureOfItsOwn) {
    std::set<std::string> seen;
    for (const char* icon : Icons) {
        const std::string looks = LooksOf(icon);
        EXPECT_FALSE(looks.empty()) << icon;
        EXPECT_TRUE(seen.insert(looks).second) << icon;
    }
    EXPECT_EQ(LooksOf("None"), "");
}

TEST(StateIndicator, PictureOfAReportIsShownAsItIs) {
    const std::string states =
        "<IndicatorState Name=\"S\">" + GaugeNumber("StartValue", "0") + GaugeNumber("EndValue", "9") +
        "<IndicatorStyle>Image</IndicatorStyle><IndicatorImage><Source>Embedded</Source><Value>Sun</Value>"
        "</IndicatorImage></IndicatorState>";
    std::string report = Report(Panel(Indicator("5", states)));
    report.insert(
        report.find("<ReportSections>"),
        "<EmbeddedImages><EmbeddedImage Name=\"Sun\"><MIMEType>image/gif</MIMEType><ImageData>"
        "R0lGODlhAQABAIAAAP///wAAACwAAAAAAQABAAACAkQBADs=</ImageData></EmbeddedImage></EmbeddedImages>");
    const DrawnGauges drawn{BuildKit(report, Sales({{"A", "", 1}}))};
    ASSERT_EQ(drawn.Of<ImageOp>().size(), 1U);
    EXPECT_EQ(drawn.Of<ImageOp>().front().bytes->size(), 35U);
}

// What a formula makes of the sums of the regions A 40, B 180 and C 60.
std::string ByFormula(const std::string& formula) {
    const std::string groups =
        "<GaugeMember><Group Name=\"ByRegion\"><GroupExpressions><GroupExpression>=Fields!Region.Value"
        "</GroupExpression></GroupExpressions></Group></GaugeMember>";
    const auto texts =
        DrawGauges(Panel(Numeral("=Sum(Fields!Amount.Value)", "<Formula>" + formula + "</Formula>"), groups),
                   Five())
            .Texts();
    return texts.empty() ? std::string() : texts.front();
}

TEST(GaugeValue, FormulaIsOverTheGroupsOfThePanel) {
    EXPECT_EQ(ByFormula("Average"), "93.3333");
    EXPECT_EQ(ByFormula("Max"), "180");
    EXPECT_EQ(ByFormula("Min"), "40");
    EXPECT_EQ(ByFormula("Median"), "60");
    EXPECT_EQ(ByFormula("Variance"), "5,733.3333");
    EXPECT_EQ(ByFormula("None"), "60");  // the last
    EXPECT_EQ(ByFormula("Linear"), "60");
}

TEST(GaugeValue, IsMultipliedBeforeTheConstantIsAdded) {
    EXPECT_THAT(DrawGauges(Panel(Numeral("=Sum(Fields!Amount.Value)",
                                         "<Multiplier>2</Multiplier><AddConstant>7</AddConstant>")))
                    .Texts(),
                ElementsAre("107"));
}

TEST(GaugeValue, IsOfTheRowsThatThePanelsFilterLeaves) {
    EXPECT_THAT(DrawGauges(Panel(Numeral("=Sum(Fields!Amount.Value)"),
                                 "<Filters><Filter><FilterExpression>=Fields!Region.Value</FilterExpression>"
                                 "<Operator>Equal</Operator><FilterValues><FilterValue>B</FilterValue>"
                                 "</FilterValues></Filter></Filters>"),
                           Five())
                    .Texts(),
                ElementsAre("180"));
}

TEST(NumericIndicator, ShowsItsValueAsTheFormatSays) {
    EXPECT_THAT(DrawGauges(Panel(Numeral("1234.567", "", "<Style><Format>N1</Format></Style>"))).Texts(),
                ElementsAre("1,234.6"));
    EXPECT_THAT(DrawGauges(Panel(Numeral("1234.5", "", "<DecimalDigits>2</DecimalDigits>"))).Texts(),
                ElementsAre("1,234.50"));
    EXPECT_THAT(DrawGauges(Panel(Numeral("5", "", "<ShowSign>Both</ShowSign>"))).Texts(), ElementsAre("+5"));
}

TEST(NumericIndicator, ValueOutOfItsRangeIsSaidInWords) {
    const std::string range = GaugeNumber("MaximumValue", "10");
    EXPECT_THAT(
        DrawGauges(Panel(Numeral("11", "", range + "<OutOfRangeString>too much</OutOfRangeString>"))).Texts(),
        ElementsAre("too much"));
    EXPECT_THAT(
        DrawGauges(Panel(Numeral("=Nothing", "", "<NonNumericString>none</NonNumericString>"))).Texts(),
        ElementsAre("none"));
}

TEST(NumericIndicator, RangeGivesTheColourOfItsDigits) {
    const DrawnGauges drawn =
        DrawGauges(Panel(Numeral("5", "",
                                 "<NumericIndicatorRanges><NumericIndicatorRange Name=\"R\">" +
                                     GaugeNumber("StartValue", "0") + GaugeNumber("EndValue", "9") +
                                     "<DigitColor>Red</DigitColor></NumericIndicatorRange>"
                                     "</NumericIndicatorRanges>")));
    EXPECT_EQ(drawn.Of<TextOp>().at(0).color, Red);
}

std::string Label(const std::string& text, const std::string& more) {
    return "<GaugeLabels><GaugeLabel Name=\"L\"><Text>" + text + "</Text>" + more +
           "</GaugeLabel></GaugeLabels>";
}

TEST(GaugeLabel, LettersAreMadeToFitUnlessTheyKeepTheirSize) {
    const std::string style = "<Style><FontSize>12pt</FontSize></Style>";
    EXPECT_FLOAT_EQ(
        DrawGauges(Panel(Label("Go", style + "<ResizeMode>None</ResizeMode>"))).Of<TextOp>().at(0).size, 12);
    EXPECT_GT(DrawGauges(Panel(Label("Go", style))).Of<TextOp>().at(0).size, 50);
}

TEST(GaugeLabel, StandsWhereItsPercentagesSay) {
    const DrawnGauges drawn =
        DrawGauges(Panel(Label("=\"Sum \" &amp; Sum(Fields!Amount.Value)",
                               "<ResizeMode>None</ResizeMode><Left>50</Left><Top>80</Top><Width>50</Width>"
                               "<Height>20</Height>")));
    EXPECT_THAT(drawn.Texts(), ElementsAre("Sum 50"));
    EXPECT_NEAR(drawn.Of<TextOp>().at(0).x, 150, 0.5);
    EXPECT_GT(drawn.Of<TextOp>().at(0).baseline, 80);
}

TEST(GaugeLabel, LiesWithinTheGaugeThatIsItsParent) {
    const std::string gauge =
        RadialGauge("", BareScale, "<Left>50</Left><Top>0</Top><Width>50</Width><Height>100</Height>");
    const DrawnGauges drawn = DrawGauges(
        Panel(gauge + Label("Here",
                            "<ParentItem>RadialGauges.Dial</ParentItem><ResizeMode>None</ResizeMode>"
                            "<Left>50</Left><Top>0</Top>")));
    EXPECT_NEAR(drawn.Of<TextOp>().at(0).x, 150 + 75, 0.5);
}

TEST(GaugePanel, GaugesThatSayNoPlaceStandBesideEachOther) {
    const std::string play = State("0", "9", "Red", "ButtonPlay");
    std::string gauges = Indicator("5", play) + Indicator("5", play);
    const std::string between = "</StateIndicators><StateIndicators>";
    gauges.erase(gauges.find(between), between.size());
    const auto paths = DrawGauges(Panel(gauges)).Of<PathOp>();
    ASSERT_EQ(paths.size(), 2U);
    EXPECT_NEAR(ReachOf(paths[1]).left - ReachOf(paths[0]).left, 150, 0.01);
    EXPECT_NEAR(ReachOf(paths[1]).top, ReachOf(paths[0]).top, 0.01);
}

TEST(GaugePanel, HiddenOneIsNotThere) {
    const DrawnGauges drawn =
        DrawGauges(Panel(Numeral("1"), "<Visibility><Hidden>=1=1</Hidden></Visibility>"));
    EXPECT_TRUE(drawn.kit.report->sections.front()->items.empty());
}

TEST(GaugePanel, LeadsWhereItsFirstGaugeDoes) {
    const DrawnGauges drawn = DrawGauges(Panel(Numeral(
        "1", "",
        "<ActionInfo><Actions><Action><Hyperlink>https://example.com/targets</Hyperlink></Action></Actions>"
        "</ActionInfo>")));
    EXPECT_EQ(drawn.Item().hyperlink, "https://example.com/targets");
}

TEST(GaugePanel, NeedsNoDataSetAmongSeveral) {
    std::string report =
        Report("<GaugePanel Name=\"Panel\">" + Numeral("=Sum(Fields!Amount.Value, \"Data\")") +
               "<Width>300pt</Width><Height>100pt</Height></GaugePanel>");
    report.insert(report.find("</DataSets>"),
                  "<DataSet Name=\"Other\"><Query><DataSourceName>S</DataSourceName><CommandText>x"
                  "</CommandText></Query><Fields><Field Name=\"X\"><DataField>X</DataField></Field></Fields>"
                  "</DataSet>");
    EXPECT_THAT(DrawnGauges{BuildKit(report, Five())}.Texts(), ElementsAre("280"));
}

TEST(GaugePanel, LooksThatComeAgainArePaintedOnce) {
    const std::string source = Report(
        Tablix(1,
               RowOf("<TablixCell><CellContents><GaugePanel Name=\"Panel\">" +
                     Indicator("=Fields!Amount.Value", Lights) + "</GaugePanel></CellContents></TablixCell>"),
               Details));
    const Definition definition = ParseDefinition(source, "test.rdl");
    int painted = 0;
    ReportInput input;
    input.definition = &definition;
    input.tables.emplace("Data", Five());
    input.drawings = Drawings::Pictures;
    input.paint = [&painted](const DrawingInstance&) {
        ++painted;
        return std::make_shared<const std::string>("picture " + std::to_string(painted));
    };
    const auto report = Build(std::move(input));
    TableInstance& table = *report->sections.front()->items.front().table;
    std::vector<std::string> pictures;
    layout::TableRow row;
    for (std::size_t i = 0; i < table.RowCount(); ++i) {
        table.Row(i, row);
        pictures.push_back(*row.cells.at(0).content.imageBytes);
    }
    EXPECT_THAT(pictures, ElementsAre("picture 1", "picture 1", "picture 2", "picture 3", "picture 4"));
    EXPECT_EQ(row.cells.at(0).content.toolTip, "60, circle");
}

TEST(GaugeValue, MedianOfAnEvenCountLiesBetweenTheTwoInTheMiddle) {
    const std::string groups =
        "<GaugeMember><Group Name=\"ByRegion\"><GroupExpressions><GroupExpression>=Fields!Region.Value"
        "</GroupExpression></GroupExpressions></Group></GaugeMember>";
    EXPECT_THAT(DrawGauges(Panel(Numeral("=Sum(Fields!Amount.Value)", "<Formula>Median</Formula>"), groups),
                           Sales({{"A", "", 80}, {"B", "", 10}, {"C", "", 40}, {"D", "", 20}}))
                    .Texts(),
                ElementsAre("30"));
}

}  // namespace
}  // namespace rdl::layout
