// SPDX-License-Identifier: GPL-3.0-or-later
// Tests whether a schedule or a package is due.
#pragma once

#include "platform/contracts/runtime.h"

namespace Global {

// Returns true if the stored date has come and the stored time of day has passed. The two are tested
// separately: an item of yesterday, 14:00, is not due at 13:59 today. Raises as CDate: 13 for a text that is
// not a date or time, 94 for Null.
bool IsDue(const Variant& nextRun, const Variant& runAt);

}  // namespace Global
