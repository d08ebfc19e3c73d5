// SPDX-License-Identifier: GPL-3.0-or-later
// Short-lived child programs. They run without a shell, and never longer than their time limit.
#pragma once

#include <stop_token>
#include <string>
#include <vector>

// What happens once standard output exceeds its limit.
enum class Excess { Ends, IsDropped };  // kill the program; read and discard the rest

struct ChildResult {
    bool started = false;   // false: see startError
    int startError = 0;     // errno: the program is missing or cannot be run, or the machine lacks something
    bool timedOut = false;  // the program and its children were killed
    bool tooMuch = false;   // standard output exceeded its limit and the program was killed
    int exitCode = -1;      // -1 if a signal ended it
    int signal = 0;         // that ended it; 0 when it ended by itself
    std::string output;     // standard output
    std::string complaint;  // the first kilobytes of standard error
};

// Runs a program. `arguments` begins with the program, which is searched on PATH. `input` is an open file for
// standard input, or -1. Waits only for the program itself: processes that it leaves running continue, and
// their later output is not read. The program runs in a process group of its own, which is killed after
// `seconds` or on a stop request; both count as timed out. Never raises an error.
ChildResult RunChild(const std::vector<std::string>& arguments, int input, int seconds,
                     std::size_t longestOutput, const std::stop_token& stop = {},
                     Excess excess = Excess::Ends);

// Returns "ended with exit code 7" or "was ended by signal 9 (Killed)", for a program that has ended.
std::string EndOf(const ChildResult& result);
