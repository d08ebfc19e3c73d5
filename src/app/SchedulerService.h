// SPDX-License-Identifier: GPL-3.0-or-later
// The scheduler as a service: its signals, its log and its service manager.
//
// SIGTERM and SIGINT end the process with code 0: at once, or while a mail is under way as soon as that is
// recorded, at the latest after thirty seconds. A second one ends it at once. SIGHUP reads the settings
// again, SIGUSR1 writes the state to the log.
#pragma once

#include <string>

namespace SchedulerService {

// Returns whether the arguments have "--log-format json". Another word is a line on standard error, and text.
bool WantsJson(int argc, char** argv);

// Turns the events of the log on, and takes the signals from now on. Call it before there are other threads.
void Start(bool isJson);

// Call it after the start-up, before the message loop runs. `isPolling` is the result of Global::Main: the
// manager hears that the scheduler is ready once the loop turns, and then gets signs of life from the loop;
// or it is asked to start the scheduler again.
void Serve(bool isPolling);

}  // namespace SchedulerService
