// SPDX-License-Identifier: GPL-3.0-or-later
// Limits time and memory of one run. Reports are not trusted, and unattended runs must not block the ones
// after them: past a limit the run ends with an error.
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>

namespace rdl {

struct RunBounds {
    std::chrono::milliseconds work = std::chrono::minutes(30);  // processor time
    std::chrono::milliseconds data =
        std::chrono::minutes(60);  // wall clock, for all data sets and subreports together
    std::int64_t megabytes =
        0;  // memory growth; 0: 4096, or three quarters of the machine's memory if that is less
};

// Shared by a report and its subreports. Not thread-safe.
class RunWatch {
 public:
    explicit RunWatch(const RunBounds& bounds = {});

    // Time and memory are measured while a Work exists; in between a viewer waits for its user. Does nothing
    // if `watch` is null.
    class Work {
     public:
        explicit Work(std::shared_ptr<RunWatch> watch);
        ~Work();
        Work(const Work&) = delete;
        Work& operator=(const Work&) = delete;

     private:
        const std::shared_ptr<RunWatch> m_watch;
    };
    // The part of the work that waits for data: counted by the wall clock.
    class Data {
     public:
        explicit Data(std::shared_ptr<RunWatch> watch);
        ~Data();
        Data(const Data&) = delete;
        Data& operator=(const Data&) = delete;

     private:
        const std::shared_ptr<RunWatch> m_watch;
    };

    // Call this in every long loop; it usually costs one clock reading. Raises rdl::Error once a limit is
    // exceeded, and on every call after that.
    void CheckBounds();

 private:
    using Clock = std::chrono::steady_clock;
    using Time = std::chrono::nanoseconds;

    const RunBounds m_bounds;
    Clock::time_point m_next;  // when to measure again
    int m_working = 0, m_waiting = 0;
    Time m_work{}, m_workBegin{};  // processor time
    Time m_data{};
    Clock::time_point m_dataBegin;
    std::int64_t m_bytes = 0, m_bytesBegin = 0;  // grown by
};

}  // namespace rdl
