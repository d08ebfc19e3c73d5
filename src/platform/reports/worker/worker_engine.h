// SPDX-License-Identifier: GPL-3.0-or-later
// The report engine of runs: each report is opened and run in a report process, oxc-report beside this
// program. Whatever a report does to that process is a run-time error of its run, and the next report gets
// another one.
//
// The process starts with the first report and stays for the next ones. Another one takes its place after a
// failure, after Settings::mostReports reports, and when it holds too much memory.
//
// This program opens the document's file, gives the process the open file to write, and gives it its name
// once the process has answered: a document appears complete or not at all, whenever the process ends. This
// program also sends the mail, after that: a process that ends before has mailed nothing, and one that ends
// later has nothing to do with the mail. The process never sees the mail profile.
#pragma once

#include <memory>

#include "platform/contracts/report_engine.h"
#include "platform/reports/worker/settings.h"

namespace reports::worker {

// Makes the engine. OpenReport raises RuntimeError WorkerFailed if no process can be started. A report of it
// has no pages for the screen: OpenPages raises 5.
std::shared_ptr<report::Engine> CreateWorkerEngine(Settings settings);

// Makes the engine with SettingsOfMachine, for report::SetRunEngineFactory.
std::shared_ptr<report::Engine> CreateMachineWorkerEngine();

}  // namespace reports::worker
