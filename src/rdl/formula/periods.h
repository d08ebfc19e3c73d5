// Named ranges of days that are counted from the day of the run: {Orders.Date} in LastFullMonth.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "rdl/formula/function_table.h"

namespace rdl::formula {

// The number of a period by its name in small letters; nullopt when there is none.
std::optional<int> FindPeriod(std::string_view name);
// Functions of a period's number: its first moment and its last.
const FunctionInfo& PeriodStart();
const FunctionInfo& PeriodEnd();

}  // namespace rdl::formula
