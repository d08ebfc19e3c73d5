// SPDX-License-Identifier: GPL-3.0-or-later
// Measures a whole process from the system's accounting: start-up, work and exit, with the child processes
// that it waited for.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace bench {

struct Usage {
    double wall = 0;       // seconds
    double cpu = 0;        // seconds, user and system
    double megabytes = 0;  // peak memory of its largest process
};

struct Command {
    std::vector<std::string> words;  // empty: the program is missing
    std::filesystem::path output;
};

// Returns for each command the best wall time, the best processor time and the highest memory of `runs` runs.
// The commands take turns, so that other work on the machine affects all of them; a long one runs once.
// Returns nullopt for a command that is missing, fails or leaves no output. Their messages are not shown.
std::vector<std::optional<Usage>> BestOf(int runs, const std::vector<Command>& commands);

// Returns the path of a program on PATH, or nullopt.
std::optional<std::filesystem::path> FindProgram(const std::string& name);

bool Succeeds(const std::vector<std::string>& words);

}  // namespace bench
