// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/posix/child_process.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <utility>

#include "platform/posix/exec_arguments.h"
#include "platform/posix/program.h"
#include "platform/posix/unique_fd.h"

extern char** environ;

namespace {

using Moment = std::chrono::steady_clock::time_point;

// When a child must end: at a time, or on a stop request.
struct Limit {
    Moment end;
    const std::stop_token& stop;

    bool IsOver() const { return stop.stop_requested() || std::chrono::steady_clock::now() >= end; }
    // Returns how long to wait before the next test for the child's end: streams that another process holds
    // open do not show it.
    int Milliseconds() const {
        constexpr std::int64_t Glance = 20;
        const std::int64_t left =
            std::chrono::duration_cast<std::chrono::milliseconds>(end - std::chrono::steady_clock::now())
                .count();
        return static_cast<int>(std::clamp<std::int64_t>(left, 0, Glance));
    }
};

constexpr std::size_t LongestComplaint = 4096;

struct Pipe {
    Pipe() {
        std::array<int, 2> ends{-1, -1};
        if (pipe2(ends.data(), O_CLOEXEC) == 0) {
            read = UniqueFd(ends[0]);
            write = UniqueFd(ends[1]);
        } else {
            error = errno;
        }
    }
    UniqueFd read, write;
    int error = 0;  // errno when there is no pipe
};

// 0, or the machine's error code.
int Spawn(const std::vector<std::string>& arguments, int input, const Pipe& out, const Pipe& complaints,
          pid_t& child) {
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

    ExecArguments copies(arguments);
    char** const pointers = copies.Pointers();
    const int failure = posix_spawnp(&child, pointers[0], &files, &attributes, pointers, environ);
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&files);
    return failure;
}

// Reads the two output streams of a child.
class Streams {
 public:
    Streams(const Pipe& out, const Pipe& complaints, std::size_t longestOutput, Excess excess,
            ChildResult& result)
        : m_files{pollfd{out.read.Get(), POLLIN, 0}, pollfd{complaints.read.Get(), POLLIN, 0}},
          m_longestOutput(longestOutput),
          m_excess(excess),
          m_result(result) {}

    bool IsTooMuch() const { return m_result.output.size() > m_longestOutput; }
    void DropExcess() {
        if (m_excess == Excess::IsDropped && IsTooMuch()) {
            m_result.output.resize(m_longestOutput);
        }
        if (m_result.complaint.size() > 2 * LongestComplaint) {
            m_result.complaint.resize(2 * LongestComplaint);
        }
    }

    // Waits for data and reads one block of each stream that has some.
    void Read(int milliseconds) {
        // A program with much output must not block on a full pipe: output beyond the limit is read and
        // discarded.
        std::string overflow;
        const bool room = m_result.complaint.size() < LongestComplaint;
        if (poll(m_files.data(), m_files.size(), milliseconds) > 0) {
            ReadPiece(m_files[0], m_result.output);
            ReadPiece(m_files[1], room ? m_result.complaint : overflow);
            DropExcess();
        }
    }

    // Reads only what is available now: another process that holds the streams may write for ever.
    void ReadRest() {
        for (pollfd& file : m_files) {
            int left = 0;
            if (file.fd < 0 || ioctl(file.fd, FIONREAD, &left) != 0) {
                continue;
            }
            std::string rest;
            while (file.fd >= 0 && rest.size() < static_cast<std::size_t>(left)) {
                file.revents = POLLIN;
                ReadPiece(file, rest);
            }
            (&file == m_files.data() ? m_result.output : m_result.complaint) += rest;
        }
        DropExcess();
    }

 private:
    // A stream at its end is not polled again.
    static void ReadPiece(pollfd& file, std::string& text) {
        std::array<char, 4096> buffer;
        if (file.fd < 0 || file.revents == 0) {
            return;
        }
        const ssize_t count = read(file.fd, buffer.data(), buffer.size());
        if (count > 0) {
            text.append(buffer.data(), static_cast<std::size_t>(count));
        } else if (count == 0 || (errno != EINTR && errno != EAGAIN)) {
            file.fd = -1;
        }
    }

    std::array<pollfd, 2> m_files;
    std::size_t m_longestOutput;
    Excess m_excess;
    ChildResult& m_result;
};

void EndGroup(pid_t child) {
    int status = 0;
    kill(-child, SIGKILL);
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
}

// Waits for the child itself and not for its streams: it may close them early, and a child of its own may
// keep them open.
void WaitForEnd(pid_t child, const Limit& limit, Streams& streams, ChildResult& result) {
    int status = 0;
    while (true) {
        const pid_t ended = waitpid(child, &status, WNOHANG);
        if (ended > 0) {
            streams.ReadRest();
            result.tooMuch = streams.IsTooMuch();
            result.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
            result.signal = WIFSIGNALED(status) ? WTERMSIG(status) : 0;
            return;
        }
        if (ended < 0 && errno != EINTR) {
            return;
        }
        result.tooMuch = streams.IsTooMuch();
        result.timedOut = !result.tooMuch && limit.IsOver();
        if (result.tooMuch || result.timedOut) {
            EndGroup(child);
            return;
        }
        streams.Read(limit.Milliseconds());
    }
}

}  // namespace

std::string EndOf(const ChildResult& result) {
    return EndOfProcess(result.exitCode, result.signal);
}

ChildResult RunChild(const std::vector<std::string>& arguments, int input, int seconds,
                     std::size_t longestOutput, const std::stop_token& stop, Excess excess) {
    const Limit limit{std::chrono::steady_clock::now() + std::chrono::seconds(seconds), stop};
    ChildResult result;
    Pipe out;
    Pipe complaints;
    pid_t child = -1;
    result.startError = out.error != 0          ? out.error
                        : complaints.error != 0 ? complaints.error
                                                : Spawn(arguments, input, out, complaints, child);
    result.started = result.startError == 0;
    if (!result.started) {
        return result;
    }
    out.write.Close();
    complaints.write.Close();
    Streams streams(out, complaints, longestOutput, excess, result);
    WaitForEnd(child, limit, streams, result);
    return result;
}
