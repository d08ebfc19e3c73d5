// The history of runs, and the alert that a failed run sends.
#pragma once

#include <string>

#include "platform/contracts/runtime.h"

namespace Global {

// The insert of one row of ReportHistory. The key stands in the statement as it is, the others between '
// marks without any escaping.
std::string RunHistoryStatement(const Variant& reportID, const Variant& lastRun, const Variant& status,
                                const Variant& errMsg);
// Writes that row; an error passes to the caller.
void WriteRunHistory(const Variant& reportID, const Variant& lastRun, const Variant& status,
                     const Variant& errMsg);

// The present moment as ReportBatchHstry holds it, and the insert of a delivered package's row with a moment.
std::string PackageHistoryMoment();
std::string PackageRunStatement(const std::string& reportID, const std::string& moment);
// That row at the present moment, and the row of a failed package, written on a connection of their own. The
// success word of a failure is "T" as well; what marks it is the text after it. Nothing is escaped; an error
// passes on.
void WritePackageRun(const std::string& reportID);
void WritePackageFailure(const std::string& reportID, const std::string& description);

// Tells AlertWho that a routine failed: "An error occured in <routine>. <description> [<number>]".
void AlertPollFailure(const std::string& routine, const RuntimeError& error);

}  // namespace Global
