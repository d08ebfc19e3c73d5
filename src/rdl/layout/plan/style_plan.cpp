// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/layout/plan/style_plan.h"

#include <algorithm>

#include "rdl/layout/model/colors.h"
#include "rdl/layout/model/units.h"
#include "rdl/layout/plan/style_words.h"
#include "rdl/values/ascii.h"

namespace rdl::layout {
namespace {

void SetSize(std::string_view text, float& size, double largest) {
    double points = 0;
    if (ParseSize(text, points)) {
        size = static_cast<float>(std::clamp(points, 0.0, largest));
    }
}

// The borders that a property is about: all four, or one. The four kinds of each property stand in the order
// all, left, right, top, bottom.
template <typename Change>
void ForSides(BoxStyle& style, int side, Change change) {
    Border* const sides[] = {&style.left, &style.right, &style.top, &style.bottom};
    for (int i = 0; i < 4; ++i) {
        if (side == 0 || side == i + 1) {
            change(*sides[i]);
        }
    }
}

bool ApplyBorder(BoxStyle& style, StyleProperty property, std::string_view text) {
    const auto number = static_cast<int>(property);
    const auto in = [number](StyleProperty first) {
        return number >= static_cast<int>(first) && number <= static_cast<int>(first) + 4;
    };
    if (in(StyleProperty::BorderColor)) {
        ForSides(style, number - static_cast<int>(StyleProperty::BorderColor),
                 [text](Border& border) { ParseColor(text, border.color); });
    } else if (in(StyleProperty::BorderStyle)) {
        ForSides(style, number - static_cast<int>(StyleProperty::BorderStyle),
                 [text](Border& border) { border.style = Choose(text, LineStyles, LineStyle::None); });
    } else if (in(StyleProperty::BorderWidth)) {
        ForSides(style, number - static_cast<int>(StyleProperty::BorderWidth),
                 [text](Border& border) { SetSize(text, border.width, 100); });
    } else {
        return false;
    }
    return true;
}

void Apply(BoxStyle& style, StyleProperty property, std::string_view text) {
    constexpr double MaxPadding = 1000;
    if (ApplyBorder(style, property, text)) {
        return;
    }
    switch (property) {
        case StyleProperty::BackgroundColor:
            ParseColor(text, style.background);
            break;
        case StyleProperty::BackgroundGradientType:
            style.gradient = Choose(text, Gradients, Gradient::None);
            break;
        case StyleProperty::BackgroundGradientEndColor:
            ParseColor(text, style.gradientEnd);
            break;
        case StyleProperty::PaddingLeft:
            SetSize(text, style.paddingLeft, MaxPadding);
            break;
        case StyleProperty::PaddingRight:
            SetSize(text, style.paddingRight, MaxPadding);
            break;
        case StyleProperty::PaddingTop:
            SetSize(text, style.paddingTop, MaxPadding);
            break;
        case StyleProperty::PaddingBottom:
            SetSize(text, style.paddingBottom, MaxPadding);
            break;
        case StyleProperty::TextAlign:
            style.hAlign = ParseHAlign(text);
            break;
        case StyleProperty::VerticalAlign:
            style.vAlign = Choose(text, VAligns, VAlign::Top);
            break;
        case StyleProperty::WritingMode:
            style.writingMode = Choose(text, WritingModes, WritingMode::Horizontal);
            break;
        case StyleProperty::Direction:
            style.rightToLeft = EqualNoCase(text, "RTL");
            break;
        case StyleProperty::Format:
            style.format = text;
            break;
        case StyleProperty::Language:
            style.language = text;
            break;
        default:
            break;
    }
}

int ParseWeight(std::string_view text) {
    return WeightOfNumber(text).value_or(Choose(text, Weights, 400));
}

void Apply(CharStyle& style, StyleProperty property, std::string_view text) {
    constexpr double MaxFontSize = 2000;
    switch (property) {
        case StyleProperty::FontFamily:
            if (!text.empty()) {
                style.family = text.substr(0, 200);
            }
            break;
        case StyleProperty::FontSize:
            SetSize(text, style.size, MaxFontSize);
            style.size = std::max(style.size, 0.5F);
            break;
        case StyleProperty::FontStyle:
            style.italic = EqualNoCase(text, "Italic") || EqualNoCase(text, "Oblique");
            break;
        case StyleProperty::FontWeight:
            style.weight = ParseWeight(text);
            style.bold = style.weight >= 600;
            break;
        case StyleProperty::TextDecoration:
            style.decoration = Choose(text, Decorations, Decoration::None);
            break;
        case StyleProperty::Color:
            ParseColor(text, style.color);
            break;
        default:
            break;
    }
}

// A border without width or colour is none: every format leaves it out, and it hides no other one beside it.
void DropUnseen(BoxStyle& style) {
    ForSides(style, 0, [](Border& border) {
        if (!IsVisible(border)) {
            border.style = LineStyle::None;
        }
    });
}
void DropUnseen(CharStyle&) {}

// Pictures are no texts: BackgroundPlan computes them.
bool IsOfPicture(StyleProperty property) {
    return property >= StyleProperty::BackgroundImageSource && property <= StyleProperty::BackgroundPosition;
}

bool Concerns(const BoxStyle&, StyleProperty property) {
    switch (property) {
        case StyleProperty::FontFamily:
        case StyleProperty::FontSize:
        case StyleProperty::FontStyle:
        case StyleProperty::FontWeight:
        case StyleProperty::TextDecoration:
        case StyleProperty::Color:
        case StyleProperty::LineHeight:
            return false;
        default:
            return !IsOfPicture(property);
    }
}

bool Concerns(const CharStyle&, StyleProperty property) {
    return !IsOfPicture(property) && property != StyleProperty::LineHeight && !Concerns(BoxStyle(), property);
}

}  // namespace

HAlign ParseHAlign(std::string_view text) {
    return Choose(text, HAligns, HAlign::General);
}

template <typename T>
void StylePlan<T>::Compile(const std::vector<const Style*>& layers, const Programs& programs) {
    m_properties.clear();
    m_dynamic = false;
    for (const Style* layer : layers) {
        for (const auto& [name, source] : layer->properties) {
            if (!Concerns(T(), name)) {
                continue;
            }
            const auto property = name;
            const auto known =
                std::find_if(m_properties.begin(), m_properties.end(),
                             [property](const auto& entry) { return entry.first == property; });
            if (known != m_properties.end()) {
                known->second = Property(source, programs);
            } else {
                m_properties.emplace_back(name, Property(source, programs));
            }
        }
    }
    std::stable_sort(m_properties.begin(), m_properties.end(),
                     [](const auto& left, const auto& right) { return left.first < right.first; });
    for (const auto& [name, property] : m_properties) {
        m_dynamic = m_dynamic || !property.IsConstant();
    }
    if (!m_dynamic) {
        m_constant = Make({});
    }
}

template <typename T>
std::shared_ptr<const T> StylePlan<T>::Make(const std::vector<std::string>& texts) const {
    auto style = std::make_shared<T>();
    std::size_t next = 0;
    for (const auto& [name, property] : m_properties) {
        if (!property.IsConstant()) {
            Apply(*style, name, texts[next++]);
        } else if (property.constant.IsText()) {
            Apply(*style, name, property.constant.AsText());
        }
    }
    DropUnseen(*style);
    return style;
}

template <typename T>
const std::shared_ptr<const T>& StylePlan<T>::Get(expr::Environment& environment) {
    if (!m_dynamic) {
        return m_constant;
    }
    std::vector<std::string> texts;
    for (const auto& [name, property] : m_properties) {
        if (!property.IsConstant()) {
            const Value value = property.Get(environment);
            texts.push_back(value.IsError() ? std::string() : ToText(value, environment.CurrentCulture()));
        }
    }
    for (const auto& [known, style] : m_recent) {
        if (known == texts) {
            return style;
        }
    }
    auto style = Make(texts);
    if (m_recent.size() < KeptResults) {
        m_recent.emplace_back(std::move(texts), std::move(style));
        return m_recent.back().second;
    }
    auto& slot = m_recent[m_nextRecent++ % KeptResults];
    slot = {std::move(texts), std::move(style)};
    return slot.second;
}

template class StylePlan<BoxStyle>;
template class StylePlan<CharStyle>;

}  // namespace rdl::layout
