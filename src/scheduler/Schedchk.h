// SPDX-License-Identifier: GPL-3.0-or-later
// The poll over single schedules.
#pragma once

namespace Global {

// Finds the due single schedules, runs each with RunReport, stores its next run and writes its history row.
// Timer1 is off meanwhile. The first error ends the poll, writes a failure row and sends an alert. An error
// while that is done passes to the caller and leaves the timer off.
void Schedchk();

}  // namespace Global
