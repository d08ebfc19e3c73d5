// SPDX-License-Identifier: GPL-3.0-or-later
// Of charts, in both forms of the schemas.
#include "designer/document/properties/property_table.h"

namespace designer {
namespace {

using enum PropertyKind;
constexpr auto Allowed = Expressions::Allowed;
constexpr auto No = Expressions::No;

constexpr std::string_view Types = "Column Bar Line Area Shape Polar Range Scatter Pie Doughnut Bubble Stock";
constexpr std::string_view Subtypes =
    "Plain Stacked PercentStacked Smooth Stepped Pie ExplodedPie CalloutPie Doughnut ExplodedDoughnut Funnel "
    "Pyramid "
    "TreeMap Sunburst Exploded Line SmoothLine Bubble Column Bar Stock Candlestick ErrorBar BoxPlot Radar "
    "HighLowClose "
    "OpenHighLowClose";
constexpr std::string_view Palettes =
    "Default EarthTones Excel GrayScale Light Pastel SemiTransparent Berry Chocolate Fire SeaGreen "
    "BrightPastel Custom "
    "Pacific PacificLight PacificSemiTransparent";
constexpr std::string_view Sides =
    "TopLeft TopCenter TopRight LeftTop LeftCenter LeftBottom RightTop RightCenter RightBottom BottomLeft "
    "BottomCenter "
    "BottomRight";
constexpr std::string_view LegendLayouts = "AutoTable Column Row Table WideTable TallTable";
constexpr std::string_view LabelPlaces =
    "Auto Top TopLeft TopRight Left Center Right BottomRight Bottom BottomLeft Outside";
constexpr std::string_view Markers =
    "None Square Circle Diamond Triangle Cross Star4 Star5 Star6 Star10 Auto";
constexpr std::string_view TickPlaces = "None Inside Outside Cross";

constexpr Property OfCharts[] = {
    {"Palette", "Look", "Palette", Words, Allowed, "Default", Palettes},
    {"Type", "General", "-", Words, No, "Column", Types, "Type"},
    {"Subtype", "General", "-", Words, No, "Plain", Subtypes, "Subtype"},
    {"Width of columns in percent", "Look", "-", Integer, No, "", "", "PointWidth"},
};

constexpr Property OfSeries[] = {
    {"Name", "General", "@Name", Text},
    {"Type", "General", "Type", Words, No, "Column", Types},
    {"Subtype", "General", "Subtype", Words, No, "Plain", Subtypes},
    {"Hidden", "Visibility", "Hidden", Boolean, Allowed, "false"},
    {"Chart area", "General", "ChartAreaName", Text},
    {"Value axis", "General", "ValueAxisName", Text},
    {"Text in legend", "Legend", "ChartItemInLegend/LegendText", Text, Allowed},
    {"Hidden in legend", "Legend", "ChartItemInLegend/Hidden", Boolean, Allowed, "false"},
    {"Drawn as", "General", "-", Words, No, "Auto", "Auto Line", "PlotType"},
};

constexpr Property OfPoints[] = {
    {"X value", "Values", "ChartDataPointValues/X", Text, Allowed},
    {"Y value", "Values", "ChartDataPointValues/Y", Text, Allowed},
    {"High value", "Values", "ChartDataPointValues/High", Text, Allowed},
    {"Low value", "Values", "ChartDataPointValues/Low", Text, Allowed},
    {"Start value", "Values", "ChartDataPointValues/Start", Text, Allowed},
    {"End value", "Values", "ChartDataPointValues/End", Text, Allowed},
    {"Mean", "Values", "ChartDataPointValues/Mean", Text, Allowed},
    {"Median", "Values", "ChartDataPointValues/Median", Text, Allowed},
    {"Size", "Values", "ChartDataPointValues/Size", Text, Allowed},
    {"Axis label", "Labels", "AxisLabel", Text, Allowed},
};

constexpr Property OfLabels[] = {
    {"Visible", "Visibility", "Visible", Boolean, Allowed, "false"},
    {"Label", "General", "Label", Text, Allowed},
    {"Value as label", "General", "UseValueAsLabel", Boolean, Allowed, "false"},
    {"Position", "Layout", "Position", Words, Allowed, "Auto", LabelPlaces},
    {"Rotation", "Layout", "Rotation", Number, Allowed, "0"},
};
constexpr Property OfOlderLabels[] = {
    {"Visible", "Visibility", "Visible", Boolean, No, "false"},
    {"Label", "General", "Value", Text, Allowed},
    {"Position", "Layout", "Position", Words, No, "Auto", LabelPlaces},
    {"Rotation", "Layout", "Rotation", Number, No, "0"},
};
constexpr Property OfMarkers[] = {
    {"Marker", "General", "Type", Words, Allowed, "None", Markers},
    {"Marker size", "General", "Size", Size, Allowed, "3.75pt"},
};

constexpr Property OfTitles[] = {
    {"Caption", "General", "Caption", Text, Allowed},
    {"Hidden", "Visibility", "Hidden", Boolean, Allowed, "false"},
    {"Position", "Layout", "Position", Words, Allowed, "TopCenter", Sides},
};
constexpr Property OfAxisTitles[] = {
    {"Caption", "General", "Caption", Text, Allowed},
    {"Position", "Layout", "Position", Words, Allowed, "Center", "Center Near Far"},
};
constexpr Property OfLegends[] = {
    {"Hidden", "Visibility", "Hidden", Boolean, Allowed, "false"},
    {"Position", "Layout", "Position", Words, Allowed, "RightTop", Sides},
    {"Layout", "Layout", "Layout", Words, Allowed, "AutoTable", LegendLayouts},
};
constexpr Property OfOlderLegends[] = {
    {"Visible", "Visibility", "Visible", Boolean, No, "false"},
    {"Position", "Layout", "Position", Words, No, "RightTop", Sides},
    {"Layout", "Layout", "Layout", Words, No, "Column", LegendLayouts},
};
constexpr Property OfAreas[] = {
    {"Name", "General", "@Name", Text},
    {"Hidden", "Visibility", "Hidden", Boolean, Allowed, "false"},
};
constexpr Property OfChartMembers[] = {{"Label", "General", "Label", Text, Allowed}};

constexpr Property OfAxes[] = {
    {"Name", "General", "@Name", Text},
    {"Visible", "Visibility", "Visible", Words, Allowed, "Auto", "Auto True False"},
    {"Hide labels", "Labels", "HideLabels", Boolean, Allowed, "false"},
    {"Angle of labels", "Labels", "Angle", Number, Allowed, "0"},
    {"Minimum", "Scale", "Minimum", Number, Allowed},
    {"Maximum", "Scale", "Maximum", Number, Allowed},
    {"Interval", "Scale", "Interval", Number, Allowed},
    {"Crosses at", "Scale", "CrossAt", Text, Allowed},
    {"Logarithmic", "Scale", "LogScale", Boolean, Allowed, "false"},
    {"Base of logarithms", "Scale", "LogBase", Number, Allowed, "10"},
    {"Reversed", "Scale", "Reverse", Boolean, Allowed, "false"},
    {"Zero included", "Scale", "IncludeZero", Boolean, Allowed, "true"},
    {"Margin", "Scale", "Margin", Words, Allowed, "Auto", "Auto True False"},
    {"Stripes", "Look", "Interlaced", Boolean, Allowed, "false"},
    {"Colour of stripes", "Look", "InterlacedColor", Color, Allowed},
    {"Location", "Layout", "Location", Words, Allowed, "Default", "Default Opposite"},
};

constexpr Property OfOlderAxes[] = {
    {"Visible", "Visibility", "Visible", Boolean, No, "false"},
    {"Minimum", "Scale", "Min", Number, Allowed},
    {"Maximum", "Scale", "Max", Number, Allowed},
    {"Interval", "Scale", "MajorInterval", Number, Allowed},
    {"Minor interval", "Scale", "MinorInterval", Number, Allowed},
    {"Crosses at", "Scale", "CrossAt", Number, Allowed},
    {"Logarithmic", "Scale", "LogScale", Boolean, No, "false"},
    {"Reversed", "Scale", "Reverse", Boolean, No, "false"},
    {"Margin", "Scale", "Margin", Boolean, No, "false"},
    {"Stripes", "Look", "Interlaced", Boolean, No, "false"},
    {"Tick marks", "Look", "MajorTickMarks", Words, No, "None", TickPlaces},
    {"Minor tick marks", "Look", "MinorTickMarks", Words, No, "None", TickPlaces},
    {"Grid lines", "Look", "MajorGridLines/ShowGridLines", Boolean, No, "false"},
    {"Minor grid lines", "Look", "MinorGridLines/ShowGridLines", Boolean, No, "false"},
    {"Title", "Labels", "Title/Caption", Text, Allowed},
};

constexpr Property OfGrids[] = {
    {"Enabled", "Visibility", "Enabled", Words, Allowed, "Auto", "Auto True False"},
    {"Interval", "Scale", "Interval", Number, Allowed},
};
constexpr Property OfTicks[] = {{"Type", "Look", "Type", Words, No, "Outside", TickPlaces}};

constexpr PropertyGroup Groups[] = {
    {"Chart", OfCharts},
    {"ChartSeries", OfSeries},
    {"ChartDataPoint", OfPoints},
    {"ChartDataLabel", OfLabels},
    {"DataLabel", OfOlderLabels},
    {"ChartMarker Marker", OfMarkers},
    {"ChartTitle ChartNoDataMessage Title", OfTitles},
    {"ChartAxisTitle ChartLegendTitle", OfAxisTitles},
    {"ChartLegend", OfLegends},
    {"Legend", OfOlderLegends},
    {"ChartArea", OfAreas},
    {"ChartMember DynamicSeries DynamicCategories StaticMember", OfChartMembers},
    {"ChartAxis", OfAxes},
    {"Axis", OfOlderAxes},
    {"ChartMajorGridLines ChartMinorGridLines ChartMajorTickMarks ChartMinorTickMarks", OfGrids},
    {"ChartMajorTickMarks ChartMinorTickMarks", OfTicks},
};

}  // namespace

std::span<const PropertyGroup> ChartProperties() {
    return Groups;
}

}  // namespace designer
