// SPDX-License-Identifier: GPL-3.0-or-later
// One report process as its program sees it: its start, its socket and its end.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <string>

#include "platform/posix/unique_fd.h"

namespace reports::worker {

// The argument by which oxc-report serves, and the version that it must have.
inline constexpr const char* ServeCommand = "serve";
std::string ServeVersion();
// The exit code of a report process of another version. A program that does not know ServeCommand has it too.
inline constexpr int OtherVersion = 2;

class Process {
 public:
    // Starts the program with one open socket. Everything else that is open here, but standard error, is
    // closed there. Raises RuntimeError WorkerFailed with the program's path and the cause.
    explicit Process(const std::filesystem::path& program);
    // Ends the process and waits for its end, which is at once.
    ~Process();
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    int Socket() const { return m_socket.Get(); }
    // Returns the time of all its threads; 0 once it has ended.
    std::chrono::nanoseconds ProcessorTime() const;
    // Memory in use, in bytes; 0 if the machine does not say.
    std::int64_t BytesInUse() const;
    // Returns true if it is there and has sent nothing that nobody has read.
    bool IsQuiet() const;

    // Ends the process, if it lives; after this it has no socket.
    void Kill();
    // Gives a process that has closed its socket a moment to end, then ends it. Returns "was ended by signal
    // 11 (Segmentation fault)" or "ended with exit code 1".
    std::string AwaitEnd();
    // The exit code, or -1 if it was ended by a signal or lives.
    int ExitCode() const { return m_exitCode; }

 private:
    bool Reap(int flags);

    pid_t m_pid = -1;  // -1 after its end
    UniqueFd m_socket;
    int m_exitCode = -1, m_signal = 0;
};

}  // namespace reports::worker
