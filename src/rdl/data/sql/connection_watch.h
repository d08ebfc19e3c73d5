// Ends calls of database drivers that would wait for ever: a server that says nothing more keeps no report
// waiting, whatever its driver knows of time.
#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <set>
#include <thread>

namespace rdl::data {

// A server that says nothing is given up this much later than its own time, so that what it says itself is
// shown.
inline constexpr std::chrono::seconds Patience(5);

// Watches the sockets that the process opens while one of these lives. A call that is not back at its time
// finds them shut down, and so its driver sees a connection that has ended.
class ConnectionWatch {
 public:
    ConnectionWatch();  // takes note of the sockets that are open now: they belong to others
    ~ConnectionWatch();
    ConnectionWatch(const ConnectionWatch&) = delete;
    ConnectionWatch& operator=(const ConnectionWatch&) = delete;

    // Around calls of the driver that have `time` together.
    class Limit {
     public:
        Limit(ConnectionWatch& watch, std::chrono::milliseconds time);
        ~Limit();
        Limit(const Limit&) = delete;
        Limit& operator=(const Limit&) = delete;

     private:
        ConnectionWatch& m_watch;
    };

    // Has the kernel ask after a peer that is silent, so that one whose machine or network has gone is
    // noticed within about a minute. For a connection that is open.
    void KeepAlive() const;
    // Whether a call was ended because its time was up. No later call is waited for.
    bool HasExpired() const;

 private:
    using Clock = std::chrono::steady_clock;

    void Run();
    void ShutDown() const;
    std::set<int> OwnSockets() const;

    const std::set<unsigned long long> m_others;  // inodes of the sockets that were there before
    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    Clock::time_point m_deadline = Clock::time_point::max();
    bool m_expired = false, m_ending = false;
    std::thread m_thread;
};

}  // namespace rdl::data
