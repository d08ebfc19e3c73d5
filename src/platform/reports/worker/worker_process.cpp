// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/reports/worker/worker_process.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <ctime>
#include <fstream>
#include <string_view>
#include <thread>
#include <vector>

#include "platform/contracts/system_error.h"
#include "platform/posix/program.h"
#include "platform/reports/failure.h"
#include "platform/reports/worker/operations.h"
#include "platform/reports/worker/server.h"

extern char** environ;

namespace reports::worker {
namespace {

[[noreturn]] void RaiseNoStart(const std::filesystem::path& program, int code) {
    throw RuntimeError(WorkerFailed, "The report program \"" + program.string() +
                                         "\" cannot be started: " + SystemErrorText(code));
}

// Returns this process's variables without those that are for it alone: the service manager's socket and the
// passwords of programs.
std::vector<char*> VariablesForReports() {
    constexpr std::array<std::string_view, 9> Kept{
        "NOTIFY_SOCKET=",       "WATCHDOG_USEC=",     "WATCHDOG_PID=",
        "LISTEN_FDS=",          "LISTEN_PID=",        "CREDENTIALS_DIRECTORY=",
        "OXC_REPORT_PASSWORD=", "OXC_MAIL_PASSWORD=", "OXC_SCHEDULE_PASSWORD="};
    std::vector<char*> variables;
    for (char** variable = environ; *variable != nullptr; ++variable) {
        const std::string_view text(*variable);
        if (std::none_of(Kept.begin(), Kept.end(), [text](auto name) { return text.starts_with(name); })) {
            variables.push_back(*variable);
        }
    }
    variables.push_back(nullptr);
    return variables;
}

// Returns 0, or the machine's error code.
int Spawn(const std::filesystem::path& program, int socket, pid_t& child) {
    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_addopen(&files, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&files, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_adddup2(&files, socket, ServerSocket);
    posix_spawn_file_actions_addclosefrom_np(&files, ServerSocket + 1);

    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    sigset_t none, defaults;
    sigemptyset(&none);
    sigemptyset(&defaults);
    for (const int signal : {SIGPIPE, SIGXFSZ, SIGCHLD, SIGINT, SIGTERM, SIGHUP}) {
        sigaddset(&defaults, signal);
    }
    posix_spawnattr_setsigmask(&attributes, &none);
    posix_spawnattr_setsigdefault(&attributes, &defaults);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);

    std::array<std::string, 3> texts{program.string(), ServeCommand, ServeVersion()};
    std::array<char*, 4> arguments{texts[0].data(), texts[1].data(), texts[2].data(), nullptr};
    const int failure = posix_spawn(&child, arguments[0], &files, &attributes, arguments.data(),
                                    VariablesForReports().data());
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&files);
    return failure;
}

}  // namespace

std::string ServeVersion() {
    return OXC_VERSION "/" + std::to_string(Protocol);
}

Process::Process(const std::filesystem::path& program) {
    std::array<int, 2> ends{-1, -1};
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0) {
        RaiseNoStart(program, errno);
    }
    m_socket = UniqueFd(ends[0]);
    UniqueFd theirs(ends[1]);
    fcntl(m_socket.Get(), F_SETFL, O_NONBLOCK);
    // The descriptor must differ from its number there: dup2 onto itself would leave it to be closed.
    if (theirs.Get() == ServerSocket) {
        theirs = UniqueFd(fcntl(theirs.Get(), F_DUPFD_CLOEXEC, ServerSocket + 1));
    }
    const int failure = theirs.Get() < 0 ? errno : Spawn(program, theirs.Get(), m_pid);
    if (failure != 0) {
        m_pid = -1;
        RaiseNoStart(program, failure);
    }
}

Process::~Process() {
    Kill();
}

std::chrono::nanoseconds Process::ProcessorTime() const {
    clockid_t clock{};
    timespec used{};
    if (m_pid < 0 || clock_getcpuclockid(m_pid, &clock) != 0 || clock_gettime(clock, &used) != 0) {
        return {};
    }
    return std::chrono::seconds(used.tv_sec) + std::chrono::nanoseconds(used.tv_nsec);
}

std::int64_t Process::BytesInUse() const {
    std::int64_t all = 0, resident = 0;
    std::ifstream("/proc/" + std::to_string(m_pid) + "/statm") >> all >> resident;
    return resident * sysconf(_SC_PAGESIZE);
}

bool Process::IsQuiet() const {
    pollfd socket{m_socket.Get(), POLLIN, 0};
    return m_pid >= 0 && poll(&socket, 1, 0) == 0;
}

// Returns true once the process has ended.
bool Process::Reap(int flags) {
    int status = 0;
    pid_t ended = 0;
    do {
        ended = waitpid(m_pid, &status, flags);
    } while (ended < 0 && errno == EINTR);
    if (ended == 0) {
        return false;
    }
    m_exitCode = ended > 0 && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    m_signal = ended > 0 && WIFSIGNALED(status) ? WTERMSIG(status) : 0;
    m_pid = -1;
    return true;
}

void Process::Kill() {
    m_socket.Close();
    if (m_pid >= 0) {
        kill(m_pid, SIGKILL);
        Reap(0);
    }
}

std::string Process::AwaitEnd() {
    constexpr std::chrono::milliseconds Turn(1);
    constexpr int MostTurns = 2000;
    for (int turn = 0; turn < MostTurns && m_pid >= 0 && !Reap(WNOHANG); ++turn) {
        std::this_thread::sleep_for(Turn);
    }
    Kill();
    return EndOfProcess(m_exitCode, m_signal);
}

}  // namespace reports::worker
