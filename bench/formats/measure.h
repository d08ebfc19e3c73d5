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

// The best wall time and the best processor time of so many runs; the most memory of all. Nothing when a run
// fails or leaves no output. What the program says is not shown.
std::optional<Usage> BestOf(int runs, const std::vector<std::string>& words,
                            const std::filesystem::path& output);

// A program of PATH, or nothing.
std::optional<std::filesystem::path> FindProgram(const std::string& name);

bool Succeeds(const std::vector<std::string>& words);

}  // namespace bench
