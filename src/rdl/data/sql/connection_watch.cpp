// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/data/sql/connection_watch.h"

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <pthread.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>

#include <charconv>
#include <csignal>
#include <filesystem>
#include <map>
#include <string_view>
#include <system_error>

namespace rdl::data {
namespace {

// Once the time is up, sockets are shut down again and again: a driver may open another to try it once more.
constexpr auto Interval = std::chrono::milliseconds(200);

template <typename Use>
void ForEachSocket(Use use) {
    std::error_code error;
    std::filesystem::directory_iterator entry("/proc/self/fd", error);
    for (const std::filesystem::directory_iterator end; !error && entry != end; entry.increment(error)) {
        const std::string name = entry->path().filename().string();
        int descriptor = -1;
        std::from_chars(name.data(), name.data() + name.size(), descriptor);
        struct stat status {};
        if (fstat(descriptor, &status) == 0 && S_ISSOCK(status.st_mode)) {
            use(descriptor, static_cast<unsigned long long>(status.st_ino));
        }
    }
}

std::set<unsigned long long> OpenSockets() {
    std::set<unsigned long long> inodes;
    ForEachSocket([&inodes](int, unsigned long long inode) { inodes.insert(inode); });
    return inodes;
}

// Databases are reached by the network or by a socket file of their own name; a socket of the desktop that is
// opened meanwhile is not ours.
bool LeadsToAServer(int descriptor) {
    sockaddr_storage peer{};
    socklen_t size = sizeof peer;
    if (getpeername(descriptor, reinterpret_cast<sockaddr*>(&peer), &size) != 0) {
        size = sizeof peer;  // not connected yet: the own end has the family
        if (getsockname(descriptor, reinterpret_cast<sockaddr*>(&peer), &size) != 0) {
            return false;
        }
    }
    if (peer.ss_family == AF_INET || peer.ss_family == AF_INET6) {
        return true;
    }
    const auto& local = reinterpret_cast<const sockaddr_un&>(peer);
    const std::string_view path(local.sun_path);
    return peer.ss_family == AF_UNIX &&
           (path.find(".s.PGSQL.") != std::string_view::npos ||
            path.find("mysql") != std::string_view::npos || path.find("maria") != std::string_view::npos);
}

void SetOption(int descriptor, int level, int option, int value) {
    setsockopt(descriptor, level, option, &value, sizeof value);
}

// Which watch has opened a socket, by its inode.
struct Claims {
    std::mutex mutex;
    std::map<unsigned long long, const ConnectionWatch*> owners;
};

Claims& AllClaims() {
    static Claims& claims = *new Claims;  // for threads that the end of the process finds at work, too
    return claims;
}

}  // namespace

ConnectionWatch::ConnectionWatch() : m_others(OpenSockets()) {
    // Signals of the process are for its other threads.
    sigset_t all, before;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    try {
        m_thread = std::thread([this] { Run(); });
    } catch (...) {
        pthread_sigmask(SIG_SETMASK, &before, nullptr);
        throw;
    }
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

ConnectionWatch::~ConnectionWatch() {
    {
        const std::lock_guard lock(m_mutex);
        m_ending = true;
    }
    m_changed.notify_one();
    m_thread.join();
    const std::lock_guard lock(AllClaims().mutex);
    std::erase_if(AllClaims().owners, [this](const auto& claim) { return claim.second == this; });
}

ConnectionWatch::Limit::Limit(ConnectionWatch& watch, std::chrono::milliseconds time) : m_watch(watch) {
    const std::lock_guard lock(watch.m_mutex);
    watch.m_deadline = Clock::now() + time;
    // The thread looks by itself, often enough: to wake it for each row would cost more than the row.
}

ConnectionWatch::Limit::~Limit() {
    const std::lock_guard lock(m_watch.m_mutex);
    m_watch.m_deadline = Clock::time_point::max();
}

bool ConnectionWatch::HasExpired() const {
    const std::lock_guard lock(m_mutex);
    return m_expired;
}

void ConnectionWatch::Run() {
    std::unique_lock lock(m_mutex);
    while (!m_ending) {
        m_changed.wait_for(lock, Interval);
        const bool isStopped = m_stop && m_stop->IsGiven() && m_deadline != Clock::time_point::max();
        if (!m_ending && (isStopped || Clock::now() >= m_deadline)) {
            m_expired = true;
        }
        if (m_expired && !m_ending) {
            ShutDown();
        }
    }
}

void ConnectionWatch::ShutDown() const {
    for (const auto& [descriptor, inode] : OwnSockets()) {
        shutdown(descriptor, SHUT_RDWR);
    }
}

std::map<int, unsigned long long> ConnectionWatch::OwnSockets() const {
    std::map<int, unsigned long long> own;
    const std::lock_guard lock(AllClaims().mutex);
    const auto& owners = AllClaims().owners;
    ForEachSocket([&](int descriptor, unsigned long long inode) {
        const auto owner = owners.find(inode);
        const bool isOfAnother = owner != owners.end() && owner->second != this;
        if (!m_others.contains(inode) && !isOfAnother && LeadsToAServer(descriptor)) {
            own.emplace(descriptor, inode);
        }
    });
    return own;
}

void ConnectionWatch::TakeConnection() {
    constexpr int IdleSeconds = 30, IntervalSeconds = 10, Probes = 3, UnansweredMilliseconds = 60'000;
    for (const auto& [descriptor, inode] : OwnSockets()) {
        const std::lock_guard lock(AllClaims().mutex);
        AllClaims().owners.emplace(inode, this);
        SetOption(descriptor, SOL_SOCKET, SO_KEEPALIVE, 1);
        SetOption(descriptor, IPPROTO_TCP, TCP_KEEPIDLE, IdleSeconds);
        SetOption(descriptor, IPPROTO_TCP, TCP_KEEPINTVL, IntervalSeconds);
        SetOption(descriptor, IPPROTO_TCP, TCP_KEEPCNT, Probes);
        SetOption(descriptor, IPPROTO_TCP, TCP_USER_TIMEOUT, UnansweredMilliseconds);
    }
}

}  // namespace rdl::data
