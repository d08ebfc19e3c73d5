// SPDX-License-Identifier: GPL-3.0-or-later
// The looks that a new report can have.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "platform/base/named.h"

namespace designer {

// Colours are #RRGGBB; an empty fill is none.
struct Theme {
    std::string_view name, title;  // on a command line; in a list
    std::string_view font, headingFont;
    double relativeWidth;  // of the font's characters, compared with Arial's
    std::string_view ink, titleColour;
    std::string_view headFill, headInk;    // the row of headings
    std::string_view groupFill, groupInk;  // of the outermost group; groups within it have no fill
    std::string_view totalFill, totalInk;  // the grand total
    std::string_view band;                 // every second row
    std::string_view rule;                 // lines
    std::array<std::string_view, 6> palette;
};

inline constexpr std::array Themes = {
    Theme{"plain",
          "Plain",
          "Arial",
          "Arial",
          1.0,
          "#222222",
          "#000000",
          "",
          "#000000",
          "",
          "#000000",
          "",
          "#000000",
          "",
          "#7F7F7F",
          {"#4D4D4D", "#8C8C8C", "#B8B8B8", "#6E6E6E", "#A3A3A3", "#D0D0D0"}},
    Theme{"ocean",
          "Ocean",
          "Calibri",
          "Calibri",
          1.0,
          "#22303C",
          "#0B4F7D",
          "#0B4F7D",
          "#FFFFFF",
          "#DCEBF5",
          "#0B4F7D",
          "#0B4F7D",
          "#FFFFFF",
          "",
          "#A9C6DA",
          {"#0B4F7D", "#2F8FC4", "#7CC0E4", "#13727A", "#44AFA8", "#F0A73C"}},
    Theme{"forest",
          "Forest",
          "Arial",
          "Georgia",
          1.0,
          "#26302A",
          "#24573B",
          "#24573B",
          "#FFFFFF",
          "#E4EFE7",
          "#24573B",
          "#CFE3D5",
          "#1B422C",
          "#F5F9F6",
          "#A9C7B3",
          {"#24573B", "#5B9A6F", "#9CC7A4", "#8A7B2E", "#C6B45A", "#B5563C"}},
    Theme{"slate",
          "Slate",
          "Arial",
          "Arial",
          1.0,
          "#2B3036",
          "#2B3036",
          "#3C4650",
          "#FFFFFF",
          "#E6E9EC",
          "#2B3036",
          "#E6E9EC",
          "#2B3036",
          "#F6F7F8",
          "#B4BBC2",
          {"#3C4650", "#76838F", "#A9B4BE", "#C8553D", "#588B8B", "#E0A458"}},
    Theme{"ember",
          "Ember",
          "Verdana",
          "Verdana",
          1.17,
          "#3A2A24",
          "#9C3A1E",
          "#F3D9CC",
          "#6E2813",
          "#FBEFE8",
          "#9C3A1E",
          "#F3D9CC",
          "#6E2813",
          "",
          "#DDB8A6",
          {"#9C3A1E", "#D9763F", "#F0B27A", "#6B705C", "#A5A58D", "#3D5A80"}},
};
static_assert(NamesDiffer(Themes));

// Null if there is no theme of the name.
constexpr const Theme* FindTheme(std::string_view name) {
    for (const Theme& theme : Themes) {
        if (theme.name == name) {
            return &theme;
        }
    }
    return nullptr;
}

// Returns the names with ", " between them and " or " before the last one.
std::string ThemeNames();

}  // namespace designer
