// How long one run of a report may take and how much memory it may grow by. A report is not trusted, and
// whoever runs it unattended has others to run: past a bound the run ends with an error, whatever it is at.
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>

namespace rdl {

struct RunBounds {
    std::chrono::milliseconds work = std::chrono::minutes(30);  // of the processor
    std::chrono::milliseconds data =
        std::chrono::minutes(60);  // by the clock, for all of the data sets and subreports together
    std::int64_t megabytes = 0;    // 0: 4096, or three quarters of what the machine has if that is less
};

// Shared by a report and its subreports; one thread.
class RunWatch {
 public:
    explicit RunWatch(const RunBounds& bounds = {});

    // Time and memory count while one of these lives: between them a viewer waits for its user. Without a
    // watch they do nothing.
    class Work {
     public:
        explicit Work(std::shared_ptr<RunWatch> watch);
        ~Work();
        Work(const Work&) = delete;
        Work& operator=(const Work&) = delete;

     private:
        const std::shared_ptr<RunWatch> m_watch;
    };
    // The part of the work that waits for data.
    class Data {
     public:
        explicit Data(std::shared_ptr<RunWatch> watch);
        ~Data();
        Data(const Data&) = delete;
        Data& operator=(const Data&) = delete;

     private:
        const std::shared_ptr<RunWatch> m_watch;
    };

    // To be called where work repeats; it costs a look at the clock. Raises rdl::Error past a bound, and from
    // then on each time.
    void CheckBounds();

 private:
    using Clock = std::chrono::steady_clock;
    using Time = std::chrono::nanoseconds;

    const RunBounds m_bounds;
    Clock::time_point m_next;  // when to measure again
    int m_working = 0, m_waiting = 0;
    Time m_work{}, m_workBegin{};  // of the processor
    Time m_data{};
    Clock::time_point m_dataBegin;
    std::int64_t m_bytes = 0, m_bytesBegin = 0;  // grown by
};

}  // namespace rdl
