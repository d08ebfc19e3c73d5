// The history of runs, and the alert that a failed poll sends.
#pragma once

#include <string>

#include "platform/runtime.h"

namespace Global {

// One row of ReportHistory. The key stands in the statement as it is, the others between ' marks without any
// escaping; an error passes to the caller.
void WriteRunHistory(const Variant& reportID, const Variant& lastRun, const Variant& status,
                     const Variant& errMsg);

// Tells AlertWho that a poll failed: "An error occured in <routine>. <description> [<number>]".
void AlertPollFailure(const std::string& routine, const RuntimeError& error);

}  // namespace Global
