// SPDX-License-Identifier: GPL-3.0-or-later
// What the windows do to packages and their reports. Each window finds the row in its own way and passes the
// part of the statement that differs.
#pragma once

#include <memory>
#include <string>

#include "platform/contracts/report_engine.h"

namespace package {

// Opens the output file of one report. `condition` is the part of the statement after "Where "; it finds the
// report among the packages b and their reports r. The file is the one that a run as PDF leaves: runs in
// other formats name their files in another way (Global::PackageOutputFile). If the file cannot be opened, a
// box says so. Errors pass to the caller: 3021 if there is no such report.
void OpenOutput(const std::string& condition);

// A report of a package.
struct Report {
    std::string reportID, detailID;        // keys of the package and of the report, as text
    std::shared_ptr<report::Report> file;  // null: not open
};

// Reads the row that the statement finds: its DetailID and the file at its ReportPath, which becomes
// CurrentReport. Without a row nothing changes. Errors pass to the caller.
void OpenReport(Report& report, const std::string& statement);

// Asks for the values of the report's parameters and replaces the stored ones, unless the user cancels.
// `condition` finds the stored rows. A box says so if the report has no parameters. Errors pass to the caller
// and leave the pointer as it is: 91 if the report file is not open.
void EditParameters(const Report& report, const std::string& condition);

// Runs a command of a menu and shows its error.
void Run(void (*command)());
// Runs it under the hourglass. An error restores the pointer before it is shown.
void RunBusy(void (*command)());

}  // namespace package
