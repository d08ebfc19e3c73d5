// SPDX-License-Identifier: GPL-3.0-or-later
// Errors of what a new report is made of.
#pragma once

#include <string>

#include "platform/contracts/runtime.h"

namespace designer {

inline constexpr std::int32_t CannotBeMade = 5;  // "Invalid procedure call or argument"

[[noreturn]] inline void Refuse(const std::string& why) {
    throw RuntimeError(CannotBeMade, why);
}

}  // namespace designer
