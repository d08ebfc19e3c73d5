// SPDX-License-Identifier: GPL-3.0-or-later
// Asks for a password.
#pragma once

#include <string>

namespace tools {

// Returns one line of standard input without its line end. At a terminal, `prompt` goes to standard error and
// the typed text is not shown; a signal that ends or suspends the program restores the terminal. Raises 75 if
// nothing can be read, if there is more than one line, or if the line is longer than 4096 bytes.
std::string ReadSecret(const std::string& prompt);

}  // namespace tools
