// SPDX-License-Identifier: GPL-3.0-or-later
// Moments as texts that sort by time.
#pragma once

#include <array>
#include <cstdio>
#include <string>

#include "platform/contracts/dates.h"

// Returns 2024-02-29 13:05:07, with `between` after the date.
inline std::string MomentText(DateValue moment, char between = ' ') {
    const DateParts parts = Split(moment);
    std::array<char, 80> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02d-%02d%c%02d:%02d:%02d", parts.year, parts.month,
                  parts.day, between, parts.hour, parts.minute, parts.second);
    return text.data();
}
