// SPDX-License-Identifier: GPL-3.0-or-later
// Start-up of the editor and of the scheduler.
#pragma once

namespace Global {

// Takes the first-run steps if they are due and reads the settings. Then the command line decides. Empty: the
// editor shows its windows, and the wizard if another program has handed a report to it. Any other text: the
// scheduler hides the main window, turns on the timer and the tray icon and polls once. Errors are handled
// here. After the return the process lives in the message loop. Returns false for a scheduler that will not
// poll until it is started again.
bool Main();

}  // namespace Global
