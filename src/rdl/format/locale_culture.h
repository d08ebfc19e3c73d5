// SPDX-License-Identifier: GPL-3.0-or-later
// Cultures without a row in culture_table.cpp, built from the Unicode locale data in Qt. The environment's
// own locale is ignored.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "rdl/format/format.h"

namespace rdl {

// Returns the name with its region: "uk-UA" for "uk", "zh-TW" for "zh-Hant". Empty if the language or region
// is unknown.
std::string FullCultureName(std::string_view name);

// `fullName` comes from FullCultureName. Returns nullopt if the locale data has no such combination of
// language and region.
std::optional<Culture> LocaleCulture(std::string_view fullName);

// Sets currency symbol and decimals from the region of `fullName`.
void TakeRegionCurrency(std::string_view fullName, Culture& culture);

}  // namespace rdl
