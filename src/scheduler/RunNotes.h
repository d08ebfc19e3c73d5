// SPDX-License-Identifier: GPL-3.0-or-later
// Small files beside the database that note runs, one run a line.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace Global {

enum class RunKind { Schedule, Package };

// One run of an item. A changed date or time makes it a different run.
struct DueRun {
    RunKind kind = RunKind::Schedule;
    std::string reportID;
    std::string date, time;  // as the item's row holds them
    bool operator==(const DueRun&) const = default;
};

struct RunNote {
    DueRun run;
    std::vector<std::string> values;  // what is noted about the run; no tabs and no line ends
};

// Returns "schedule" or "package".
const std::string& WordOf(RunKind kind);

// Returns the file of that name in the application's folder.
std::filesystem::path RunNotesFile(const std::string& name);
// Returns the notes of the file, those alone that have so many values. Leaves out a line that was cut off or
// is not understood. A missing file has no notes.
std::vector<RunNote> ReadRunNotes(const std::filesystem::path& file, std::size_t values);
// Writes the file without waiting for the disk: the notes protect against a killed process, not against a
// power failure. Without notes there is no file. A failure is not reported.
void WriteRunNotes(const std::filesystem::path& file, const std::vector<RunNote>& notes);

}  // namespace Global
