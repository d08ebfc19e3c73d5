// The poll over packages.
#pragma once

namespace Global {

// Finds the packages that are due, exports every report of each into the package's folder, mails the files
// once when the package asks for it, moves its next run on and writes its history row. Timer1 is off
// meanwhile. A failure leaves a row and an alert, leaves the packages behind it for the next poll and leaves
// Timer1 off: the single-schedule poll that follows in a tick turns it on.
void BatchReport();

}  // namespace Global
