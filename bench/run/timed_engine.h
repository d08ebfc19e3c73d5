// SPDX-License-Identifier: GPL-3.0-or-later
// The report engine with a stopwatch on opening and exporting.
#pragma once

#include "bench/run/stopwatch.h"
#include "platform/contracts/report_engine.h"

extern Stopwatch g_opening, g_exporting;  // exporting includes the engine's own mailing

// Runs reports in this process.
std::shared_ptr<report::Engine> CreateTimedEngine();
// Runs them in a report process, with the oxc-report of OXC_STAGE.
std::shared_ptr<report::Engine> CreateTimedWorkerEngine();
