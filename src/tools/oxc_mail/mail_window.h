// SPDX-License-Identifier: GPL-3.0-or-later
// The window of oxc-mail.
#pragma once

namespace tools {

// Shows the dialog until it is closed and returns the exit code. Raises 57 if there is no display.
int ShowMailWindow(int argc, char** argv);

}  // namespace tools
