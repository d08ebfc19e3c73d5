// Whether an item is due.
#pragma once

#include "platform/contracts/runtime.h"

namespace Global {

// The stored date has come and, tested by itself, the stored time of day has passed: an item of yesterday at
// 14:00 is not due at 13:59 today. Raises what the conversions raise.
bool IsDue(const Variant& nextRun, const Variant& runAt);

}  // namespace Global
