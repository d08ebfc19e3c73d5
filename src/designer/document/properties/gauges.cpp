// SPDX-License-Identifier: GPL-3.0-or-later
// Of gauges and indicators.
#include "designer/document/properties/property_table.h"

namespace designer {
namespace {

using enum PropertyKind;
constexpr auto Allowed = Expressions::Allowed;
constexpr auto No = Expressions::No;

constexpr std::string_view Formulas = "None Average Linear Max Median Min Variance";
constexpr std::string_view Placements = "Inside Outside Cross";
constexpr std::string_view Shapes = "None Rectangle Triangle Circle Diamond Trapezoid Star Wedge Pentagon";
constexpr std::string_view Icons =
    "ArrowDown ArrowDownIncline ArrowSide ArrowUp ArrowUpIncline BoxesAllFilled BoxesNoneFilled "
    "BoxesOneFilled "
    "BoxesThreeFilled BoxesTwoFilled CirclesAllFilled Flag LightArrowDown LightArrowDownIncline "
    "LightArrowSide "
    "LightArrowUp LightArrowUpIncline QuartersAllFilled QuartersNoneFilled QuartersOneFilled "
    "QuartersThreeFilled "
    "QuartersTwoFilled SignalMeterFourFilled SignalMeterNoneFilled SignalMeterOneFilled "
    "SignalMeterThreeFilled "
    "SignalMeterTwoFilled StarQuartersAllFilled StarQuartersNoneFilled StarQuartersOneFilled "
    "StarQuartersThreeFilled "
    "StarQuartersTwoFilled ThreeSignsCircle ThreeSignsDiamond ThreeSignsTriangle ThreeSymbolCheck "
    "ThreeSymbolCross "
    "ThreeSymbolExclamation ThreeSymbolUnCircledCheck ThreeSymbolUnCircledCross "
    "ThreeSymbolUnCircledExclamation "
    "TrafficLight TrafficLightUnrimmed TriangleDash TriangleDown TriangleUp ButtonPause ButtonPlay "
    "ButtonStop "
    "FaceFrown FaceNeutral FaceSmile Image None";

constexpr Property OfPanels[] = {{"Automatic layout", "Layout", "AutoLayout", Boolean, Allowed, "true"}};

// Percentages of the panel, or of the gauge that ParentItem names.
constexpr Property OfParts[] = {
    {"Name", "General", "@Name", Text},
    {"Left", "Position", "Left", Number, Allowed},
    {"Top", "Position", "Top", Number, Allowed},
    {"Width", "Position", "Width", Number, Allowed},
    {"Height", "Position", "Height", Number, Allowed},
    {"Order", "Position", "ZIndex", Integer, No, "0"},
    {"Hidden", "Visibility", "Hidden", Boolean, Allowed, "false"},
    {"Tool tip", "Navigation", "ToolTip", Text, Allowed},
    {"Parent", "Position", "ParentItem", Text},
};

constexpr Property OfDials[] = {
    {"Pivot X", "Layout", "PivotX", Number, Allowed, "50"},
    {"Pivot Y", "Layout", "PivotY", Number, Allowed, "50"},
};
constexpr Property OfLinear[] = {
    {"Orientation", "Layout", "Orientation", Words, Allowed, "Auto", "Auto Horizontal Vertical"}};

constexpr Property OfScales[] = {
    {"Minimum", "Scale", "MinimumValue/Value", Number, Allowed, "0"},
    {"Maximum", "Scale", "MaximumValue/Value", Number, Allowed, "100"},
    {"Multiplier", "Scale", "Multiplier", Number, Allowed, "1"},
    {"Interval", "Scale", "Interval", Number, Allowed},
    {"Interval offset", "Scale", "IntervalOffset", Number, Allowed},
    {"Logarithmic", "Scale", "Logarithmic", Boolean, Allowed, "false"},
    {"Base of logarithms", "Scale", "LogarithmicBase", Number, Allowed, "10"},
    {"Reversed", "Scale", "Reversed", Boolean, Allowed, "false"},
    {"Width", "Look", "Width", Number, Allowed, "5"},
    {"Ticks on top", "Look", "TickMarksOnTop", Boolean, Allowed, "false"},
};
constexpr Property OfRadialScales[] = {
    {"Radius", "Layout", "Radius", Number, Allowed, "37"},
    {"Start angle", "Layout", "StartAngle", Number, Allowed, "20"},
    {"Sweep angle", "Layout", "SweepAngle", Number, Allowed, "320"},
};
constexpr Property OfLinearScales[] = {
    {"Start margin", "Layout", "StartMargin", Number, Allowed, "8"},
    {"End margin", "Layout", "EndMargin", Number, Allowed, "8"},
    {"Position", "Layout", "Position", Number, Allowed, "50"},
};
constexpr Property OfLabels[] = {
    {"Placement", "Layout", "Placement", Words, Allowed, "Inside", Placements},
    {"Distance from scale", "Layout", "DistanceFromScale", Number, Allowed, "2"},
    {"Angle of font", "Layout", "FontAngle", Number, Allowed, "0"},
    {"Rotate labels", "Layout", "RotateLabels", Boolean, Allowed, "false"},
    {"Upside down", "Layout", "AllowUpsideDown", Boolean, Allowed, "false"},
    {"Labels at ends", "Layout", "ShowEndLabels", Boolean, Allowed, "true"},
    {"Interval", "Scale", "Interval", Number, Allowed},
    {"Interval offset", "Scale", "IntervalOffset", Number, Allowed},
    {"Hidden", "Visibility", "Hidden", Boolean, Allowed, "false"},
    {"Font size in percent", "Font", "UseFontPercent", Boolean, Allowed, "false"},
};
constexpr Property OfTicks[] = {
    {"Placement", "Layout", "Placement", Words, Allowed, "Cross", Placements},
    {"Shape", "Look", "Shape", Words, Allowed, "Rectangle", Shapes},
    {"Length", "Look", "Length", Number, Allowed},
    {"Width", "Look", "Width", Number, Allowed},
    {"Interval", "Scale", "Interval", Number, Allowed},
    {"Interval offset", "Scale", "IntervalOffset", Number, Allowed},
    {"Hidden", "Visibility", "Hidden", Boolean, Allowed, "false"},
    {"Distance from scale", "Layout", "DistanceFromScale", Number, Allowed, "0"},
};
constexpr Property OfRanges[] = {
    {"Start value", "Values", "StartValue/Value", Number, Allowed},
    {"End value", "Values", "EndValue/Value", Number, Allowed},
    {"Start width", "Look", "StartWidth", Number, Allowed},
    {"End width", "Look", "EndWidth", Number, Allowed},
    {"Placement", "Layout", "Placement", Words, Allowed, "Inside", Placements},
    {"Distance from scale", "Layout", "DistanceFromScale", Number, Allowed},
    {"Hidden", "Visibility", "Hidden", Boolean, Allowed, "false"},
};
constexpr Property OfCustomLabels[] = {
    {"Text", "General", "Text", Text, Allowed},
    {"Value", "Values", "Value", Number, Allowed},
    {"Placement", "Layout", "Placement", Words, Allowed, "Inside", Placements},
    {"Distance from scale", "Layout", "DistanceFromScale", Number, Allowed, "2"},
    {"Angle of font", "Layout", "FontAngle", Number, Allowed, "0"},
    {"Rotate labels", "Layout", "RotateLabels", Boolean, Allowed, "false"},
    {"Upside down", "Layout", "AllowUpsideDown", Boolean, Allowed, "false"},
    {"Hidden", "Visibility", "Hidden", Boolean, Allowed, "false"},
};
constexpr Property OfCaps[] = {
    {"Width", "Look", "Width", Number, Allowed, "26"},
    {"On top of the needle", "Look", "OnTop", Boolean, Allowed, "true"},
    {"Hidden", "Visibility", "Hidden", Boolean, Allowed, "false"},
};
constexpr Property OfThermometers[] = {
    {"Size of the bulb", "Look", "BulbSize", Number, Allowed, "50"},
    {"Offset of the bulb", "Look", "BulbOffset", Number, Allowed, "5"},
};

constexpr Property OfInputs[] = {
    {"Value", "Values", "GaugeInputValue/Value", Text, Allowed},
    {"Formula", "Values", "GaugeInputValue/Formula", Words, No, "None", Formulas},
    {"Multiplied by", "Values", "GaugeInputValue/Multiplier", Number, Allowed, "1"},
    {"Added", "Values", "GaugeInputValue/AddConstant", Number, Allowed, "0"},
};
constexpr Property OfPointers[] = {
    {"Type", "Look", "Type", Words, No, "", "Needle Marker Bar Thermometer"},
    {"Needle", "Look", "NeedleStyle", Words, Allowed, "Triangular",
     "Triangular Rectangular TaperedWithTail Tapered ArrowWithTail Arrow StealthArrowWithTail StealthArrow "
     "TaperedWithStealthArrow StealthArrowWithWideTail TaperedWithRoundedPoint"},
    {"Marker", "Look", "MarkerStyle", Words, Allowed, "Triangle", Shapes},
    {"Bar begins at", "Look", "BarStart", Words, Allowed, "ScaleStart", "ScaleStart Zero"},
    {"Placement", "Layout", "Placement", Words, Allowed, "Outside", Placements},
    {"Distance from scale", "Layout", "DistanceFromScale", Number, Allowed},
    {"Width", "Look", "Width", Number, Allowed, "15"},
    {"Length of marker", "Look", "MarkerLength", Number, Allowed, "10"},
    {"Snapping", "Scale", "SnappingEnabled", Boolean, Allowed, "false"},
    {"Snapping interval", "Scale", "SnappingInterval", Number, Allowed},
    {"Hidden", "Visibility", "Hidden", Boolean, Allowed, "false"},
};

constexpr Property OfLimits[] = {
    {"Minimum", "Scale", "MinimumValue/Value", Number, Allowed},
    {"Maximum", "Scale", "MaximumValue/Value", Number, Allowed},
};
constexpr Property OfStateIndicators[] = {
    {"States by", "Values", "TransformationType", Words, No, "Percentage", "Percentage None"},
    {"Scope of percentages", "Values", "TransformationScope", Scope},
    {"Icon", "Look", "IndicatorStyle", Words, Allowed, "", Icons},
    {"Scale factor", "Look", "ScaleFactor", Number, Allowed, "1"},
    {"Resize", "Look", "ResizeMode", Words, Allowed, "AutoFit", "AutoFit None"},
    {"Angle", "Look", "Angle", Number, Allowed, "0"},
};
constexpr Property OfStates[] = {
    {"Start value", "Values", "StartValue/Value", Number, Allowed},
    {"End value", "Values", "EndValue/Value", Number, Allowed},
    {"Colour", "Look", "Color", Color, Allowed},
    {"Icon", "Look", "IndicatorStyle", Words, Allowed, "", Icons},
    {"Scale factor", "Look", "ScaleFactor", Number, Allowed, "1"},
};
constexpr Property OfNumericIndicators[] = {
    {"Digits after the point", "Values", "DecimalDigits", Integer, Allowed, "1"},
    {"Text if it is no number", "Values", "NonNumericString", Text, Allowed, "-"},
    {"Text if it is out of range", "Values", "OutOfRangeString", Text, Allowed, "Error"},
    {"Sign", "Values", "ShowSign", Words, Allowed, "NegativeOnly", "NegativeOnly Both None"},
};
constexpr Property OfGaugeLabels[] = {
    {"Text", "General", "Text", Text, Allowed},
    {"Angle", "Look", "Angle", Number, Allowed, "0"},
    {"Resize", "Look", "ResizeMode", Words, Allowed, "AutoFit", "AutoFit None"},
    {"Font size in percent", "Font", "UseFontPercent", Boolean, Allowed, "false"},
};
constexpr Property OfFrames[] = {
    {"Frame style", "Look", "FrameStyle", Words, Allowed, "None", "None Simple Edged"},
    {"Frame shape", "Look", "FrameShape", Text, Allowed, "Default"},
    {"Frame width", "Look", "FrameWidth", Number, Allowed, "8"},
};
constexpr Property OfPictures[] = {
    {"Source", "General", "Source", Words, No, "External", "External Embedded Database"},
    {"Value", "General", "Value", Image, Allowed},
    {"Picture type", "General", "MIMEType", Text, Allowed},
};

constexpr PropertyGroup Groups[] = {
    {"GaugePanel", OfPanels},
    {"RadialGauge LinearGauge StateIndicator NumericIndicator GaugeImage GaugeLabel", OfParts},
    {"RadialGauge", OfDials},
    {"LinearGauge", OfLinear},
    {"RadialScale LinearScale", OfScales},
    {"RadialScale", OfRadialScales},
    {"LinearScale", OfLinearScales},
    {"ScaleLabels", OfLabels},
    {"GaugeMajorTickMarks GaugeMinorTickMarks", OfTicks},
    {"ScaleRange", OfRanges},
    {"CustomLabel", OfCustomLabels},
    {"PointerCap", OfCaps},
    {"Thermometer", OfThermometers},
    {"RadialPointer LinearPointer StateIndicator NumericIndicator", OfInputs},
    {"RadialPointer LinearPointer", OfPointers},
    {"StateIndicator NumericIndicator", OfLimits},
    {"StateIndicator", OfStateIndicators},
    {"IndicatorState NumericIndicatorRange", OfStates},
    {"NumericIndicator", OfNumericIndicators},
    {"GaugeLabel", OfGaugeLabels},
    {"BackFrame", OfFrames},
    {"GaugeImage IndicatorImage", OfPictures},
};

}  // namespace

std::span<const PropertyGroup> GaugeProperties() {
    return Groups;
}

}  // namespace designer
