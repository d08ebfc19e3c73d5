// SPDX-License-Identifier: GPL-3.0-or-later
// Converts the system's moments to the report engine's.
#pragma once

#include <cstdint>

#include "platform/contracts/dates.h"
#include "rdl/values/value.h"

namespace reports {

// Returns ticks of 100 ns since 0001-01-01.
inline std::int64_t TicksOf(DateValue moment) {
    constexpr std::int64_t ZeroDateDays = 693'593;  // from 0001-01-01 to 1899-12-30
    constexpr std::int64_t SecondsPerDay = 86'400;
    return (moment.Seconds() + ZeroDateDays * SecondsPerDay) * rdl::TicksPerSecond;
}

}  // namespace reports
