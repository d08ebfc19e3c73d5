// A chart with its data in: every property worked out, nothing placed yet.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "rdl/definition/chart.h"
#include "rdl/format/format.h"
#include "rdl/layout/drawing/caption.h"

namespace rdl::layout {

struct ChartPlan;
class PropertyReader;

enum class ChartShape { None, Square, Circle, Diamond, Triangle, Cross, Star };

struct ChartMark {  // a data point
    Value value;    // of y; Null: a gap
    double x = 0, y = 0, size = 0;
    double low = 0;  // of a range: where it begins
    bool hasX = false, hasY = false;
    bool isDate = false;  // x counts days
    Color color = Transparent;
    Border border;
    std::string label, labelPosition;
    std::string labelSource;  // before its keywords were replaced
    double labelTurn = 0;     // degrees
    CharStylePtr labelStyle;
    bool ownLabelColor = false;  // the report says it; else it is made to be read on what is below it
    BoxStylePtr labelBox;
    ChartShape shape = ChartShape::None;
    double shapeSize = 5;  // points
    Color shapeColor = Transparent;
    std::string axisLabel;
    std::string name;  // of its category; of a pie whose slices are series, of its series
};

struct ChartRow {  // a series as it is drawn
    const ChartSeries* definition = nullptr;
    std::string name;
    bool inLegend = true;
    Color color = Transparent;
    Border border;  // of a line: the line
    double pointWidth = 0.8;
    bool labelsOutside = false;
    double hole = 0.6;  // of a doughnut, of its radius
    std::size_t valueAxis = 0;
    std::vector<ChartMark> marks;  // by category
};

struct ChartSpan {  // of an outer category group
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
    Color stripe = Transparent;  // every other interval
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
    std::vector<std::vector<ChartSpan>> outer;  // groups around them, the outermost first
    std::vector<ChartAreaData> areas;
    std::vector<ChartLegendData> legends;
    std::vector<ChartCaption> titles;
    std::optional<ChartCaption> message;  // instead of everything but the titles
    std::vector<Color> palette;
    const Culture* culture = nullptr;
    Color PaletteColor(std::size_t index) const { return palette[index % palette.size()]; }
};

// At the current place of `reader`. Raises rdl::Error when there are too many series, categories or points.
ChartData EvaluateChart(const ChartPlan& plan, PropertyReader& reader);

// The colours of a palette by its name; those of the usual one for a name that is not known.
std::vector<Color> PaletteOf(const std::string& name);

// Number and date texts as axes and labels show them, cut as ReadableText does.
std::string ChartNumber(const Value& value, const std::string& format, const Culture& culture);

}  // namespace rdl::layout
