// SPDX-License-Identifier: GPL-3.0-or-later
// Runs a stored package: files in its folder and one mail. The poll and the run on demand share it.
#pragma once

#include "execution/ExportFormat.h"
#include "platform/contracts/adodb.h"

namespace Global {

// Runs every report of the package in the current row of ReportBatch into the package's folder. Each report
// gets its stored values by position, without a logon and without a formula. Then mails the files once if the
// package asks for it. `runner` selects the format words that are known. Returns false if the mail failed.
// Errors pass to the caller: 9 for a 21st report, 424 for a parameter of value type code 22.
bool RunPackage(const ADODB::Recordset& package, Runner runner);

}  // namespace Global
