// Short-lived programs that mail leans on, run without a shell of their own and never waited for endlessly.
#pragma once

#include <stop_token>
#include <string>
#include <vector>

namespace mailer {

// What becomes of standard output beyond its limit.
enum class Excess { Ends, IsDropped };  // ends the program; is read and forgotten

struct ChildResult {
    bool started = false;   // false: see startError
    int startError = 0;     // errno: the program is missing or may not be run, or the machine lacks something
    bool timedOut = false;  // it and its children were ended
    bool tooMuch = false;   // it wrote more than was asked for and was ended
    int exitCode = -1;      // -1 when it was ended by a signal
    int signal = 0;         // that ended it; 0 when it ended by itself
    std::string output;     // standard output
    std::string complaint;  // the first few kilobytes of standard error
};

// "ended with exit code 7" or "was ended by signal 9 (Killed)", for a program that has ended.
std::string EndOf(const ChildResult& result);

// `arguments` begins with the program, found on PATH. `input` is a file that becomes standard input, -1 for
// none. The end of the program itself is what is waited for: what it leaves running goes on, and what that
// writes later is not read. The program runs in a process group of its own, which is killed when `seconds`
// are over or a stop is asked for before that end; both count as timed out.
ChildResult RunChild(const std::vector<std::string>& arguments, int input, int seconds,
                     std::size_t longestOutput, const std::stop_token& stop = {},
                     Excess excess = Excess::Ends);

}  // namespace mailer
