// SPDX-License-Identifier: GPL-3.0-or-later
// Converts .NET format strings to Excel number formats (MS-XLS, 2.4.126 Format).
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "rdl/format/format.h"

namespace rdl::writers {

// Converts the format of a number or date. `shown` is the formatted value; it decides about optional
// decimals. nullopt if Excel has no such format: the cell then holds text.
std::optional<std::string> ExcelFormat(const Value& value, std::string_view format, const Culture& culture,
                                       std::string_view shown);
// Whether the format has optional decimals.
bool DependsOnValue(std::string_view format);

}  // namespace rdl::writers
