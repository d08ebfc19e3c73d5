// SPDX-License-Identifier: GPL-3.0-or-later
// What the programs write to standard output and standard error.
#pragma once

#include <string>
#include <string_view>

namespace tools {

// Writes to standard output, at once. Raises 75 if that fails: a full disk, a reader that has gone.
void Print(const std::string& text);

// Returns the text between quotation marks.
std::string Quoted(std::string_view text);

// Writes "PROGRAM: TEXT" to standard error: one line, whatever the text holds, because scripts read it.
void Complain(const std::string& program, const std::string& text);

// The same for wrong usage; the line names the help of the program.
void ComplainOfUsage(const std::string& program, const std::string& text);

}  // namespace tools
