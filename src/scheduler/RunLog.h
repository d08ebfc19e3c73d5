// SPDX-License-Identifier: GPL-3.0-or-later
// Reports what the scheduler does and has done: as lines of the log, as the answer to a request for its
// state, and to the service manager.
#pragma once

#include <chrono>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "platform/base/journal.h"
#include "platform/contracts/dates.h"
#include "platform/contracts/runtime.h"
#include "scheduler/Deliveries.h"
#include "scheduler/RunTrace.h"

namespace Global {

// Returns the fact which item it is: as a number if its key is one. `prefix` stands before the fact's name.
journal::Fact KeyFact(RunKind kind, const std::string& reportID, const std::string& prefix = {});

// The one object for both polls. A poll calls Begins for each item that it runs, then Delivered, Undelivered,
// Left or Failed.
class RunLog {
 public:
    static RunLog& Instance();

    void PollBegins();
    void PollEnds();  // does nothing outside of a poll
    bool IsPolling() const;
    // Returns how many runs of this poll, or of the last one, ended with Undelivered.
    std::int64_t UndeliveredInPoll() const;

    void Begins(RunKind kind, const std::string& reportID, const std::string& title);
    void Delivered();
    void Undelivered();  // its mail failed, which was reported already, or its format is not known
    // The routine's error, of the item that is running; else of the schedule with this key, if it is given.
    // Number 0 means that the mail failed, which was reported already.
    void Failed(const std::string& routine, const RuntimeError& error, const std::string& reportID = {});
    // The run stopped before its mail, because its claim was lost. It is due again.
    void Left(const RuntimeError& why);
    // An item that was delivered before is recorded now.
    void RecordedLater(RunKind kind, const std::string& reportID, const std::string& title);

    // Logs which item a process before this one was running when it ended, if there is one.
    static void LogCutOffRun();

    // Returns since when it runs, how many runs were delivered and failed, the last poll and what is running.
    // Safe in any thread.
    std::vector<journal::Fact> State() const;

 private:
    using Clock = std::chrono::steady_clock;

    struct Item {
        RunKind kind = RunKind::Schedule;
        std::string reportID, title;
        Clock::time_point begin;
    };

    RunLog();
    void Ended(journal::Level level, const char* event, std::vector<journal::Fact> facts);
    static std::vector<journal::Fact> FactsOf(const Item& item);
    static std::chrono::milliseconds Since(Clock::time_point begin);
    std::string Summary() const;

    mutable std::mutex m_mutex;
    const DateValue m_start;
    std::optional<Item> m_item;
    RunTrace m_trace;
    std::optional<Clock::time_point> m_pollBegin;
    std::optional<DateValue> m_lastPoll;
    std::chrono::milliseconds m_lastPollTime{};
    bool m_hasRun = false;  // in this poll
    std::int64_t m_delivered = 0, m_failed = 0, m_undelivered = 0;
};

}  // namespace Global
