// SPDX-License-Identifier: GPL-3.0-or-later
// The words of style properties (MS-RDL, Style) and what they mean. A word that is in no table means the
// default, as do those that name it.
#pragma once

#include <array>
#include <charconv>
#include <optional>
#include <string_view>
#include <utility>

#include "rdl/layout/model/style.h"
#include "rdl/values/ascii.h"
#include "rdl/values/named.h"

namespace rdl::layout {

template <typename E, std::size_t N>
E Choose(std::string_view text, const std::array<std::pair<std::string_view, E>, N>& words, E otherwise) {
    for (const auto& [word, value] : words) {
        if (EqualNoCase(text, word)) {
            return value;
        }
    }
    return otherwise;
}

inline constexpr std::array<std::pair<std::string_view, LineStyle>, 12> LineStyles{{
    {"None", LineStyle::None},
    {"Solid", LineStyle::Solid},
    {"Dotted", LineStyle::Dotted},
    {"Dashed", LineStyle::Dashed},
    {"Double", LineStyle::Double},
    {"DashDot", LineStyle::DashDot},
    {"DashDotDot", LineStyle::DashDotDot},
    {"Groove", LineStyle::Groove},
    {"Ridge", LineStyle::Ridge},
    {"Inset", LineStyle::Inset},
    {"WindowInset", LineStyle::WindowInset},
    {"Outset", LineStyle::Outset},
}};
inline constexpr std::array<std::pair<std::string_view, Gradient>, 7> Gradients{
    {{"LeftRight", Gradient::LeftRight},
     {"TopBottom", Gradient::TopBottom},
     {"Center", Gradient::Center},
     {"DiagonalLeft", Gradient::DiagonalLeft},
     {"DiagonalRight", Gradient::DiagonalRight},
     {"HorizontalCenter", Gradient::HorizontalCenter},
     {"VerticalCenter", Gradient::VerticalCenter}}};
inline constexpr std::array<std::pair<std::string_view, HAlign>, 4> HAligns{{{"Left", HAlign::Left},
                                                                             {"Center", HAlign::Center},
                                                                             {"Right", HAlign::Right},
                                                                             {"Justify", HAlign::Justify}}};
inline constexpr std::array<std::pair<std::string_view, VAlign>, 2> VAligns{
    {{"Middle", VAlign::Middle}, {"Bottom", VAlign::Bottom}}};
inline constexpr std::array<std::pair<std::string_view, WritingMode>, 3> WritingModes{
    {{"Vertical", WritingMode::Vertical},
     {"tb-rl", WritingMode::Vertical},
     {"Rotate270", WritingMode::Rotate270}}};
inline constexpr std::array<std::pair<std::string_view, Decoration>, 3> Decorations{
    {{"Underline", Decoration::Underline},
     {"Overline", Decoration::Overline},
     {"LineThrough", Decoration::LineThrough}}};
inline constexpr std::array<std::pair<std::string_view, int>, 11> Weights{{{"Normal", 400},
                                                                           {"Bold", 700},
                                                                           {"Bolder", 700},
                                                                           {"Lighter", 300},
                                                                           {"Thin", 100},
                                                                           {"ExtraLight", 200},
                                                                           {"Light", 300},
                                                                           {"Medium", 500},
                                                                           {"SemiBold", 600},
                                                                           {"ExtraBold", 800},
                                                                           {"Heavy", 900}}};
static_assert(NamesDiffer(LineStyles) && NamesDiffer(Gradients) && NamesDiffer(HAligns) &&
              NamesDiffer(VAligns) && NamesDiffer(WritingModes) && NamesDiffer(Decorations) &&
              NamesDiffer(Weights));

// Returns the weight from 1 to 1000 that a number in FontWeight gives; nullopt for another text.
inline std::optional<int> WeightOfNumber(std::string_view text) {
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool isNumber = error == std::errc() && end == text.data() + text.size();
    return isNumber && number >= 1 && number <= 1000 ? std::optional(number) : std::nullopt;
}

}  // namespace rdl::layout
