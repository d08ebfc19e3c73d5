// The process: its command line and its end.
#pragma once

#include <string>

// What stood behind the program's name on the command line, pieces joined by one blank; empty for the editor.
const std::string& Command();
void SetCommand(const std::string& command);

class Process {
 public:
    virtual ~Process() = default;
    // Ends the process at once: no open work is finished, no destructor runs.
    virtual void End(int exitCode) = 0;
};

Process& TheProcess();  // ends the process by _exit unless a test has put another in its place
void SetProcess(Process* process);

inline void EndProcess() {
    TheProcess().End(0);
}
