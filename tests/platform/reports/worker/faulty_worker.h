// SPDX-License-Identifier: GPL-3.0-or-later
// The faults of the report process faulty_worker, which serves like oxc-report but for one of them.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <variant>

#include "platform/reports/worker/operations.h"

namespace faulty {

// "Write:Crash" crashes before the operation Write.
inline constexpr const char* Variable = "OXC_TEST_FAULT";
// The name of a file. The process that can remove it is faulty, all others are not. Without it all are.
inline constexpr const char* OnceVariable = "OXC_TEST_FAULT_ONCE";

inline constexpr std::array<std::string_view, 13> Operations{
    "Begin",    "Open",        "Close",      "LogOn",           "DefaultValues",  "ValidValues", "ClearField",
    "AddValue", "SetSwitches", "SetFormula", "SetExcelOptions", "SetHtmlOptions", "Write"};
static_assert(Operations.size() == std::variant_size_v<reports::worker::Operation>);

inline constexpr int ExitCode = 7;

}  // namespace faulty
