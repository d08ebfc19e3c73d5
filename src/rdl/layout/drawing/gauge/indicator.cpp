// SPDX-License-Identifier: GPL-3.0-or-later
// Indicators: a picture or a number that stands for a value.
#include <algorithm>
#include <cmath>

#include "rdl/layout/drawing/gauge/draw.h"
#include "rdl/layout/drawing/gauge/indicator_icons.h"

namespace rdl::layout {
namespace {

constexpr Color IconGray = 0xFF708090;

// Returns the state of a value. If several states contain it, the one that begins last counts, and of those
// the narrowest: 33 is in 33 to 66, not in 0 to 33. An end that is not given is open.
const GaugeState* StateOf(const GaugeItem& indicator, double value, const GaugeKit& kit) {
    const GaugeState* found = nullptr;
    double bestStart = 0, bestEnd = 0;
    for (const GaugeState& state : indicator.states) {
        const double start = kit.Values().Of(state.start).value_or(-HUGE_VAL);
        const double end = kit.Values().Of(state.end).value_or(HUGE_VAL);
        if (value < start || value > end) {
            continue;
        }
        if (!found || start > bestStart || (start == bestStart && end < bestEnd)) {
            found = &state;
            bestStart = start;
            bestEnd = end;
        }
    }
    return found;
}

Rect ScaledSquare(const Rect& area, double factor) {
    const double side = std::min(area.width, area.height) * std::clamp(factor, 0.0, 1.0);
    return {area.x + (area.width - side) / 2, area.y + (area.height - side) / 2, side, side};
}

std::string ValueText(const GaugeItem& indicator, double value, const GaugeKit& kit) {
    const std::string format = kit.Styles().Format(indicator.style);
    return FormatValue(Value::Real(value), format.empty() ? "#,0.####" : format, kit.NumberCulture());
}

}  // namespace

std::string DrawStateIndicator(const GaugeItem& indicator, std::optional<double> value, const Rect& area,
                               const GaugeKit& kit, PropertyReader& reader) {
    const GaugeState* state = value ? StateOf(indicator, *value, kit) : nullptr;
    if (!state && (!value || !indicator.states.empty())) {
        return {};
    }
    std::string icon = state ? kit.Text(*state, "IndicatorStyle") : std::string();
    icon = icon.empty() ? kit.Text(indicator, "IndicatorStyle") : icon;
    icon = icon.empty() ? "Circle" : icon;
    const double factor =
        kit.Number(indicator, "ScaleFactor", 1) * (state ? kit.Number(*state, "ScaleFactor", 1) : 1);
    const Rect square = ScaledSquare(area, factor);
    if (icon == "Image") {
        const GaugeImage& own = state && state->image.value.IsSet() ? state->image : indicator.image;
        kit.Paper().Picture(reader.PictureOf(own, indicator.name), square, indicator.name);
    } else {
        const Color color = state ? kit.ColorOf(*state, "Color") : Transparent;
        DrawIcon(icon, square, IsVisible(color) ? color : kit.Fill(indicator.style, IconGray), kit.Paper());
    }
    const std::optional<double> plain = kit.Values().Of(indicator.value);
    return (plain ? ValueText(indicator, *plain, kit) + ", " : std::string()) + WordsOf(icon);
}

std::string DrawNumericIndicator(const GaugeItem& indicator, const Rect& area, const GaugeKit& kit) {
    std::optional<double> value = kit.Values().Of(indicator.value);
    std::string text;
    if (!value) {
        text = kit.Text(indicator, "NonNumericString");
        text = text.empty() ? "-" : text;
    } else {
        const double number = *value * kit.Number(indicator, "Multiplier", 1);
        const double low = kit.Values().Of(indicator.minimum).value_or(-HUGE_VAL);
        const double high = kit.Values().Of(indicator.maximum).value_or(HUGE_VAL);
        if (number < low || number > high) {
            text = kit.Text(indicator, "OutOfRangeString");
            text = text.empty() ? "Error" : text;
        } else if (indicator["DecimalDigits"].IsSet() && kit.Styles().Format(indicator.style).empty()) {
            const int digits = std::clamp(static_cast<int>(kit.Number(indicator, "DecimalDigits", 0)), 0, 10);
            text = FormatValue(Value::Real(number), "N" + std::to_string(digits), kit.NumberCulture());
        } else {
            text = ValueText(indicator, number, kit);
        }
        if (number > 0 && kit.Is(indicator, "ShowSign", "Both")) {
            text = "+" + text;
        }
    }
    CharStyle textStyle = *kit.Styles().TextStyle(indicator.style, 10);
    if (const Color own = kit.ColorOf(indicator, "DigitColor"); IsVisible(own)) {
        textStyle.color = own;
    }
    const GaugeState* state = value ? StateOf(indicator, *value, kit) : nullptr;
    if (const Color own = state ? kit.ColorOf(*state, "DigitColor") : Transparent; IsVisible(own)) {
        textStyle.color = own;
    }
    if (kit.Flag(indicator, "UseFontPercent", false)) {
        textStyle.size = static_cast<float>(static_cast<double>(textStyle.size) * Percent * area.height);
    }
    BoxStyle box = *kit.Styles().Box(indicator.style);
    kit.Paper().Box(area, &box);
    box.hAlign = box.hAlign == HAlign::General ? HAlign::Center : box.hAlign;
    box.vAlign = indicator.style.Find(StyleProperty::VerticalAlign) ? box.vAlign : VAlign::Middle;
    DrawFitted(text, textStyle, box, area, !kit.Is(indicator, "ResizeMode", "None"), 0, kit.Paper());
    return text;
}

}  // namespace rdl::layout
