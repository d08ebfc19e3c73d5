// SPDX-License-Identifier: GPL-3.0-or-later
// Interrupts database driver calls that would block forever: a silent server must not block a report,
// whatever timeouts its driver supports.
#pragma once

#include <chrono>
#include <condition_variable>
#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <thread>

#include "rdl/values/stop.h"

namespace rdl::data {

// The margin after a server's own timeout, so that its own message is shown.
inline constexpr std::chrono::seconds Patience(5);

// Tracks the sockets that the process opens during its lifetime. A call that misses its deadline finds them
// shut down: its driver sees a closed connection. So does a call of a thread that is stopped.
class ConnectionWatch {
 public:
    ConnectionWatch();  // records the sockets open now: they belong to others
    ~ConnectionWatch();
    ConnectionWatch(const ConnectionWatch&) = delete;
    ConnectionWatch& operator=(const ConnectionWatch&) = delete;

    // Limits the driver calls in its scope to `time` in total.
    class Limit {
     public:
        Limit(ConnectionWatch& watch, std::chrono::milliseconds time);
        ~Limit();
        Limit(const Limit&) = delete;
        Limit& operator=(const Limit&) = delete;

     private:
        ConnectionWatch& m_watch;
    };

    // Makes the connection that is open now its own: watches of other threads leave it alone from then on.
    // Enables TCP keep-alive on it, so that a lost peer is detected within about a minute.
    void TakeConnection();
    // Whether a call was interrupted at its deadline. Later calls are not waited for.
    bool HasExpired() const;

 private:
    using Clock = std::chrono::steady_clock;

    void Run();
    void ShutDown() const;
    std::map<int, unsigned long long> OwnSockets() const;  // descriptors and their inodes

    const std::shared_ptr<const StopSignal> m_stop = SignalOfThread();
    const std::set<unsigned long long> m_others;  // inodes of the sockets that existed before
    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    Clock::time_point m_deadline = Clock::time_point::max();
    bool m_expired = false, m_ending = false;
    std::thread m_thread;
};

}  // namespace rdl::data
