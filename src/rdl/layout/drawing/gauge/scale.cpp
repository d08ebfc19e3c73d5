// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/layout/drawing/gauge/scale.h"
#include "rdl/values/ascii.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace rdl::layout {
namespace {

constexpr std::size_t MostTicks = 500;
constexpr double Nearly = 1e-9;
constexpr Color TickGray = 0xFF606060, BandGray = 0xFFB8C0C8, RangeGray = 0xFFC9D6E3;

// Returns the values of the ticks: one at each interval, the first `offset` above the scale's low end.
std::vector<double> TicksEvery(const Scale& scale, double interval, double offset) {
    std::vector<double> ticks;
    if (!(interval > 0) || (scale.high - scale.low) / interval > static_cast<double>(MostTicks)) {
        return ticks;
    }
    for (std::size_t i = 0; i <= MostTicks; ++i) {
        const double tick = scale.low + offset + static_cast<double>(i) * interval;
        if (tick > scale.high + interval * Nearly) {
            break;
        }
        if (tick >= scale.low - interval * Nearly) {
            ticks.push_back(std::abs(tick) < interval * Nearly ? 0 : tick);
        }
    }
    return ticks;
}

std::vector<double> TicksOf(const GaugeAxis& axis, const GaugePart& part, bool minor, const GaugeKit& kit) {
    const double offset =
        kit.Number(part, "IntervalOffset", kit.Number(axis.definition, "IntervalOffset", 0));
    if (axis.scale.logarithmic) {
        return minor ? axis.scale.MinorTicks(0) : axis.scale.ticks;
    }
    double interval = kit.Number(part, "Interval", 0);
    if (minor) {
        return interval > 0 ? TicksEvery(axis.scale, interval, offset) : axis.scale.MinorTicks(0);
    }
    interval = interval > 0 ? interval : kit.Number(axis.definition, "Interval", 0);
    const std::vector<double> ticks = TicksEvery(axis.scale, interval, offset);
    return ticks.empty() ? axis.scale.ticks : ticks;
}

std::string NumberText(const GaugeAxis& axis, double value, const GaugeKit& kit) {
    const double unit = std::pow(10, std::floor(std::log10(std::abs(axis.scale.step))) - 6);
    const double rounded = unit > 0 && !axis.scale.logarithmic ? std::round(value / unit) * unit : value;
    const std::string format = kit.Styles().Format(axis.definition.labels.style);
    return FormatValue(Value::Real(rounded * kit.Number(axis.definition, "Multiplier", 1)),
                       format.empty() ? "#,0.##########" : format, kit.NumberCulture());
}

CharStyle TextStyleOf(const GaugeAxis& axis, const GaugePart& part, const GaugeKit& kit) {
    const Style& own = part.style;
    CharStyle textStyle = *kit.Styles().TextStyle(own.properties.empty() ? axis.definition.style : own, 8);
    if (kit.Flag(part, "UseFontPercent", false)) {
        textStyle.size = static_cast<float>(static_cast<double>(textStyle.size) * Percent * axis.track.unit);
    }
    return textStyle;
}

struct Tick {
    GaugePlacement placement;
    double distance, length, width;
    std::string shape;
};

Tick TickLook(const GaugeAxis& axis, const GaugePart& part, bool minor, const GaugeKit& kit) {
    const double unit = axis.track.unit * Percent;
    return {kit.Placement(part, GaugePlacement::Cross), kit.Number(part, "DistanceFromScale", 0) * unit,
            kit.Number(part, "Length", minor ? 6 : 10) * unit,
            std::max(kit.Number(part, "Width", minor ? 1 : 2) * unit, 0.25), kit.Text(part, "Shape")};
}

// How far the ticks reach beyond the band on the side where labels stand.
double TickReach(const GaugeAxis& axis, GaugePlacement side, const GaugeKit& kit) {
    double reach = axis.track.width / 2;
    for (const bool minor : {false, true}) {
        const GaugePart& part = minor ? axis.definition.minorTicks : axis.definition.majorTicks;
        if (kit.IsHidden(part)) {
            continue;
        }
        const Tick tick = TickLook(axis, part, minor, kit);
        const GaugePlace place = PlaceBeside(axis.track, tick.placement, tick.distance, tick.length);
        reach = std::max(reach, side == GaugePlacement::Outside ? place.outer : -place.inner);
    }
    return reach;
}

void DrawTicks(const GaugeAxis& axis, const GaugePart& part, bool minor, const GaugeKit& kit) {
    if (kit.IsHidden(part)) {
        return;
    }
    const Tick tick = TickLook(axis, part, minor, kit);
    const Color usual = kit.Fill(part.style, TickGray);
    for (const double value : TicksOf(axis, part, minor, kit)) {
        const Color own = RangeColor(axis, "InRangeTickMarksColor", value, kit);
        DrawMarker(tick.shape, axis.track, axis.ShareOf(value),
                   PlaceBeside(axis.track, tick.placement, tick.distance, tick.length), tick.width,
                   MarkerPoints::Outwards, IsVisible(own) ? own : usual, Border(), kit.Paper());
    }
}

// The middle of a text lies so far from the track that the text ends where it should.
void DrawLabel(const GaugeAxis& axis, const GaugePart& part, const std::string& text, double value,
               double reach, GaugePlacement placement, const GaugeKit& kit) {
    CharStyle textStyle = TextStyleOf(axis, part, kit);
    const Color own = RangeColor(axis, "InRangeLabelColor", value, kit);
    textStyle.color = IsVisible(own) ? own : textStyle.color;
    const double share = axis.ShareOf(value);
    const double direction = axis.track.Direction(share);
    constexpr double DegreesOf = 180 / std::numbers::pi;
    double degrees = kit.Number(part, "FontAngle", 0);
    if (kit.Flag(part, "RotateLabels", false)) {
        degrees += direction * DegreesOf;
    }
    degrees = std::remainder(degrees, 360);
    if (std::abs(degrees) > 90 && !kit.Flag(part, "AllowUpsideDown", false)) {
        degrees = std::remainder(degrees + 180, 360);
    }
    const Extents size = Turned(Canvas::Measure(text, textStyle), degrees);
    const double half =
        (std::abs(std::sin(direction)) * size.width + std::abs(std::cos(direction)) * size.height) / 2;
    const double distance = kit.Number(part, "DistanceFromScale", 2) * Percent * axis.track.unit;
    const double away = placement == GaugePlacement::Inside    ? -(reach + distance + half)
                        : placement == GaugePlacement::Outside ? reach + distance + half
                                                               : -distance;
    kit.Paper().Text(text, textStyle, axis.track.At(share, away), {0.5, 0.5}, degrees);
}

void DrawLabels(const GaugeAxis& axis, const GaugeKit& kit) {
    const GaugePart& part = axis.definition.labels;
    if (!kit.IsHidden(part)) {
        const GaugePlacement placement = kit.Placement(part, GaugePlacement::Inside);
        const double reach = TickReach(axis, placement, kit);
        const bool ends = kit.Flag(part, "ShowEndLabels", true);
        // Around a whole circle the last label would stand upon the first.
        const bool closed = axis.track.round && std::abs(axis.track.sweep) > 2 * std::numbers::pi - 0.01;
        const std::vector<double> values = TicksOf(axis, part, false, kit);
        for (std::size_t i = 0; i < values.size(); ++i) {
            const bool isEnd = std::abs(values[i] - axis.scale.low) < Nearly * axis.scale.step ||
                               std::abs(values[i] - axis.scale.high) < Nearly * axis.scale.step;
            if ((isEnd && !ends) || (closed && i > 0 && i + 1 == values.size() && isEnd)) {
                continue;
            }
            DrawLabel(axis, part, NumberText(axis, values[i], kit), values[i], reach, placement, kit);
        }
    }
    for (const GaugePart& label : axis.definition.customLabels) {
        const std::optional<double> value = kit.Styles().Number(label["Value"]);
        if (value && !kit.IsHidden(label)) {
            const GaugePlacement placement = kit.Placement(label, GaugePlacement::Inside);
            DrawLabel(axis, label, ReadableText(kit.Text(label, "Text")), *value,
                      TickReach(axis, placement, kit), placement, kit);
        }
    }
}

void DrawRanges(const GaugeAxis& axis, const GaugeKit& kit) {
    constexpr double UsualWidth = 15, UsualDistance = 10;  // percent
    const double unit = axis.track.unit * Percent;
    for (const GaugeRange& range : axis.definition.ranges) {
        const std::optional<double> start = kit.Values().Of(range.start), end = kit.Values().Of(range.end);
        if (kit.IsHidden(range) || !start || !end) {
            continue;
        }
        const double first = kit.Number(range, "StartWidth", UsualWidth) * unit;
        const double last = kit.Number(range, "EndWidth", first / unit) * unit;
        const double distance = kit.Number(range, "DistanceFromScale", UsualDistance) * unit;
        const GaugePlacement placement = kit.Placement(range, GaugePlacement::Inside);
        const GaugePlace a = PlaceBeside(axis.track, placement, distance, first);
        const GaugePlace b = PlaceBeside(axis.track, placement, distance, last);
        kit.Paper().Path(
            axis.track.Band(axis.ShareOf(*start), axis.ShareOf(*end), a.inner, a.outer, b.inner, b.outer),
            kit.Fill(range.style, RangeGray), kit.Outline(range.style));
    }
}

}  // namespace

double GaugeAxis::ShareOf(double value) const {
    const double share = scale.Share(value);
    return std::isfinite(share) ? std::clamp(share, 0.0, 1.0) : 0;
}

GaugeAxis MakeAxis(const GaugeScale& definition, const GaugeTrack& track, const GaugeKit& kit) {
    constexpr double UsualMaximum = 100, RoomOfLabel = 28;  // points
    GaugeAxis axis{definition, track};
    ScaleRequest request;
    request.any = true;
    request.minimum = kit.Values().Of(definition.minimum).value_or(0);
    request.maximum = kit.Values().Of(definition.maximum).value_or(UsualMaximum);
    request.low = *request.minimum;
    request.high = *request.maximum;
    request.includeZero = false;
    request.logarithmic = kit.Flag(definition, "Logarithmic", false);
    request.base = kit.Number(definition, "LogarithmicBase", 10);
    request.mostTicks = std::clamp(static_cast<int>(track.Length() / RoomOfLabel), 2, 10);
    axis.scale = MakeScale(request);
    return axis;
}

Color RangeColor(const GaugeAxis& axis, std::string_view property, double value, const GaugeKit& kit) {
    for (const GaugeRange& range : axis.definition.ranges) {
        if (!range[property].IsSet()) {
            continue;
        }
        const std::optional<double> start = kit.Values().Of(range.start), end = kit.Values().Of(range.end);
        if (start && end && value >= std::min(*start, *end) && value <= std::max(*start, *end)) {
            return kit.ColorOf(range, property);
        }
    }
    return Transparent;
}

void DrawScale(const GaugeAxis& axis, const GaugeKit& kit) {
    if (kit.IsHidden(axis.definition)) {
        return;
    }
    DrawRanges(axis, kit);
    const auto band = [&] {
        if (!axis.definition["Width"].IsSet()) {
            constexpr Border HairLine{LineStyle::Solid, TickGray, 0.5F};
            kit.Paper().Path(axis.track.Band(0, 1, 0, 0, 0, 0), Transparent, HairLine);
        } else if (axis.track.width > 0) {
            const double half = axis.track.width / 2;
            kit.Paper().Path(axis.track.Band(0, 1, -half, half, -half, half),
                             kit.Fill(axis.definition.style, BandGray), kit.Outline(axis.definition.style));
        }
    };
    const auto ticks = [&] {
        DrawTicks(axis, axis.definition.minorTicks, true, kit);
        DrawTicks(axis, axis.definition.majorTicks, false, kit);
    };
    if (kit.Flag(axis.definition, "TickMarksOnTop", false)) {
        DrawLabels(axis, kit);
        band();
        ticks();
    } else {
        ticks();
        band();
        DrawLabels(axis, kit);
    }
}

std::string DescribeScale(const GaugeAxis& axis, const GaugeKit& kit) {
    std::string words;
    for (const GaugePointer& pointer : axis.definition.pointers) {
        const std::optional<double> value = kit.Values().Of(pointer.value);
        if (value && !kit.IsHidden(pointer)) {
            words += (words.empty() ? "" : ", ") + NumberText(axis, *value, kit);
        }
    }
    return words.empty() ? words
                         : words + " (" + NumberText(axis, axis.scale.low, kit) + " to " +
                               NumberText(axis, axis.scale.high, kit) + ")";
}

}  // namespace rdl::layout
