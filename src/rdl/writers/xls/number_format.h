// .NET format strings as Excel's.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "rdl/format/format.h"

namespace rdl::writers {

// For a number or a date; `shown` is how the value looks by the format, which settles decimals that are only
// sometimes there. Nothing when Excel has no such format: the cell is then its text.
std::optional<std::string> ExcelFormat(const Value& value, std::string_view format, const Culture& culture,
                                       std::string_view shown);
// Whether the format has decimals that only some values show.
bool DependsOnValue(std::string_view format);

}  // namespace rdl::writers
