// SPDX-License-Identifier: GPL-3.0-or-later
#include "scheduler/Due.h"

#include "platform/base/convert.h"
#include "platform/contracts/clock.h"

namespace Global {

bool IsDue(const Variant& nextRun, const Variant& runAt) {
    return CDate(nextRun) <= Today() && TimePart(CDate(runAt)) <= TimeOfDay();
}

}  // namespace Global
