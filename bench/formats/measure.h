// What a whole process took, as the system accounts for it: start-up, work and exit, with the processes that
// it started and waited for.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace bench {

struct Usage {
    double wall = 0;       // seconds
    double cpu = 0;        // seconds, user and system
    double megabytes = 0;  // the most memory that one of its processes held
};

struct Command {
    std::vector<std::string> words;  // none: the program is missing
    std::filesystem::path output;
};

// For each command the best wall time and the best processor time of so many runs, and the most memory of
// all. The commands take turns, so that other work on the machine falls on all of them; one that takes long
// runs once. Nothing for a command that is missing, fails or leaves no output. What the programs say is not
// shown.
std::vector<std::optional<Usage>> BestOf(int runs, const std::vector<Command>& commands);

// A program of PATH, or nothing.
std::optional<std::filesystem::path> FindProgram(const std::string& name);

bool Succeeds(const std::vector<std::string>& words);

}  // namespace bench
