// SPDX-License-Identifier: GPL-3.0-or-later
// The commands of oxc-schedule. Success goes to standard output; a refusal or a failure is raised as a
// RuntimeError, wrong usage as a ScheduleUsageError.
#pragma once

#include "tools/oxc_schedule/command_line.h"

namespace tools {

// Takes the first steps of every program of the system and runs the command. Returns the exit code: 0, and
// for status also 1 and 2.
int RunScheduleCommand(const CommandLine& line);

void AddSchedule(const CommandLine& line);
void SetSchedule(const CommandLine& line);
void RefreshSchedule(const CommandLine& line);
void RemoveSchedule(const CommandLine& line);
void RunSchedule(const CommandLine& line);
void ListSchedules(const CommandLine& line);
void ShowSchedule(const CommandLine& line);
void ShowHistory(const CommandLine& line);
void ShowPackageHistory(const CommandLine& line);
void ShowComingRuns(const CommandLine& line);

void AddPackage(const CommandLine& line);
void SetPackage(const CommandLine& line);
void RemovePackage(const CommandLine& line);
void RemovePackageReport(const CommandLine& line);
void RunStoredPackage(const CommandLine& line);
void ListPackages(const CommandLine& line);
void ShowPackage(const CommandLine& line);

void ListFolders(const CommandLine& line);
void AddFolder(const CommandLine& line);
void RenameStoredFolder(const CommandLine& line);
void RemoveFolder(const CommandLine& line);

void ShowOptions(const CommandLine& line);
void SetOptions(const CommandLine& line);

void ExportAll(const CommandLine& line);
void ImportAll(const CommandLine& line);

int ShowStatus(const CommandLine& line);
// Raises ScheduleUsageError for an option that cannot be used.
void CheckStatusOptions(const CommandLine& line);
// Prints the state of a system that cannot be read, for --json and --prometheus on standard output, and the
// cause on standard error.
void ShowNoStatus(const CommandLine& line, const std::string& why);

}  // namespace tools
