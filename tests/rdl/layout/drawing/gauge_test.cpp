// SPDX-License-Identifier: GPL-3.0-or-later
// Gauges: where pointers, ranges, ticks and labels stand.
#include "rdl/layout/drawing/canvas.h"
#include "rdl/layout/drawing/gauge_report.h"

#include <gmock/gmock.h>

#include <cmath>
#include <numbers>

namespace rdl::layout {
namespace {

using testing::ElementsAre;
using testing::IsSupersetOf;

constexpr Color Red = 0xFFFF0000;
const std::string Half = "<StartAngle>90</StartAngle><SweepAngle>180</SweepAngle>";
const std::string NoCap = "<PointerCap><Hidden>true</Hidden></PointerCap>";

// The corner of a needle that is farthest from the pivot.
Spot TipOf(const PathOp& needle, Spot pivot) {
    Spot tip = pivot;
    double farthest = 0;
    for (const PathOp::Segment& segment : needle.segments) {
        const double distance = std::hypot(segment.x[0] - pivot.x, segment.y[0] - pivot.y);
        if (segment.kind != PathOp::Segment::Close && distance > farthest) {
            farthest = distance;
            tip = {segment.x[0], segment.y[0]};
        }
    }
    return tip;
}

Spot NeedleAt(const std::string& value, const std::string& scale) {
    const DrawnGauges drawn =
        DrawGauges(Panel(RadialGauge(Pointer("Radial", value, NoCap + Colored("Red")), BareScale + scale)));
    const auto needles = drawn.Filled(Red);
    EXPECT_EQ(needles.size(), 1U);
    return needles.empty() ? Spot() : TipOf(needles.front(), {150, 50});
}

TEST(RadialGauge, AnglesAreToldClockwiseFromBelow) {
    const Spot lowest = NeedleAt("0", Half), middle = NeedleAt("50", Half), highest = NeedleAt("100", Half);
    EXPECT_LT(lowest.x, 150);
    EXPECT_NEAR(lowest.y, 50, 0.01);
    EXPECT_NEAR(middle.x, 150, 0.01);
    EXPECT_LT(middle.y, 50);
    EXPECT_GT(highest.x, 150);
    EXPECT_NEAR(highest.y, 50, 0.01);
}

TEST(RadialGauge, ScaleThatSaysNothingIsFrom0To100Over320DegreesWithARadiusOf37Percent) {
    const double degree = std::numbers::pi / 180;
    const Spot lowest = NeedleAt("0", ""), quarter = NeedleAt("25", "");
    EXPECT_NEAR(lowest.x, 150 - 37 * std::sin(20 * degree), 0.01);
    EXPECT_NEAR(lowest.y, 50 + 37 * std::cos(20 * degree), 0.01);
    EXPECT_NEAR(quarter.x, 150 - 37 * std::sin(100 * degree), 0.01);
    EXPECT_NEAR(quarter.y, 50 + 37 * std::cos(100 * degree), 0.01);
}

TEST(RadialGauge, PivotAndRadiusAreInPercentOfTheGauge) {
    const DrawnGauges drawn =
        DrawGauges(Panel(RadialGauge(Pointer("Radial", "50", NoCap + Colored("Red")),
                                     BareScale + Half + "<Radius>60</Radius>", "<PivotY>75</PivotY>")));
    const Reach needle = ReachOf(drawn.Filled(Red).at(0));
    EXPECT_NEAR(needle.bottom, 75, 0.01);
    EXPECT_NEAR(needle.top, 15, 0.01);
}

TEST(RadialGauge, ReversedScaleRunsTheOtherWay) {
    EXPECT_GT(NeedleAt("0", Half + "<Reversed>true</Reversed>").x, 150);
}

TEST(RadialGauge, EndsOfTheScaleMayBeExpressions) {
    const Spot tip = NeedleAt("30", Half + GaugeNumber("MinimumValue", "=10") +
                                        GaugeNumber("MaximumValue", "=Sum(Fields!Amount.Value)"));
    EXPECT_NEAR(tip.x, 150, 0.01);  // from 10 to 50
}

TEST(RadialGauge, PointerBeyondTheScaleStopsAtItsEnd) {
    EXPECT_NEAR(NeedleAt("1000", Half).x, NeedleAt("100", Half).x, 0.01);
    EXPECT_NEAR(NeedleAt("-5", Half).x, NeedleAt("0", Half).x, 0.01);
}

TEST(RadialGauge, SnappedPointerStandsAtTheNearestStep) {
    const DrawnGauges drawn = DrawGauges(Panel(RadialGauge(
        Pointer("Radial", "52",
                NoCap + Colored("Red") +
                    "<SnappingEnabled>true</SnappingEnabled><SnappingInterval>10</SnappingInterval>"),
        BareScale + Half)));
    EXPECT_NEAR(TipOf(drawn.Filled(Red).at(0), {150, 50}).x, 150, 0.01);
}

TEST(RadialGauge, PointerWithoutAValueIsNotThere) {
    const DrawnGauges drawn = DrawGauges(
        Panel(RadialGauge(Pointer("Radial", "=Nothing", NoCap + Colored("Red")), BareScale + Half)));
    EXPECT_TRUE(drawn.Of<PathOp>().empty());
}

TEST(RadialGauge, LabelsStandAtEachInterval) {
    const DrawnGauges drawn = DrawGauges(Panel(RadialGauge("", "<Interval>25</Interval>" + Half)));
    EXPECT_THAT(drawn.Texts(), ElementsAre("0", "25", "50", "75", "100"));
}

TEST(RadialGauge, LabelsAreMultipliedAndFormatted) {
    const DrawnGauges drawn = DrawGauges(
        Panel(RadialGauge("", GaugeNumber("MaximumValue", "4000") + "<Interval>2000</Interval>" +
                                  "<Multiplier>0.001</Multiplier><ScaleLabels><Style><Format>0.0</Format>"
                                  "</Style></ScaleLabels>" +
                                  Half)));
    EXPECT_THAT(drawn.Texts(), ElementsAre("0.0", "2.0", "4.0"));
}

TEST(RadialGauge, LastLabelOfAWholeCircleDoesNotStandUponTheFirst) {
    const DrawnGauges drawn = DrawGauges(Panel(RadialGauge(
        "", GaugeNumber("MaximumValue", "12") +
                "<Interval>3</Interval><StartAngle>180</StartAngle><SweepAngle>360</SweepAngle>")));
    EXPECT_THAT(drawn.Texts(), ElementsAre("0", "3", "6", "9"));
}

TEST(RadialGauge, EndLabelsMayBeLeftOut) {
    const DrawnGauges drawn = DrawGauges(
        Panel(RadialGauge("",
                          "<Interval>50</Interval><ScaleLabels><ShowEndLabels>false</ShowEndLabels>"
                          "</ScaleLabels>" +
                              Half)));
    EXPECT_THAT(drawn.Texts(), ElementsAre("50"));
}

TEST(RadialGauge, OwnLabelsStandBesideTheScales) {
    const DrawnGauges drawn = DrawGauges(Panel(RadialGauge(
        "", BareScale + Half +
                "<CustomLabels><CustomLabel Name=\"C\"><Text>Full</Text><Value>100</Value></CustomLabel>"
                "</CustomLabels>")));
    EXPECT_THAT(drawn.Texts(), ElementsAre("Full"));
}

TEST(RadialGauge, MinorTicksStandBetweenMajorOnes) {
    const auto ticks = [](const std::string& hidden) {
        return DrawGauges(
                   Panel(RadialGauge("",
                                     "<Interval>50</Interval><Width>0</Width><ScaleLabels><Hidden>true"
                                     "</Hidden></ScaleLabels><GaugeMinorTickMarks><Interval>10</Interval>" +
                                         hidden + "</GaugeMinorTickMarks>" + Half)))
            .Of<PathOp>()
            .size();
    };
    EXPECT_EQ(ticks(""), 3U + 11U);
    EXPECT_EQ(ticks("<Hidden>true</Hidden>"), 3U);
}

TEST(RadialGauge, LogarithmicScaleHasPowersAtEqualDistances) {
    const Spot tip =
        NeedleAt("100", Half + "<Logarithmic>true</Logarithmic>" + GaugeNumber("MinimumValue", "1") +
                            GaugeNumber("MaximumValue", "10000"));
    EXPECT_NEAR(tip.x, 150, 0.01);
}

TEST(RadialGauge, CapLiesOverTheNeedle) {
    const DrawnGauges drawn = DrawGauges(Panel(RadialGauge(
        Pointer("Radial", "50", "<PointerCap>" + Colored("Red") + "</PointerCap>"), BareScale + Half)));
    ASSERT_EQ(drawn.Of<PathOp>().size(), 2U);
    EXPECT_EQ(drawn.Of<PathOp>().back().fill, Red);
}

TEST(RadialGauge, ColourOfAGradientIsTheMiddleOfItsTwo) {
    const DrawnGauges drawn = DrawGauges(Panel(RadialGauge(
        Pointer("Radial", "50",
                NoCap + "<Style><BackgroundColor>White</BackgroundColor><BackgroundGradientType>LeftRight"
                        "</BackgroundGradientType><BackgroundGradientEndColor>Black"
                        "</BackgroundGradientEndColor></Style>"),
        BareScale + Half)));
    EXPECT_EQ(drawn.Of<PathOp>().at(0).fill, 0xFF7F7F7FU);
}

TEST(RadialGauge, FrameIsAnOutlineWithAFaceInIt) {
    const DrawnGauges drawn = DrawGauges(
        Panel(RadialGauge("", BareScale,
                          "<BackFrame><FrameStyle>Simple</FrameStyle>" + Colored("Red") +
                              "<FrameBackground>" + Colored("Blue") + "</FrameBackground></BackFrame>")));
    ASSERT_EQ(drawn.Of<PathOp>().size(), 2U);
    const Reach outer = ReachOf(drawn.Filled(Red).at(0)), inner = ReachOf(drawn.Filled(0xFF0000FF).at(0));
    EXPECT_NEAR(outer.right - outer.left, 100, 0.5);
    EXPECT_NEAR(inner.right - inner.left, 92, 0.5);
}

TEST(RadialGauge, FrameThatIsCutGoesAroundTheScale) {
    const DrawnGauges drawn = DrawGauges(Panel(RadialGauge(
        "", BareScale + Half + "<Radius>54</Radius>",
        "<PivotY>75</PivotY><BackFrame><FrameStyle>Edged</FrameStyle><FrameShape>CustomSemiCircularN1"
        "</FrameShape><FrameWidth>0</FrameWidth><FrameBackground>" +
            Colored("Red") + "</FrameBackground></BackFrame>")));
    const Reach face = ReachOf(drawn.Filled(Red).at(0));
    EXPECT_LT(face.left, 150 - 54);
    EXPECT_GT(face.right, 150 + 54);
    EXPECT_LT(face.top, 75 - 54);
    EXPECT_NEAR(face.bottom, 75 + 0.3 * 54, 0.01);
}

TEST(LinearGauge, BarReachesFromTheScalesBeginningToTheValue) {
    const DrawnGauges drawn = DrawGauges(Panel(
        LinearGauge(Pointer("Linear", "=Sum(Fields!Amount.Value)",
                            "<Type>Bar</Type><Width>20</Width><Placement>Cross</Placement>" + Colored("Red")),
                    BareScale)));
    const Reach bar = ReachOf(drawn.Filled(Red).at(0));
    EXPECT_NEAR(bar.left, 24, 0.01);  // the margins are 8 percent
    EXPECT_NEAR(bar.right, 150, 0.01);
    EXPECT_NEAR(bar.top, 40, 0.01);
    EXPECT_NEAR(bar.bottom, 60, 0.01);
}

TEST(LinearGauge, BarMayBeginAtZero) {
    const DrawnGauges drawn = DrawGauges(Panel(
        LinearGauge(Pointer("Linear", "-25", "<Type>Bar</Type><BarStart>Zero</BarStart>" + Colored("Red")),
                    BareScale + GaugeNumber("MinimumValue", "-50") + GaugeNumber("MaximumValue", "50") +
                        "<StartMargin>0</StartMargin><EndMargin>0</EndMargin>")));
    const Reach bar = ReachOf(drawn.Filled(Red).at(0));
    EXPECT_NEAR(bar.left, 75, 0.01);
    EXPECT_NEAR(bar.right, 150, 0.01);
}

TEST(LinearGauge, OneThatIsTallerThanWideStandsUpright) {
    const std::string gauges = LinearGauge(Pointer("Linear", "50", "<Type>Bar</Type>" + Colored("Red")),
                                           BareScale +
                                               "<StartMargin>0"
                                               "</StartMargin>",
                                           "<Left>0</Left><Top>0</Top><Width>10</Width><Height>100</Height>");
    const Reach bar = ReachOf(DrawGauges(Panel(gauges)).Filled(Red).at(0));
    EXPECT_NEAR(bar.bottom, 100, 0.01);
    EXPECT_NEAR(bar.top, 54, 0.01);
    EXPECT_NEAR((bar.left + bar.right) / 2, 15, 0.01);
}

TEST(LinearGauge, MarkerLiesBesideTheScaleWhereItIsPlaced) {
    const auto marker = [](const std::string& placement) {
        return ReachOf(
            DrawGauges(Panel(LinearGauge(Pointer("Linear", "50",
                                                 "<MarkerStyle>Rectangle</MarkerStyle><MarkerLength>10"
                                                 "</MarkerLength><Width>4</Width><Placement>" +
                                                     placement + "</Placement>" + Colored("Red")),
                                         BareScale)))
                .Filled(Red)
                .at(0));
    };
    EXPECT_NEAR(marker("Cross").top, 45, 0.01);
    EXPECT_NEAR(marker("Cross").left, 148, 0.01);
    EXPECT_NEAR(marker("Inside").bottom, 50, 0.01);
    EXPECT_NEAR(marker("Outside").top, 50, 0.01);
}

TEST(LinearGauge, EveryMarkerStyleHasAShape) {
    for (const char* style :
         {"Triangle", "Rectangle", "Circle", "Diamond", "Trapezoid", "Star", "Wedge", "Pentagon"}) {
        const auto drawn = DrawGauges(Panel(LinearGauge(
            Pointer("Linear", "50", std::string("<MarkerStyle>") + style + "</MarkerStyle>" + Colored("Red")),
            BareScale)));
        EXPECT_EQ(drawn.Filled(Red).size(), 1U) << style;
    }
    EXPECT_TRUE(DrawGauges(Panel(LinearGauge(
                               Pointer("Linear", "50", "<MarkerStyle>None</MarkerStyle>" + Colored("Red")),
                               BareScale)))
                    .Filled(Red)
                    .empty());
}

TEST(LinearGauge, ThermometerHasABulbBeforeItsScale) {
    const DrawnGauges drawn = DrawGauges(
        Panel(LinearGauge(Pointer("Linear", "50", "<Type>Thermometer</Type>" + Colored("Red")), BareScale)));
    ASSERT_EQ(drawn.Filled(Red).size(), 2U);
    EXPECT_NEAR(ReachOf(drawn.Filled(Red)[0]).right, 150, 0.01);
    EXPECT_LT(ReachOf(drawn.Filled(Red)[1]).left, 24);
}

TEST(LinearGauge, RangeIsABandBetweenItsValues) {
    const DrawnGauges drawn = DrawGauges(Panel(LinearGauge(
        "", BareScale +
                "<StartMargin>0</StartMargin><EndMargin>0</EndMargin><ScaleRanges><ScaleRange "
                "Name=\"R\">" +
                GaugeNumber("StartValue", "20") + GaugeNumber("EndValue", "60") +
                "<StartWidth>10</StartWidth><EndWidth>30</EndWidth><DistanceFromScale>0</DistanceFromScale>"
                "<Placement>Outside</Placement>" +
                Colored("Red") + "</ScaleRange></ScaleRanges>")));
    const PathOp range = drawn.Filled(Red).at(0);
    EXPECT_NEAR(ReachOf(range).left, 60, 0.01);
    EXPECT_NEAR(ReachOf(range).right, 180, 0.01);
    EXPECT_NEAR(ReachOf(range).top, 50, 0.01);
    EXPECT_NEAR(ReachOf(range).bottom, 80, 0.01);  // at its wider end
}

TEST(LinearGauge, RangeColoursTheBarAndTheLabelsThatAreInIt) {
    const DrawnGauges drawn = DrawGauges(Panel(LinearGauge(
        Pointer("Linear", "50", "<Type>Bar</Type>"),
        "<Interval>50</Interval><ScaleRanges><ScaleRange Name=\"R\">" + GaugeNumber("StartValue", "40") +
            GaugeNumber("EndValue", "60") +
            "<InRangeBarPointerColor>Red</InRangeBarPointerColor><InRangeLabelColor>Red</InRangeLabelColor>"
            "</ScaleRange></ScaleRanges>")));
    EXPECT_EQ(drawn.Filled(Red).size(), 1U);
    std::vector<bool> red;
    for (const TextOp& text : drawn.Of<TextOp>()) {
        red.push_back(text.color == Red);
    }
    EXPECT_THAT(red, ElementsAre(false, true, false));
}

TEST(LinearGauge, HiddenPartsAreNotThere) {
    const std::string hidden = "<Hidden>=1=1</Hidden>";
    EXPECT_TRUE(
        DrawGauges(Panel(LinearGauge(Pointer("Linear", "50", hidden), BareScale))).Of<PathOp>().empty());
    EXPECT_TRUE(
        DrawGauges(Panel(LinearGauge(Pointer("Linear", "50"), "", hidden))).Drawing().content.ops.empty());
}

TEST(GaugePanel, SaysItsValuesToThoseWhoCannotSeeIt) {
    EXPECT_EQ(DrawGauges(Panel(LinearGauge(Pointer("Linear", "50"), ""))).Drawing().description,
              "50 (0 to 100)");
    EXPECT_EQ(DrawGauges(Panel(LinearGauge(Pointer("Linear", "50"), "",
                                           "<ToolTip>=\"Half: \" &amp; Sum(Fields!Amount.Value)</ToolTip>")))
                  .Drawing()
                  .description,
              "Half: 50");
}

}  // namespace
}  // namespace rdl::layout
