#include "scheduler/Due.h"

#include "platform/clock.h"
#include "platform/convert.h"

namespace Global {

bool IsDue(const Variant& nextRun, const Variant& runAt) {
    return CDate(nextRun) <= Today() && TimePart(CDate(runAt)) <= TimeOfDay();
}

}  // namespace Global
