// Cultures that culture_table.cpp has no row for, as the Unicode locale data that Qt carries describes them.
// What the environment says of the user's own region has no part in it.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "rdl/format/format.h"

namespace rdl {

// Language and region in full: "uk-UA" for "uk", "zh-TW" for "zh-Hant". Empty when the language or the region
// is unknown.
std::string FullCultureName(std::string_view name);

// By a full name. nullopt when language and region are known, but nobody writes the one in the other.
std::optional<Culture> LocaleCulture(std::string_view fullName);

// Symbol and decimals of the money of a full name's region.
void TakeRegionCurrency(std::string_view fullName, Culture& culture);

}  // namespace rdl
