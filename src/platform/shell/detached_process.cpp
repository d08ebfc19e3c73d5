// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/shell/detached_process.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <string_view>

#include "platform/posix/exec_arguments.h"

namespace {

// Between fork and exec only async-signal-safe calls are allowed: other threads of the parent may hold any
// lock.

void TakeNullStreams() {
    const int null = open("/dev/null", O_RDWR);
    if (null < 0) {
        return;
    }
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        dup2(null, stream);
    }
    if (null > STDERR_FILENO) {
        close(null);
    }
}

void CloseAllBut(int kept) {
    if (kept > STDERR_FILENO + 1) {
        close_range(STDERR_FILENO + 1, static_cast<unsigned>(kept) - 1, 0);
    }
    close_range(static_cast<unsigned>(kept) + 1, ~0U, 0);
}

[[noreturn]] void Report(int file, int failure) {
    ssize_t written = 0;
    do {
        written = write(file, &failure, sizeof failure);
    } while (written < 0 && errno == EINTR);
    _exit(1);
}

void ResetSignals() {
    for (const int number : {SIGPIPE, SIGXFSZ, SIGTERM, SIGINT, SIGHUP, SIGCHLD}) {
        signal(number, SIG_DFL);
    }
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
}

// The grandchild. No process has to wait for it.
[[noreturn]] void Become(const char* program, char* const* arguments, char* const* variables,
                         const char* folder, int report) {
    TakeNullStreams();
    CloseAllBut(report);
    ResetSignals();
    if (*folder == '\0' || chdir(folder) == 0) {
        execve(program, arguments, variables);
    }
    Report(report, errno);
}

std::string_view NameOf(std::string_view variable) {
    return variable.substr(0, variable.find('='));
}

// A name that is there twice would mean another value to each program.
std::vector<std::string> WithEnvironment(const std::vector<std::string>& variables) {
    std::vector<std::string> all = variables;
    for (char* const* entry = environ; entry != nullptr && *entry != nullptr; ++entry) {
        const bool isReplaced = std::any_of(variables.begin(), variables.end(), [&](const std::string& one) {
            return NameOf(one) == NameOf(*entry);
        });
        if (!isReplaced) {
            all.emplace_back(*entry);
        }
    }
    return all;
}

int WaitForReport(int file) {
    int failure = 0;
    ssize_t count = 0;
    do {
        count = read(file, &failure, sizeof failure);
    } while (count < 0 && errno == EINTR);
    return count == static_cast<ssize_t>(sizeof failure) ? failure : 0;
}

}  // namespace

int StartDetached(const std::filesystem::path& program, const std::vector<std::string>& arguments,
                  const std::filesystem::path& folder, const std::vector<std::string>& variables) {
    std::vector<std::string> all{program.string()};
    all.insert(all.end(), arguments.begin(), arguments.end());
    ExecArguments copies(std::move(all)), environment(WithEnvironment(variables));
    // exec closes it on success: an end of file without a report is a success.
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) {
        return errno;
    }
    const pid_t child = fork();
    if (child == 0) {
        setsid();
        const pid_t grandchild = fork();
        if (grandchild == 0) {
            Become(program.c_str(), copies.Pointers(), environment.Pointers(), folder.c_str(), ends[1]);
        }
        if (grandchild < 0) {
            Report(ends[1], errno);
        }
        _exit(0);
    }
    int failure = child < 0 ? errno : 0;
    close(ends[1]);
    if (child > 0) {
        failure = WaitForReport(ends[0]);
        while (waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
        }
    }
    close(ends[0]);
    return failure;
}
