// SPDX-License-Identifier: GPL-3.0-or-later
// What a program demands of its report processes.
#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace reports::worker {

struct Settings {
    std::filesystem::path program;  // oxc-report
    // Without a sign of life for so long, a process is ended.
    std::chrono::milliseconds patience = std::chrono::seconds(60);
    // Bounds of one operation: the processor time of all its threads, and its time altogether. The engine's
    // own limits (rdl/values/run_watch.h) are lower, and their errors say more; a service manager waits
    // longer (LongestStep of platform/posix/service_notify.cpp).
    std::chrono::milliseconds processor = std::chrono::minutes(60);
    std::chrono::milliseconds longest = std::chrono::hours(3);
    std::int64_t megabytes = 6144;      // of address space
    std::vector<std::string> readable;  // see Confinement
    // The next report gets another process once this one holds so many bytes or has opened so many reports.
    std::int64_t mostBytes = std::int64_t{512} << 20;
    int mostReports = 1000;
};

// Returns the settings with the oxc-report beside the running program, and with the machine's variables:
// OXC_REPORT_MEMORY, in megabytes, and OXC_REPORT_FOLDERS, absolute paths with ":" between them. Raises
// RuntimeError WorkerFailed for a variable that cannot be used.
Settings SettingsOfMachine();

}  // namespace reports::worker
