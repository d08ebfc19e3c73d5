// SPDX-License-Identifier: GPL-3.0-or-later
// A chart with its data: all properties evaluated, nothing placed yet. Lengths are points.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "rdl/definition/chart.h"
#include "rdl/format/format.h"
#include "rdl/layout/drawing/chart_caption.h"

namespace rdl::layout {

struct ChartPlan;
class PropertyReader;

enum class ChartShape { None, Square, Circle, Diamond, Triangle, Cross, Star };

struct ChartMark {  // a data point
    Value value;    // the y value; Null: a gap
    double x = 0, y = 0, size = 0;
    double low = 0, high = 0;                        // of a range
    std::optional<double> start, end, mean, median;  // of a stock or box
    bool hasX = false, hasY = false;
    bool isDate = false;  // x is in days
    Color color = Transparent;
    Border border;
    std::string label, labelPosition;
    std::string labelSource;  // before keywords are replaced
    double labelTurn = 0;     // degrees
    CharStylePtr labelStyle;
    bool ownLabelColor = false;  // set by the report; else chosen to be legible on what is below it
    BoxStylePtr labelBox;
    ChartShape shape = ChartShape::None;
    double shapeSize = 5;  // points
    Color shapeColor = Transparent;
    std::string axisLabel;
    std::string name;  // name of its category; of its series for a pie whose slices are series
};

// The custom attributes of a series.
struct ChartLook {
    enum class Labels { Usual, Outside, Disabled } labels = Labels::Usual;  // of slices
    double pointWidth = 0.8;                                                // fraction of a category's width
    double hole = 0.6;  // of a doughnut, as a fraction of its radius
    enum class Circle { Line, Area, Marker } circle = Circle::Line;  // Polar and Radar
    bool polygon = false;  // Polar and Radar: the grid has corners at the categories
    enum class Prices { Line, Triangle, Candlestick } prices = Prices::Line;  // opening and closing ones
    bool showOpen = true, showClose = true;
    std::string labelPrice;                                // High, Low, Open; else the closing one
    Color upColor = Transparent, downColor = Transparent;  // bodies of candlesticks
    bool upperError = true, lowerError = true;
    bool showMean = true, showMedian = true;     // BoxPlot
    bool byWidth = false;                        // Funnel: widths, not heights, are as the values
    bool bySurface = false;                      // Pyramid: surfaces, not heights, are as the values
    double gap = 0, leastHeight = 0;             // Funnel and Pyramid: fractions of the height
    double neckWidth = 0.05, neckHeight = 0.05;  // Funnel: fractions of its size
};

struct ChartRow {  // an instance of a series
    const ChartSeries* definition = nullptr;
    std::string name;
    bool inLegend = true;
    Color color = Transparent;
    bool ownColor = false;  // set by the report; else of the palette
    Border border;          // for a line series: the line itself
    ChartLook look;
    std::size_t valueAxis = 0;
    std::vector<ChartMark> marks;  // by category
};

struct ChartSpan {  // the columns of an outer category group
    std::string label;
    std::size_t first = 0, count = 0;
};

struct ChartLinesData {
    bool shown = false;
    double interval = 0;
    Border border;
    enum class Ticks { Outside, Inside, Cross } ticks = Ticks::Outside;
};

struct ChartAxisData {
    bool visible = true, labels = true, reverse = false, logarithmic = false, opposite = false;
    std::optional<bool> margin, includeZero;
    std::optional<double> minimum, maximum, interval, crossAt, angle;
    double base = 10;
    Color stripe = Transparent;  // colour of every other interval
    ChartCaption title;
    ChartLinesData majorGrid, minorGrid, majorTicks, minorTicks;
    CharStylePtr style;
    std::string format;
    Border line;
};

struct ChartAreaData {
    BoxStylePtr box;
    std::vector<ChartAxisData> categoryAxes, valueAxes;
    std::vector<ChartRow> rows;
};

struct ChartLegendData {
    std::string position, layout;
    ChartCaption title;
    CharStylePtr style;
    BoxStylePtr box;
};

struct ChartData {
    std::string name;
    std::vector<std::string> categories;  // labels of the innermost groups
    std::vector<Value> categoryValues;
    std::vector<std::vector<ChartSpan>> outer;  // enclosing groups, outermost first
    std::vector<ChartAreaData> areas;
    std::vector<ChartLegendData> legends;
    std::vector<ChartCaption> titles;
    std::optional<ChartCaption> message;  // replaces everything but the titles
    std::vector<Color> palette;
    const Culture* culture = nullptr;
    Color PaletteColor(std::size_t index) const { return palette[index % palette.size()]; }
};

// Evaluates at the current place of `reader`. Raises rdl::Error if there are too many series, categories or
// points. `plan` must outlive the result.
ChartData EvaluateChart(const ChartPlan& plan, PropertyReader& reader);

// Returns the colours of a palette; those of the default palette for an unknown name.
std::vector<Color> PaletteOf(const std::string& name);

// Formats a number or date for axes and labels, cut as ReadableText does.
std::string ChartNumber(const Value& value, const std::string& format, const Culture& culture);

}  // namespace rdl::layout
