// SPDX-License-Identifier: GPL-3.0-or-later
// Members of ChartPlot, and functions beside them: how the texts of axes fit beside each other, and how much
// room the axes take.
#include <algorithm>
#include <cmath>

#include "rdl/layout/drawing/chart/plot.h"

namespace rdl::layout {
namespace {

constexpr double LargestAxisShare = 0.4;  // of the chart, for the texts of an axis
constexpr double LeastPlot = 8;           // points
constexpr double Aslant = -45, Upright = -90;

std::size_t EveryFor(double needed, double spacing) {
    return spacing > 0 ? static_cast<std::size_t>(std::clamp(std::ceil(needed / spacing - 0.01), 1.0, 1e6))
                       : 1;
}

Extents Largest(const std::vector<std::string>& texts, const CharStyle& style) {
    Extents largest;
    for (const std::string& text : texts) {
        const Extents size = Canvas::Measure(text, style);
        largest.width = std::max(largest.width, size.width);
        largest.height = std::max(largest.height, size.height);
    }
    return largest;
}

// Beside an upright axis: one line each.
void FitUpright(double spacing, double most, const CharStyle& style, ChartTickLabels& labels) {
    for (std::string& text : labels.texts) {
        text = Shortened(text, style, most);
    }
    const Extents largest = Largest(labels.texts, style);
    labels.every = EveryFor(largest.height, spacing);
    labels.thick = largest.width;
}

// Below a level axis numbers stay level.
void FitNumbers(double spacing, double most, const CharStyle& style, ChartTickLabels& labels) {
    for (std::string& text : labels.texts) {
        text = Shortened(text, style, most);
    }
    const Extents largest = Largest(labels.texts, style);
    labels.every = EveryFor(largest.width + style.size, spacing);
    labels.thick = largest.height;
}

bool FitsWrapped(double spacing, const CharStyle& style, ChartTickLabels& labels) {
    constexpr double MostLines = 3;
    std::vector<std::string> wrapped;
    for (const std::string& text : labels.texts) {
        wrapped.push_back(Wrapped(text, style, spacing));
    }
    const Extents largest = Largest(wrapped, style);
    if (largest.width > spacing || largest.height > MostLines * Canvas::LineHeight(style) + 1) {
        return false;
    }
    labels.texts = std::move(wrapped);
    labels.thick = largest.height;
    return true;
}

// Below a level axis names are turned when they do not fit, and every so many is left out when they still
// would touch.
void FitNames(double spacing, double most, std::optional<double> angle, const CharStyle& style,
              ChartTickLabels& labels) {
    const double line = Canvas::LineHeight(style);
    const double available = spacing * static_cast<double>(labels.every) - 2;
    if (!angle && (Largest(labels.texts, style).width <= available || spacing > 4 * line)) {
        if (FitsWrapped(available, style, labels)) {
            return;
        }
    }
    labels.degrees = angle.value_or(spacing > 1.6 * line ? Aslant : Upright);
    const double s = std::max(std::abs(std::sin(labels.degrees * 0.017453293)), 0.2);
    for (std::string& text : labels.texts) {
        text = Shortened(text, style, most / s);
    }
    labels.every = std::max(labels.every, EveryFor(line / s * 0.95, spacing));
    labels.thick = Turned(Largest(labels.texts, style), labels.degrees).height;
}

ChartTickLabels CategoryLabels(const ChartPlot& plot, double length, double most) {
    const ChartAxisData& axis = plot.area.categoryAxes.front();
    ChartTickLabels labels;
    double spacing = length * plot.CategoryWidth();
    if (plot.scattered) {
        for (const double tick : plot.numbers.ticks) {
            labels.texts.push_back(TickText(
                axis, plot.numbers, tick, plot.dates ? TickKind::Day : TickKind::Number, *plot.data.culture));
        }
        spacing = length / static_cast<double>(std::max<std::size_t>(labels.texts.size(), 2) - 1);
        FitNumbers(spacing, length * LargestAxisShare, *axis.style, labels);
        return labels;
    }
    labels.texts = plot.data.categories;
    if (axis.interval && *axis.interval >= 1) {
        labels.every = static_cast<std::size_t>(std::min(*axis.interval, 1e6));
    }
    if (plot.swapped) {
        const std::size_t wanted = labels.every;
        FitUpright(spacing, most, *axis.style, labels);
        labels.every = std::max(labels.every, wanted);
    } else {
        FitNames(spacing, most, axis.angle, *axis.style, labels);
    }
    return labels;
}

ChartTickLabels ValueLabels(const ChartPlot& plot, std::size_t index, double length, double most) {
    const ChartAxisData& axis = plot.area.valueAxes[index];
    const Scale& scale = plot.values[index];
    ChartTickLabels labels;
    for (const double tick : scale.ticks) {
        labels.texts.push_back(TickText(axis, scale, tick,
                                        IsPercent(plot.area, index) ? TickKind::Share : TickKind::Number,
                                        *plot.data.culture));
    }
    const double spacing = length / static_cast<double>(std::max<std::size_t>(labels.texts.size(), 2) - 1);
    const auto fit = plot.swapped ? FitNumbers : FitUpright;
    fit(spacing, most, *axis.style, labels);
    return labels;
}

// What stands on one side of the plot.
double Thickness(const ChartAxisData& axis, const ChartTickLabels& labels, std::size_t outerLevels) {
    if (!axis.visible) {
        return 0;
    }
    double thick = TickLength;
    if (axis.labels) {
        thick += labels.thick + TickGap +
                 static_cast<double>(outerLevels) * (Canvas::LineHeight(*axis.style) + TickGap);
    }
    if (!axis.title.text.empty()) {
        thick += Canvas::LineHeight(*axis.title.style) + TickGap;
    }
    return thick;
}

bool IsUsed(const ChartAreaData& area, std::size_t axis) {
    return std::any_of(area.rows.begin(), area.rows.end(),
                       [axis](const ChartRow& row) { return row.valueAxis == axis; });
}

// Half a line of the axes' texts, by which those at the ends reach beyond the plot; a sparkline has none.
double HalfLine(const ChartPlot& plot) {
    const ChartAxisData& category = plot.area.categoryAxes.front();
    bool texts = category.visible && category.labels;
    for (std::size_t i = 0; i < plot.area.valueAxes.size(); ++i) {
        texts = texts || (plot.IsShown(i) && plot.area.valueAxes[i].labels);
    }
    return texts ? Canvas::LineHeight(*category.style) / 2 : 0;
}

}  // namespace

bool ChartPlot::IsShown(std::size_t valueAxis) const {
    return area.valueAxes[valueAxis].visible && IsUsed(area, valueAxis);
}

void PlaceAxes(ChartPlot& plot, const Rect& available) {
    plot.available = plot.inside = available;
    plot.bare = false;
    constexpr int Passes = 2;  // scales depend on the room that their own texts leave
    for (int pass = 0; pass < Passes; ++pass) {
        const Rect before = plot.inside;
        const double along = plot.swapped ? before.width : before.height;
        plot.values.clear();
        plot.valueLabels.clear();
        for (std::size_t i = 0; i < plot.area.valueAxes.size(); ++i) {
            plot.values.push_back(ValueScale(plot.area, i, plot.reaches, along));
            plot.valueLabels.push_back(ValueLabels(plot, i, along, available.width * LargestAxisShare));
        }
        const ChartAxisData& category = plot.area.categoryAxes.front();
        if (plot.scattered) {
            plot.numbers = NumberScale(plot.area, plot.dates, before.width);
        }
        plot.categoryLabels =
            CategoryLabels(plot, plot.swapped ? before.height : before.width,
                           (plot.swapped ? available.width : available.height) * LargestAxisShare);
        double sides[2][2] = {};  // of the category axis and of value axes: usual side, opposite side
        sides[0][category.opposite] =
            Thickness(category, plot.categoryLabels, plot.scattered ? 0 : plot.data.outer.size());
        for (std::size_t i = 0; i < plot.area.valueAxes.size(); ++i) {
            if (plot.IsShown(i)) {
                const ChartAxisData& axis = plot.area.valueAxes[i];
                sides[1][axis.opposite] =
                    std::max(sides[1][axis.opposite], Thickness(axis, plot.valueLabels[i], 0));
            }
        }
        const double* level = sides[plot.swapped ? 1 : 0];
        const double* upright = sides[plot.swapped ? 0 : 1];
        const double half = HalfLine(plot);
        const double right = std::max(upright[1], plot.swapped || plot.scattered ? 2 * half : half);
        const double top = std::max(level[1], half);
        plot.inside = {available.x + std::max(upright[0], half), available.y + top,
                       available.width - std::max(upright[0], half) - right,
                       available.height - top - std::max(level[0], half)};
    }
    if (plot.inside.width < LeastPlot || plot.inside.height < LeastPlot) {
        plot.bare = true;
        plot.inside = available;
    }
}

}  // namespace rdl::layout
