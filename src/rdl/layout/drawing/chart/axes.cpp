// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/layout/drawing/chart/axes.h"
#include "rdl/values/ascii.h"

#include <algorithm>
#include <cmath>

namespace rdl::layout {
namespace {

constexpr Color AxisGray = 0xFF808080, GridGray = 0xFFD3D3D3, StripeGray = 0xFFF2F2F2;
constexpr float HairLine = 0.75F, GridLine = 0.5F;

ChartLinesData LinesOf(const ChartLines& lines, bool usual, Color color, float width,
                       const PartStyles& styles) {
    ChartLinesData data;
    data.shown = styles.Flag(lines.enabled).value_or(usual);
    data.interval = styles.Number(lines.interval).value_or(0);
    data.border = styles.LineOf(lines.style, color, width);
    if (EqualNoCase(lines.type, "Inside")) {
        data.ticks = ChartLinesData::Ticks::Inside;
    } else if (EqualNoCase(lines.type, "Cross")) {
        data.ticks = ChartLinesData::Ticks::Cross;
    } else if (EqualNoCase(lines.type, "None")) {
        data.shown = false;
    }
    return data;
}

// Returns nullopt if the labels are fitted: the angle is not set, or it is 0.
std::optional<double> AngleOf(const ChartAxis& axis, const PartStyles& styles) {
    const std::optional<double> angle = styles.Number(axis.angle);
    return angle && *angle != 0 ? std::optional(std::clamp(*angle, -90.0, 90.0)) : std::nullopt;
}

ChartAxisData AxisOf(const ChartAxis& axis, const PartStyles& styles) {
    ChartAxisData data;
    data.visible = styles.Flag(axis.visible).value_or(true);
    data.labels = !styles.Flag(axis.hideLabels).value_or(false);
    data.reverse = styles.Flag(axis.reverse).value_or(false);
    data.logarithmic = styles.Flag(axis.logScale).value_or(false);
    data.opposite = EqualNoCase(styles.Text(axis.location), "Opposite");
    data.margin = styles.Flag(axis.margin);
    data.includeZero = styles.Flag(axis.includeZero);
    data.minimum = styles.Number(axis.minimum);
    data.maximum = styles.Number(axis.maximum);
    data.interval = styles.Number(axis.interval);
    data.crossAt = styles.Number(axis.crossAt);
    data.angle = AngleOf(axis, styles);
    data.base = styles.Number(axis.logBase).value_or(10);
    if (styles.Flag(axis.interlaced).value_or(false)) {
        Style color;
        color.properties.emplace_back(StyleProperty::Color, axis.interlacedColor);
        const Color own = styles.ColorOf(color, {StyleProperty::Color});
        data.stripe = IsVisible(own) ? own : StripeGray;
    }
    data.title = styles.Caption(axis.title, 8);
    data.majorGrid = LinesOf(axis.majorGrid, axis.majorGrid.isSet, GridGray, GridLine, styles);
    data.minorGrid = LinesOf(axis.minorGrid, false, GridGray, GridLine / 2, styles);
    data.majorTicks = LinesOf(axis.majorTicks, true, AxisGray, HairLine, styles);
    data.minorTicks = LinesOf(axis.minorTicks, false, AxisGray, HairLine, styles);
    data.style = styles.TextStyle(axis.style);
    data.format = styles.Format(axis.style);
    data.line = styles.LineOf(axis.style, AxisGray, HairLine);
    return data;
}

}  // namespace

ChartAreaData EvaluateArea(const ChartArea& area, const PartStyles& styles) {
    ChartAreaData data;
    data.box = styles.Box(area.style);
    for (const ChartAxis& axis : area.categoryAxes) {
        data.categoryAxes.push_back(AxisOf(axis, styles));
    }
    for (const ChartAxis& axis : area.valueAxes) {
        data.valueAxes.push_back(AxisOf(axis, styles));
        // The second axis stands across from the first.
        data.valueAxes.back().opposite = data.valueAxes.back().opposite || data.valueAxes.size() > 1;
    }
    return data;
}

bool IsScattered(const ChartAreaData& area) {
    return std::any_of(area.rows.begin(), area.rows.end(), [](const ChartRow& row) {
        return row.definition->kind == ChartKind::Scatter || row.definition->kind == ChartKind::Bubble;
    });
}

bool IsPercent(const ChartAreaData& area, std::size_t valueAxis) {
    return std::any_of(area.rows.begin(), area.rows.end(), [&](const ChartRow& row) {
        return row.valueAxis == valueAxis && row.definition->stack == ChartStack::Percent;
    });
}

std::vector<std::vector<ChartReach>> StackRows(const ChartAreaData& area) {
    std::vector<std::vector<ChartReach>> reaches;
    for (std::size_t r = 0; r < area.rows.size(); ++r) {
        const ChartRow& row = area.rows[r];
        std::vector<ChartReach>& made = reaches.emplace_back();
        for (std::size_t i = 0; i < row.marks.size(); ++i) {
            const ChartMark& mark = row.marks[i];
            ChartReach reach{row.definition->range ? mark.low : 0, mark.high, mark.hasY};
            const auto together = [&](const ChartRow& other) {
                return other.definition->kind == row.definition->kind && other.valueAxis == row.valueAxis &&
                       other.definition->stack == row.definition->stack && other.marks[i].hasY;
            };
            if (row.definition->stack == ChartStack::None || !mark.hasY) {
                made.push_back(reach);
                continue;
            }
            double below = 0, total = 0;
            for (std::size_t other = 0; other < area.rows.size(); ++other) {
                if (!together(area.rows[other])) {
                    continue;
                }
                const double value = area.rows[other].marks[i].y;
                total += std::abs(value);
                // Columns that are negative are stacked downwards; an area begins where the one below ends.
                const bool here = row.definition->kind == ChartKind::Area || (value < 0) == (mark.y < 0);
                below += other < r && here ? value : 0;
            }
            const double scale =
                row.definition->stack == ChartStack::Percent ? (total > 0 ? 1 / total : 0) : 1;
            made.push_back({below * scale, (below + mark.y) * scale, true});
        }
    }
    return reaches;
}

Scale ValueScale(const ChartAreaData& area, std::size_t axis,
                 const std::vector<std::vector<ChartReach>>& reaches, double length) {
    const ChartAxisData& data = area.valueAxes[axis];
    ScaleRequest request;
    request.logarithmic = data.logarithmic;
    request.base = data.base;
    request.whole = !IsPercent(area, axis);
    bool needsZero = false;
    for (std::size_t r = 0; r < area.rows.size(); ++r) {
        const ChartRow& row = area.rows[r];
        const ChartKind kind = row.definition->kind;
        if (row.valueAxis != axis) {
            continue;
        }
        needsZero =
            needsZero || (!row.definition->range &&
                          (kind == ChartKind::Column || kind == ChartKind::Bar || kind == ChartKind::Area));
        const bool labelled = std::any_of(row.marks.begin(), row.marks.end(), [&](const ChartMark& mark) {
            return !mark.label.empty() && row.definition->stack == ChartStack::None;
        });
        // Labels of columns with negative values stand below them.
        const bool below = labelled && std::any_of(row.marks.begin(), row.marks.end(),
                                                   [](const ChartMark& mark) { return mark.y < 0; });
        request.headroom = request.headroom || labelled || kind == ChartKind::Bubble;
        request.footroom = request.footroom || below || kind == ChartKind::Bubble;
        for (const ChartReach& reach : reaches[r]) {
            if (!reach.isSet || (data.logarithmic && reach.to <= 0)) {
                continue;
            }
            for (const double end : {row.definition->range ? reach.from : reach.to, reach.to}) {
                request.low = request.any ? std::min(request.low, end) : end;
                request.high = request.any ? std::max(request.high, end) : end;
                request.any = true;
                request.whole = request.whole && end == std::round(end);
            }
        }
    }
    request.includeZero = data.includeZero.value_or(true) || needsZero;
    request.footroom = request.footroom || (data.logarithmic && needsZero);
    const bool percent = IsPercent(area, axis);
    request.minimum = data.minimum;
    request.maximum = data.maximum;
    request.interval = data.interval;
    if (percent) {  // the report counts in hundredths
        const auto share = [](std::optional<double> value) {
            return value && std::abs(*value) > 1 ? std::optional(*value / 100) : value;
        };
        request.minimum = share(request.minimum);
        request.maximum = share(request.maximum);
        request.interval = share(request.interval);
    }
    const double height = static_cast<double>(data.style->size);
    const bool level = !area.rows.empty() && area.rows.front().definition->kind == ChartKind::Bar;
    request.mostTicks = std::clamp(static_cast<int>(length / (height * (level ? 6 : 2.5))), 2, 12);
    return MakeScale(request);
}

Scale NumberScale(const ChartAreaData& area, bool isDate, double length) {
    const ChartAxisData& data = area.categoryAxes.front();
    ScaleRequest request;
    for (const ChartRow& row : area.rows) {
        for (const ChartMark& mark : row.marks) {
            const bool bubble = row.definition->kind == ChartKind::Bubble;
            request.headroom = request.footroom = request.headroom || bubble;
            if (mark.hasY && !(data.logarithmic && mark.x <= 0)) {
                request.low = request.any ? std::min(request.low, mark.x) : mark.x;
                request.high = request.any ? std::max(request.high, mark.x) : mark.x;
                request.any = true;
            }
        }
    }
    request.includeZero =
        data.includeZero.value_or(false) && request.low > 0 && request.low < request.high / 2;
    request.minimum = data.minimum;
    request.maximum = data.maximum;
    request.interval = data.interval;
    request.logarithmic = data.logarithmic;
    request.base = data.base;
    request.mostTicks =
        std::clamp(static_cast<int>(length / (static_cast<double>(data.style->size) * 6)), 2, 12);
    return isDate ? MakeDateScale(request) : MakeScale(request);
}

std::string TickText(const ChartAxisData& axis, const Scale& scale, double tick, TickKind kind,
                     const Culture& culture) {
    if (kind == TickKind::Day) {
        const auto ticks = static_cast<std::int64_t>(std::llround(tick * static_cast<double>(TicksPerDay)));
        return ChartNumber(Value::DateTime(std::max<std::int64_t>(ticks, 0)), axis.format, culture);
    }
    if (kind == TickKind::Share && axis.format.empty()) {
        return FormatValue(Value::Real(tick), "P0", culture);
    }
    // Sums of steps end in stray digits.
    const double unit = std::pow(10, std::floor(std::log10(std::abs(scale.step))) - 6);
    const double rounded = scale.logarithmic || !(unit > 0) ? tick : std::round(tick / unit) * unit;
    const bool shares = axis.format.find('%') != std::string::npos || axis.format.starts_with("P") ||
                        axis.format.starts_with("p");
    const Value value = Value::Real(kind == TickKind::Share && !shares ? rounded * 100 : rounded);
    return axis.format.empty() ? FormatValue(value, "#,0.##########", culture)
                               : FormatValue(value, axis.format, culture);
}

}  // namespace rdl::layout
