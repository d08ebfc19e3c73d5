// The poll over single schedules.
#pragma once

namespace Global {

// Finds the single schedules that are due, runs each through RunReport, moves its next run on and writes its
// history row. Timer1 is off meanwhile. The first error ends the poll: it leaves a failure row and an alert;
// an error of that handling passes to the caller with the timer off.
void Schedchk();

}  // namespace Global
