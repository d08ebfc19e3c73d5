// SPDX-License-Identifier: GPL-3.0-or-later
// Dates and times of day as ISO 8601 writes them.
#pragma once

#include <array>
#include <cstdio>
#include <string>

#include "rdl/format/format.h"

namespace rdl {

// Returns 2024-02-29.
inline std::string IsoDate(const DateTimeParts& parts) {
    std::array<char, 48> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02d-%02d", parts.year, parts.month, parts.day);
    return text.data();
}

// Returns 13:05:07, without the fraction.
inline std::string IsoTime(const DateTimeParts& parts) {
    std::array<char, 48> text{};
    std::snprintf(text.data(), text.size(), "%02d:%02d:%02d", parts.hour, parts.minute, parts.second);
    return text.data();
}

// Returns .0000001: tenths of microseconds.
inline std::string IsoFraction(const DateTimeParts& parts) {
    std::array<char, 24> text{};
    std::snprintf(text.data(), text.size(), ".%07d", parts.fraction);
    return text.data();
}

}  // namespace rdl
