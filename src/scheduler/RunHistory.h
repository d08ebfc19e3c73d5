// SPDX-License-Identifier: GPL-3.0-or-later
// Writes the history of runs and alerts failed ones.
#pragma once

#include <string>

#include "platform/contracts/runtime.h"

namespace Global {

// Returns the statement that inserts one row of ReportHistory. The key stands in the statement unquoted, the
// other values between ' marks. Nothing is escaped.
std::string RunHistoryStatement(const Variant& reportID, const Variant& lastRun, const Variant& status,
                                const Variant& errMsg);
// Writes that row on a connection of its own. An error passes to the caller.
void WriteRunHistory(const Variant& reportID, const Variant& lastRun, const Variant& status,
                     const Variant& errMsg);

// Returns the present time as ReportBatchHstry holds it, date and time with a comma between them.
std::string PackageHistoryMoment();
std::string PackageRunStatement(const std::string& reportID, const std::string& moment);
// Write the row of a delivered and of a failed package, at the present time, on a connection of their own. A
// failure has the success word "T" as well (sic); its error text marks it. Nothing is escaped. An error
// passes to the caller.
void WritePackageRun(const std::string& reportID);
void WritePackageFailure(const std::string& reportID, const std::string& description);

// Alerts AlertWho that a routine failed: "An error occured in <routine>. <description> [<number>]" (sic).
void AlertPollFailure(const std::string& routine, const RuntimeError& error);

}  // namespace Global
