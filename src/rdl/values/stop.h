// SPDX-License-Identifier: GPL-3.0-or-later
// Stops the work of one thread from another thread: a window that shows a report does not wait for a query
// that takes minutes.
#pragma once

#include <atomic>
#include <memory>

namespace rdl {

// Is given by one thread and looked for by others. Once given it stays.
class StopSignal {
 public:
    void Give() { m_given = true; }
    bool IsGiven() const { return m_given; }

 private:
    std::atomic<bool> m_given = false;
};

// While an object lives, the signal ends the runs and queries of its thread: RunWatch::CheckBounds raises an
// error, and calls of database drivers are broken off. Objects of one thread are destroyed in the reverse
// order.
class StopsAt {
 public:
    explicit StopsAt(std::shared_ptr<const StopSignal> signal);
    ~StopsAt();
    StopsAt(const StopsAt&) = delete;
    StopsAt& operator=(const StopsAt&) = delete;

 private:
    std::shared_ptr<const StopSignal> m_before;
};

// Returns the signal of this thread; null if nothing can stop it.
std::shared_ptr<const StopSignal> SignalOfThread();
// Whether the signal of this thread has been given.
bool IsStopped();
// Raises rdl::Error if it has.
void CheckStop();

}  // namespace rdl
