// SPDX-License-Identifier: GPL-3.0-or-later
// The trace of a run that is under way: the file PressroomLive.underway in the application's folder. It stays
// if the process is killed or ends in the middle of a run, and the next start says which item was cut off.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "platform/posix/unique_fd.h"
#include "scheduler/Deliveries.h"

namespace Global {

// The item of a run that was cut off.
struct CutOffRun {
    RunKind kind = RunKind::Schedule;
    std::string reportID, title;
};

// Failures end no run: the next start then says less. Of two schedulers in one folder the first has the
// trace.
class RunTrace {
 public:
    void Begin(RunKind kind, const std::string& reportID, const std::string& title);
    void End();

 private:
    std::filesystem::path m_path;
    UniqueFd m_file;  // locked while the run is under way
};

// Returns the item of the trace that another process has left, and deletes the trace. Returns nullopt if
// there is none, if it holds something else, or if the run is still under way.
std::optional<CutOffRun> TakeRunTrace();

}  // namespace Global
