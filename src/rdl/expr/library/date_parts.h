// SPDX-License-Identifier: GPL-3.0-or-later
// A part of a date, for functions and members: Year(date), date.Year.
#pragma once

#include "rdl/expr/library/functions.h"
#include "rdl/format/format.h"

namespace rdl::expr {

template <int DateTimeParts::*Part>
Value PartOf(const Call& call) {
    std::int64_t ticks = 0;
    return call.Date(0, ticks) ? Value::Integer(SplitTicks(ticks).*Part) : call.error;
}

}  // namespace rdl::expr
