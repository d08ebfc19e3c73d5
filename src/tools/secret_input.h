// Asking for a password.
#pragma once

#include <string>

namespace tools {

// One line of standard input without its end. At a terminal `prompt` goes to standard error and what is typed
// is not shown; a signal that ends or suspends the program finds the terminal as it was. Raises 75 when
// nothing can be read, when there is more than one line and when the line is longer than 4096 bytes.
std::string ReadSecret(const std::string& prompt);

}  // namespace tools
