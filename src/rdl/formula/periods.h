// SPDX-License-Identifier: GPL-3.0-or-later
// Named date ranges relative to the day of the run: {Orders.Date} in LastFullMonth.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "rdl/formula/function_table.h"

namespace rdl::formula {

// Returns the index of a period; `name` is in lower case. nullopt for any other text.
std::optional<int> FindPeriod(std::string_view name);
// The names of all periods, in lower case.
std::vector<std::string_view> PeriodNames();
// Functions that take a period's index and return its first and its last moment.
const FunctionInfo& PeriodStart();
const FunctionInfo& PeriodEnd();

}  // namespace rdl::formula
