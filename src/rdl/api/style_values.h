// SPDX-License-Identifier: GPL-3.0-or-later
// What the values of styles mean, for programs that show them before a report runs (MS-RDL, Style: colours
// and Format).
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace rdl {

struct NamedColor {
    std::string_view name;  // lower case
    std::uint32_t argb = 0;
};

// Returns the colours that have names, Transparent first and the others by their names.
std::vector<NamedColor> NamedColors();

// Returns the colour of a name or of #RRGGBB as a report reads it, as 0xAARRGGBB; nullopt for any other text.
std::optional<std::uint32_t> ColorOf(std::string_view text);

// Return the value as a text box with this format shows it in this language ("de-DE"; a language that is not
// known is the invariant one). A format that does not fit the value shows it as it is.
std::string FormattedNumber(double number, std::string_view format, std::string_view language);
struct SampleDate {
    int year = 1, month = 1, day = 1, hour = 0, minute = 0, second = 0;
};
std::string FormattedDate(const SampleDate& date, std::string_view format, std::string_view language);

}  // namespace rdl
