#include "platform/mail/child_process.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <utility>

#include "platform/mail/unique_fd.h"

extern char** environ;

namespace mailer {
namespace {

using Moment = std::chrono::steady_clock::time_point;

// When a child must have ended, by the clock or because nobody wants it any more.
struct Limit {
    Moment end;
    const std::stop_token& stop;

    bool IsOver() const { return stop.stop_requested() || std::chrono::steady_clock::now() >= end; }
    // How long to wait for news before looking again.
    int Milliseconds() const {
        constexpr std::int64_t Glance = 100;
        const std::int64_t left =
            std::chrono::duration_cast<std::chrono::milliseconds>(end - std::chrono::steady_clock::now())
                .count();
        return static_cast<int>(
            std::max<std::int64_t>(0, stop.stop_possible() ? std::min(left, Glance) : left));
    }
};

constexpr std::size_t LongestComplaint = 4096;

struct Pipe {
    Pipe() {
        std::array<int, 2> ends{-1, -1};
        if (pipe2(ends.data(), O_CLOEXEC) == 0) {
            read = UniqueFd(ends[0]);
            write = UniqueFd(ends[1]);
        }
    }
    UniqueFd read, write;
};

pid_t Spawn(const std::vector<std::string>& arguments, int input, const Pipe& out, const Pipe& complaints) {
    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    if (input >= 0) {
        posix_spawn_file_actions_adddup2(&files, input, STDIN_FILENO);
    } else {
        posix_spawn_file_actions_addopen(&files, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    }
    posix_spawn_file_actions_adddup2(&files, out.write.Get(), STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&files, complaints.write.Get(), STDERR_FILENO);
    posix_spawn_file_actions_addclosefrom_np(&files, STDERR_FILENO + 1);

    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    sigset_t defaults;
    sigemptyset(&defaults);
    sigaddset(&defaults, SIGPIPE);
    sigaddset(&defaults, SIGXFSZ);
    posix_spawnattr_setsigdefault(&attributes, &defaults);
    posix_spawnattr_setpgroup(&attributes, 0);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGDEF);

    std::vector<std::string> copies = arguments;
    std::vector<char*> pointers;
    pointers.reserve(copies.size() + 1);
    for (std::string& copy : copies) {
        pointers.push_back(copy.data());
    }
    pointers.push_back(nullptr);
    pid_t child = -1;
    const int failure = posix_spawnp(&child, pointers[0], &files, &attributes, pointers.data(), environ);
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&files);
    return failure == 0 ? child : -1;
}

// Reads what is there. Returns false at the end of the stream.
bool Drain(int file, std::string& text) {
    std::array<char, 4096> buffer;
    const ssize_t count = read(file, buffer.data(), buffer.size());
    if (count > 0) {
        text.append(buffer.data(), static_cast<std::size_t>(count));
        return true;
    }
    return count < 0 && (errno == EINTR || errno == EAGAIN);
}

void ReadStreams(Pipe& out, Pipe& complaints, const Limit& limit, std::size_t longestOutput,
                 ChildResult& result) {
    std::array<pollfd, 2> files{pollfd{out.read.Get(), POLLIN, 0}, pollfd{complaints.read.Get(), POLLIN, 0}};
    std::string overflow;
    while (files[0].fd >= 0 || files[1].fd >= 0) {
        const int ready = poll(files.data(), files.size(), limit.Milliseconds());
        if ((ready == 0 && limit.IsOver()) || (ready < 0 && errno != EINTR)) {
            result.timedOut = true;
            return;
        }
        if (ready <= 0) {
            continue;
        }
        if (files[0].revents != 0 && !Drain(files[0].fd, result.output)) {
            files[0].fd = -1;
        }
        // A chatty program must not block on a full pipe: what is too long is read and dropped.
        const bool room = result.complaint.size() < LongestComplaint;
        if (files[1].revents != 0 && !Drain(files[1].fd, room ? result.complaint : overflow)) {
            files[1].fd = -1;
        }
        overflow.clear();
        if (result.output.size() > longestOutput) {
            result.tooMuch = true;
            return;
        }
    }
}

// Waits for the end of the child itself, which may outlive its streams.
int ExitCode(pid_t child, const Limit& limit, ChildResult& result) {
    int status = 0;
    pid_t ended = 0;
    while ((ended = waitpid(child, &status, WNOHANG)) <= 0) {
        if (ended < 0 && errno != EINTR) {
            return -1;
        }
        if (result.timedOut || result.tooMuch || limit.IsOver()) {
            result.timedOut = result.timedOut || !result.tooMuch;
            kill(-child, SIGKILL);
            while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
            }
            return -1;
        }
        poll(nullptr, 0, 5);
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

}  // namespace

ChildResult RunChild(const std::vector<std::string>& arguments, int input, int seconds,
                     std::size_t longestOutput, const std::stop_token& stop) {
    const Limit limit{std::chrono::steady_clock::now() + std::chrono::seconds(seconds), stop};
    ChildResult result;
    Pipe out;
    Pipe complaints;
    if (out.read.Get() < 0 || complaints.read.Get() < 0) {
        return result;
    }
    const pid_t child = Spawn(arguments, input, out, complaints);
    if (child < 0) {
        return result;
    }
    result.started = true;
    out.write.Close();
    complaints.write.Close();
    ReadStreams(out, complaints, limit, longestOutput, result);
    if (result.timedOut || result.tooMuch) {
        kill(-child, SIGKILL);
    }
    result.exitCode = ExitCode(child, limit, result);
    return result;
}

}  // namespace mailer
