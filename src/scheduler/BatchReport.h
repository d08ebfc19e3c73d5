// SPDX-License-Identifier: GPL-3.0-or-later
// The poll over packages.
#pragma once

namespace Global {

// Finds the due packages, exports every report of each into the package's folder, mails the files once if the
// package asks for it, stores the next run and writes the history row. Timer1 is off meanwhile. A failure
// writes a failure row, sends an alert, leaves the packages after it for the next poll and leaves Timer1 off:
// Schedchk, which follows in the same tick, turns it on.
void BatchReport();

}  // namespace Global
