// SPDX-License-Identifier: GPL-3.0-or-later
// The process: its command line and its end.
#pragma once

#include <string>

// Returns the arguments after the program's name, joined by one blank. Empty for the editor.
const std::string& Command();
void SetCommand(const std::string& command);

class Process {
 public:
    virtual ~Process() = default;
    // Ends the process at once: no pending work is finished and no destructor runs.
    virtual void End(int exitCode) = 0;
};

Process& TheProcess();  // ends the process with _exit, unless a test has set another one
// Null restores the default. The caller owns `process`, which must outlive its use.
void SetProcess(Process* process);

inline void EndProcess() {
    TheProcess().End(0);
}
