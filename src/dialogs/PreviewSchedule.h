// A single schedule on the screen.
#pragma once

#include "platform/contracts/runtime.h"

namespace Global {

// Opens the schedule's report as it would run, with logon, formula and stored values, and shows it in the
// preview window. Any error shows the error box instead.
void PreviewSchedule(const Variant& reportID);

}  // namespace Global
