// SPDX-License-Identifier: GPL-3.0-or-later
// Runs a report in a thread of its own, so that the window that shows its pages stays alive.
#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "platform/contracts/report_view.h"
#include "platform/contracts/runtime.h"

namespace reports {

class BackgroundRun {
 public:
    // Opens the report and begins its run; raises RuntimeError on a failure.
    using Begin = std::function<std::unique_ptr<report::PageView>()>;

    // Calls `begin` in a thread, which then makes all pages. What `begin` uses and what it returns belong to
    // that thread until the run has ended: the caller leaves the report alone meanwhile.
    explicit BackgroundRun(Begin begin);
    // Stops the run and waits for the thread: a fraction of a second, longer where a driver does not let go.
    ~BackgroundRun();
    BackgroundRun(const BackgroundRun&) = delete;
    BackgroundRun& operator=(const BackgroundRun&) = delete;

    // Ends the run soon, without waiting for it. The pages made so far stay.
    void Stop();
    bool IsStopped() const;
    // Whether the thread makes no more pages: all are made, the run has failed, or it was stopped.
    bool HasEnded() const;
    int PagesMade() const;
    // Returns why the run ended early; nullopt if it was stopped.
    std::optional<RuntimeError> Failure() const;
    // Returns the pages that are made, and those still to come. Reach waits for a page a few milliseconds
    // only, and may then return false for a page that is made later. The object may outlive the run: its
    // pages are gone then, and its functions raise 9 "Subscript out of range".
    std::unique_ptr<report::PageView> Pages() const;

    struct Shared;

 private:
    std::shared_ptr<Shared> m_shared;
};

}  // namespace reports
