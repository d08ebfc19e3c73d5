// Start-up of both programs.
#pragma once

namespace Global {

// The first-run steps when they are due, the settings, then by the command line: empty, the editor shows its
// windows; anything else, the scheduler hides the main window, turns the timer and the tray icon on and polls
// once. Errors are dealt with here. Afterwards the process lives in the message loop.
void Main();

}  // namespace Global
