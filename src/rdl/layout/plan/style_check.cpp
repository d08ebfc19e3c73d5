// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/layout/plan/style_check.h"

#include <algorithm>
#include <initializer_list>
#include <vector>

#include "rdl/layout/model/colors.h"
#include "rdl/layout/model/units.h"
#include "rdl/layout/plan/style_words.h"
#include "rdl/values/ascii.h"
#include "rdl/values/error_text.h"
#include "rdl/values/near_word.h"
#include "rdl/values/utf8.h"

namespace rdl::layout {
namespace {

using Words = std::vector<std::string_view>;
using P = StyleProperty;

// Those of a table, and those that name the default.
template <typename E, std::size_t N>
Words WordsOf(const std::array<std::pair<std::string_view, E>, N>& table,
              std::initializer_list<std::string_view> more) {
    Words words;
    for (const auto& [word, value] : table) {
        words.push_back(word);
    }
    words.insert(words.end(), more);
    words.push_back("Default");
    return words;
}

// Empty for a property that is not one of some words.
Words WordsOf(StyleProperty property) {
    switch (property) {
        case P::BackgroundGradientType:
            return WordsOf(Gradients, {"None"});
        case P::BackgroundRepeat:
            return {"Repeat", "RepeatX", "RepeatY", "Clip", "NoRepeat", "Fit", "FitProportional", "Default"};
        case P::BackgroundPosition:
            return {"Top",   "TopLeft",    "TopRight",    "Left",   "Center",
                    "Right", "BottomLeft", "BottomRight", "Bottom", "Default"};
        case P::BorderStyle:
        case P::BorderStyleLeft:
        case P::BorderStyleRight:
        case P::BorderStyleTop:
        case P::BorderStyleBottom:
            return WordsOf(LineStyles, {});
        case P::Direction:
            return {"LTR", "RTL", "Default"};
        case P::FontStyle:
            return {"Normal", "Italic", "Oblique", "Default"};
        case P::FontWeight:
            return WordsOf(Weights, {});
        case P::TextAlign:
            return WordsOf(HAligns, {"General"});
        case P::TextDecoration:
            return WordsOf(Decorations, {"None"});
        case P::VerticalAlign:
            return WordsOf(VAligns, {"Top"});
        case P::WritingMode:
            return WordsOf(WritingModes, {"Horizontal", "lr-tb"});
        default:
            return {};
    }
}

bool IsColor(StyleProperty property) {
    return property == P::Color || property == P::BackgroundColor ||
           property == P::BackgroundGradientEndColor ||
           (property >= P::BorderColor && property <= P::BorderColorBottom);
}

bool IsSize(StyleProperty property) {
    return property == P::FontSize || property == P::LineHeight ||
           (property >= P::BorderWidth && property <= P::BorderWidthBottom) ||
           (property >= P::PaddingLeft && property <= P::PaddingBottom);
}

constexpr std::size_t LongestShown = 80;

std::string Unknown(std::string_view value, const char* isWhat, const Words& words) {
    NearWord search(Trimmed(value));
    for (const std::string_view word : words) {
        search.Try(word);
    }
    const std::string shown =
        std::string(WholeCharacters(value, LongestShown)) + (value.size() > LongestShown ? "..." : "");
    return "\"" + WithoutMarks(shown) + "\" is " + isWhat +
           (search.Nearest().empty() ? "" : "; the nearest is \"" + search.Nearest() + "\"");
}

}  // namespace

std::string FlawOfStyle(StyleProperty property, std::string_view value) {
    if (IsColor(property)) {
        Color color = Transparent;
        return ParseColor(value, color) ? std::string() : Unknown(value, "no colour", ColorNames());
    }
    if (IsSize(property)) {
        double points = 0;
        return ParseSize(value, points)
                   ? std::string()
                   : Unknown(value, "not a size (a number with in, cm, mm, pt or pc)", {});
    }
    const Words words = WordsOf(property);
    const bool isKnown = words.empty() || (property == P::FontWeight && WeightOfNumber(value)) ||
                         std::any_of(words.begin(), words.end(),
                                     [value](std::string_view word) { return EqualNoCase(word, value); });
    return isKnown ? std::string() : Unknown(value, "not known", words);
}

}  // namespace rdl::layout
