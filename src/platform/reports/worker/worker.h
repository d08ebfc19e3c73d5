// SPDX-License-Identifier: GPL-3.0-or-later
// A report process that carries operations out. It is not trusted: a report may have taken it over. It may
// end, hang, or answer anything; each of this ends the process and is a run-time error of the operation.
#pragma once

#include <chrono>
#include <deque>
#include <optional>
#include <string>
#include <utility>

#include "platform/reports/worker/frames.h"
#include "platform/reports/worker/operations.h"
#include "platform/reports/worker/settings.h"
#include "platform/reports/worker/worker_process.h"

namespace reports::worker {

class Worker {
 public:
    // Starts a process. Raises RuntimeError WorkerFailed if that fails.
    explicit Worker(Settings settings);

    // Sends an operation and returns its answer. Raises the operation's RuntimeError, or WorkerFailed with
    // the reason if the process cannot carry it out; then each later call raises the same. `report` is the
    // path that errors name. `file` is an open file for the operation, or -1. While a call takes long, the
    // windows repaint themselves; keys, clicks and timers wait (MessageLoop::Repaint).
    template <typename Request>
    typename Request::Answer Call(const Request& request, const std::string& report, int file = -1) {
        const Turn turn(*this, Request::Words, report);
        m_reports += std::is_same_v<Request, Open> ? 1 : 0;
        Send(Encoded(Operation(request)), file);
        return DecodedAnswer<typename Request::Answer>(ReceiveLast());
    }
    // Sends an operation that returns nothing and that the engine never refuses, and does not wait: the
    // answer is read before the next call, which raises what went wrong, in the words of this operation, or
    // once many are outstanding. Never fails itself.
    template <typename Request>
    void Post(const Request& request, const std::string& report) noexcept {
        static_assert(std::is_same_v<typename Request::Answer, Done>);
        Post(Encoded(Operation(request)), ActivityText(Request::Words, report));
    }

    // Returns true if the next report needs another process, for example because this one has failed to close
    // one.
    bool IsWornOut();

 private:
    using Clock = std::chrono::steady_clock;

    // One call, and the outstanding answers before it. Raises the error of a former one, and 440 while
    // another call is under way.
    class Turn {
     public:
        Turn(Worker& worker, const char* words, const std::string& report);
        ~Turn() { m_worker.m_isBusy = false; }
        Turn(const Turn&) = delete;
        Turn& operator=(const Turn&) = delete;

     private:
        Worker& m_worker;
    };

    static std::string ActivityText(const char* words, const std::string& report);
    void Post(const std::string& body, std::string doing) noexcept;
    void Send(std::string_view body, int file);
    std::string Receive();
    std::string ReceiveLast();
    void Settle();
    Head DecodedHead();
    void ReadSome();
    void Await(short events);
    void CheckLimits();
    template <typename T>
    T DecodedAnswer(const std::string& body) {
        try {
            return Decoded<T>(body);
        } catch (const BadMessage&) {
            FailUnreadable();
        }
    }
    [[noreturn]] void RaiseAnswered(const std::string& body);
    [[noreturn]] void Fail(const std::string& what);
    [[noreturn]] void FailEnded();
    [[noreturn]] void FailUnreadable();

    const Settings m_settings;
    Process m_process;
    bool m_hasBegun = false;
    int m_reports = 0;
    std::deque<std::string> m_owed;  // what the operations do whose answers nobody has read
    std::string m_input;             // received and not read
    std::optional<RuntimeError> m_failure;
    // The call that is under way.
    bool m_isBusy = false;
    std::string m_doing;  // "ran the report "/srv/sales.rpt""
    Clock::time_point m_begin, m_looked;
    std::chrono::milliseconds m_silent{};
    std::chrono::nanoseconds m_processorBegin{};
};

}  // namespace reports::worker
