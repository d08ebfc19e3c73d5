// The window of oxc-mail.
#pragma once

namespace tools {

// Shows the dialog until it is closed; returns the exit code. Raises 57 when there is no display.
int ShowMailWindow(int argc, char** argv);

}  // namespace tools
