// From a stored package to files in its folder and one mail. The poll and the run on demand share it.
#pragma once

#include "execution/ExportFormat.h"
#include "platform/contracts/adodb.h"

namespace Global {

// Runs every report of the package in the current row of ReportBatch into the package's folder, each with its
// stored values by position, without a logon and without a formula; then mails the files once when the
// package asks for it. `runner` decides which format words count. False: the mail failed. Errors pass to the
// caller: 9 for a 21st report, 424 for a parameter of value type code 22.
bool RunPackage(const ADODB::Recordset& package, Runner runner);

}  // namespace Global
