// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/layout/drawing/part_styles.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string_view>

#include "rdl/expr/operations/convert.h"
#include "rdl/layout/model/colors.h"
#include "rdl/layout/model/units.h"
#include "rdl/layout/plan/style_plan.h"
#include "rdl/values/ascii.h"
#include "rdl/values/utf8.h"

namespace rdl::layout {
namespace {

constexpr double MostBorder = 50;  // points

// The number that the text begins with, as report files write it: with a point. What follows it stays in
// `text`; nullopt when there is none.
std::optional<double> TakeNumber(std::string_view& text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
    if (text.size() > 1 && text[0] == '+' && text[1] != '-') {
        text.remove_prefix(1);
    }
    double number = 0;
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), number);
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return failure == std::errc() && std::isfinite(number) ? std::optional(number) : std::nullopt;
}

}  // namespace

bool NumberOf(const Value& value, double& number) {
    if (value.IsNumber()) {
        number = value.AsDouble();
    } else if (value.kind() == Kind::DateTime || value.kind() == Kind::TimeSpan) {
        number = static_cast<double>(value.AsTicks()) / static_cast<double>(TicksPerDay);
    } else if (value.IsText()) {  // constants, and files whose columns have no types
        std::string_view text = value.AsText();
        const std::optional<double> read = TakeNumber(text);
        number = read.value_or(0);
        return read && text.empty();
    } else {
        return false;
    }
    return std::isfinite(number);
}

std::string ReadableText(std::string text) {
    constexpr std::size_t Most = 400;  // bytes
    text.resize(WholeCharacters(text, Most).size());
    return text;
}

Value PartStyles::Get(const Expr& source) const {
    return source.IsSet() ? Property(source, m_programs).Get(m_reader.Place()) : Value();
}

std::string PartStyles::Text(const Expr& source) const {
    return source.IsSet() ? m_reader.Text(Property(source, m_programs)) : std::string();
}

std::optional<double> PartStyles::Number(const Expr& source) const {
    const Value value = Get(source);
    if (value.IsNumber()) {
        return std::isfinite(value.AsDouble()) ? std::optional(value.AsDouble()) : std::nullopt;
    }
    if (!value.IsText()) {
        return std::nullopt;
    }
    std::string_view text = value.AsText();
    return TakeNumber(text);
}

std::optional<bool> PartStyles::Flag(const Expr& source) const {
    bool flag = false;
    return source.IsSet() && expr::ToBoolean(Get(source), flag) ? std::optional(flag) : std::nullopt;
}

CharStylePtr PartStyles::TextStyle(const Style& style, float size) const {
    CharStylePlan plan;
    plan.Compile({&style}, m_programs);
    CharStylePtr textStyle = plan.Get(m_reader.Place());
    if (style.Find(StyleProperty::FontSize)) {
        return textStyle;
    }
    CharStyle sized = *textStyle;
    sized.size = size;
    return std::make_shared<const CharStyle>(std::move(sized));
}

BoxStylePtr PartStyles::Box(const Style& style) const {
    BoxStylePlan plan;
    plan.Compile({&style}, m_programs);
    return plan.Get(m_reader.Place());
}

std::string PartStyles::Part(const Style& style, StyleProperty property) const {
    const Expr* source = style.Find(property);
    return source ? Text(*source) : std::string();
}

std::string PartStyles::Format(const Style& style) const {
    return Part(style, StyleProperty::Format);
}

Color PartStyles::ColorOf(const Style& style, std::initializer_list<StyleProperty> properties) const {
    for (const StyleProperty property : properties) {
        Color color = Transparent;
        if (ParseColor(Part(style, property), color) && IsVisible(color)) {
            return color;
        }
    }
    return Transparent;
}

Border PartStyles::LineOf(const Style& style, Color color, float width) const {
    const BoxStylePtr box = Box(style);
    Border border{LineStyle::Solid, color, width};
    const std::string wanted = Part(style, StyleProperty::BorderStyle);
    if (!wanted.empty() && !EqualNoCase(wanted, "Default")) {
        border.style = box->left.style;
    }
    if (style.Find(StyleProperty::BorderWidth)) {
        border.width = std::min(box->left.width, static_cast<float>(MostBorder));
    }
    if (const Color own = ColorOf(style, {StyleProperty::BorderColor}); IsVisible(own)) {
        border.color = own;
    }
    return border;
}

Border PartStyles::BorderOf(const Style& style) const {
    return Box(style)->left;
}

double PartStyles::Points(const Expr& source, double otherwise) const {
    double points = 0;
    return source.IsSet() && ParseSize(Text(source), points) ? std::clamp(points, 0.0, MostBorder)
                                                             : otherwise;
}

ChartCaption PartStyles::Caption(const ChartText& text, float size) const {
    ChartCaption caption;
    if (!Flag(text.hidden).value_or(false)) {
        caption.text = ReadableText(Text(text.caption));
    }
    caption.position = Text(text.position);
    caption.style = TextStyle(text.style, size);
    caption.box = Box(text.style);
    return caption;
}

}  // namespace rdl::layout
