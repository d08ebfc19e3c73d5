// SPDX-License-Identifier: GPL-3.0-or-later
// The preview of a single schedule.
#pragma once

#include "platform/contracts/runtime.h"

namespace Global {

// Opens the schedule's report with its logon, formula and stored values, as a run would, and shows it in the
// preview window. An error is shown in the error box.
void PreviewSchedule(const Variant& reportID);

}  // namespace Global
