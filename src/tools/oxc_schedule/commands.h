// SPDX-License-Identifier: GPL-3.0-or-later
// The commands of oxc-schedule. Each checks its line first and then runs on the live database, which it waits
// for while it is busy. Success goes to standard output, in words or with --json as an object, and means exit
// code 0. What does not exist, is ambiguous or cannot be stored is a Refusal and changes nothing; a failure
// of the machine is a RuntimeError. Both mean exit code 1. Wrong usage is a ScheduleUsageError, exit code 2.
#pragma once

#include "tools/oxc_schedule/command_line.h"

namespace tools {

// Takes the first steps of every program of the system and runs the command. Returns the exit code: 0, and
// for status also 1 and 2.
int RunScheduleCommand(const CommandLine& line);

// Prints the application folder. The steps before it make what is missing there.
void ShowPlace(const CommandLine& line);

// Add and Set open the report: a file that cannot be opened and a value that it refuses are refusals. A row
// that another program has changed meanwhile is not overwritten.
void AddSchedule(const CommandLine& line);
void SetSchedule(const CommandLine& line);
// Copies the report file to the cache again and moves stored values to the positions of its parameters.
void RefreshSchedule(const CommandLine& line);
// Removes the schedule with its values and its history.
void RemoveSchedule(const CommandLine& line);
// Runs the schedule at once, without moving its date. A run that fails is a Refusal with the text of its box.
void RunSchedule(const CommandLine& line);
void ListSchedules(const CommandLine& line);
void ShowSchedule(const CommandLine& line);
void ShowHistory(const CommandLine& line);
void ShowPackageHistory(const CommandLine& line);
// Prints the runs up to a date, in the order in which polls would start them.
void ShowComingRuns(const CommandLine& line);

// The same for packages. Without its last report a package is removed, too.
void AddPackage(const CommandLine& line);
void SetPackage(const CommandLine& line);
void RemovePackage(const CommandLine& line);
void RemovePackageReport(const CommandLine& line);
void RunStoredPackage(const CommandLine& line);
void ListPackages(const CommandLine& line);
void ShowPackage(const CommandLine& line);

// A folder that is not empty is not removed.
void ListFolders(const CommandLine& line);
void AddFolder(const CommandLine& line);
void RenameStoredFolder(const CommandLine& line);
void RemoveFolder(const CommandLine& line);

// The polling interval in seconds, and who gets the alerts.
void ShowOptions(const CommandLine& line);
void SetOptions(const CommandLine& line);

// All folders, schedules and packages as JSON, without next runs; passwords only if the line asks for them.
// Import takes all of it or nothing.
void ExportAll(const CommandLine& line);
void ImportAll(const CommandLine& line);

// Returns the exit code: 0 if the scheduler polls, 1 if it is late or runs failed, 2 if there was no poll or
// the state cannot be read.
int ShowStatus(const CommandLine& line);
// Raises ScheduleUsageError for an option that cannot be used.
void CheckStatusOptions(const CommandLine& line);
// Prints the state of a system that cannot be read, for --json and --prometheus on standard output, and the
// cause on standard error.
void ShowNoStatus(const CommandLine& line, const std::string& why);

}  // namespace tools
