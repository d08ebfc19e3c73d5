// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/formats/measure.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <sstream>
#include <system_error>

namespace bench {
namespace {

constexpr double LongRun = 10;  // seconds

double SecondsOf(const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

[[noreturn]] void Become(const std::vector<std::string>& words) {
    const int nowhere = open("/dev/null", O_RDWR);
    dup2(nowhere, STDIN_FILENO);
    dup2(nowhere, STDOUT_FILENO);
    dup2(nowhere, STDERR_FILENO);
    std::vector<char*> arguments;
    for (const std::string& word : words) {
        arguments.push_back(const_cast<char*>(word.c_str()));
    }
    arguments.push_back(nullptr);
    execv(arguments[0], arguments.data());
    _exit(127);
}

std::optional<Usage> RunOnce(const std::vector<std::string>& words) {
    const auto begin = std::chrono::steady_clock::now();
    const pid_t child = fork();
    if (child < 0) {
        return std::nullopt;
    }
    if (child == 0) {
        Become(words);
    }
    int status = 0;
    rusage used{};
    if (wait4(child, &status, 0, &used) != child || !WIFEXITED(status) || WEXITSTATUS(status) != 0) {
        return std::nullopt;
    }
    const std::chrono::duration<double> wall = std::chrono::steady_clock::now() - begin;
    return Usage{wall.count(), SecondsOf(used.ru_utime) + SecondsOf(used.ru_stime),
                 static_cast<double>(used.ru_maxrss) / 1024};
}

std::optional<Usage> RunFor(const Command& command) {
    std::filesystem::remove(command.output);
    std::optional<Usage> usage = RunOnce(command.words);
    std::error_code missing;
    if (!std::filesystem::file_size(command.output, missing) || missing) {
        return std::nullopt;
    }
    std::filesystem::remove(command.output);
    return usage;
}

std::optional<Usage> Better(const std::optional<Usage>& before, const std::optional<Usage>& now) {
    if (!before || !now) {
        return now;
    }
    return Usage{std::min(before->wall, now->wall), std::min(before->cpu, now->cpu),
                 std::max(before->megabytes, now->megabytes)};
}

}  // namespace

std::vector<std::optional<Usage>> BestOf(int runs, const std::vector<Command>& commands) {
    std::vector<std::optional<Usage>> best(commands.size());
    for (int run = 0; run < runs; ++run) {
        for (std::size_t i = 0; i < commands.size(); ++i) {
            const bool isOut = run > 0 && (!best[i] || best[i]->wall > LongRun);
            if (!commands[i].words.empty() && !isOut) {
                best[i] = Better(best[i], RunFor(commands[i]));
            }
        }
    }
    return best;
}

std::optional<std::filesystem::path> FindProgram(const std::string& name) {
    const char* const path = std::getenv("PATH");
    std::istringstream folders(path ? path : "/usr/bin:/bin");
    for (std::string folder; std::getline(folders, folder, ':');) {
        std::filesystem::path program = std::filesystem::path(folder) / name;
        if (access(program.c_str(), X_OK) == 0) {
            return program;
        }
    }
    return std::nullopt;
}

bool Succeeds(const std::vector<std::string>& words) {
    return RunOnce(words).has_value();
}

}  // namespace bench
