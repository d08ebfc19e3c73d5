#include "bench/formats/measure.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <sstream>

namespace bench {
namespace {

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

}  // namespace

std::optional<Usage> BestOf(int runs, const std::vector<std::string>& words,
                            const std::filesystem::path& output) {
    std::optional<Usage> best;
    for (int run = 0; run < runs; ++run) {
        std::filesystem::remove(output);
        const std::optional<Usage> usage = RunOnce(words);
        if (!usage || !std::filesystem::exists(output) || std::filesystem::file_size(output) == 0) {
            return std::nullopt;
        }
        if (!best) {
            best = usage;
            continue;
        }
        best->wall = std::min(best->wall, usage->wall);
        best->cpu = std::min(best->cpu, usage->cpu);
        best->megabytes = std::max(best->megabytes, usage->megabytes);
    }
    std::filesystem::remove(output);
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
