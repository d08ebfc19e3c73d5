// What the windows do to packages and their reports. Each window finds the row in its own way and brings the
// part of the statements in which they differ.
#pragma once

#include <memory>
#include <string>

#include "platform/contracts/adodb.h"
#include "platform/contracts/report_engine.h"

namespace package {

// Deletes a package, its reports and their parameter values, one after another: when a statement fails, those
// behind it are not run. The history of its runs stays.
void Delete(ADODB::Connection& connection, const std::string& reportID);

// Opens the output of the report that `condition`, the end of a statement behind "Where ", finds among the
// packages b and their reports r. The file is the one that a run as PDF leaves: a run in another format names
// its file otherwise. What could not be opened is told in a box; errors pass to the caller, 3021 when there
// is no such report.
void OpenOutput(const std::string& condition);

// A report of a package: the package's key, its own, both as text, and the report file.
struct Report {
    std::string reportID, detailID;
    std::shared_ptr<report::Report> file;  // null: not opened
};

// Takes the row that the statement finds: its DetailID, and the file at its ReportPath, which becomes
// CurrentReport. Without a row nothing is changed.
void OpenReport(Report& report, const std::string& statement);

// Asks for the values of the report's parameters and stores them anew, unless the user cancels. `condition`
// finds the stored ones. A report without parameters is told in a box. Errors pass to the caller, with the
// hourglass as it was then: 91 when the file is not opened.
void EditParameters(const Report& report, const std::string& condition);

// Runs a command of a menu; its error is shown.
void Run(void (*command)());
// The same under the hourglass, which an error takes away before it is shown.
void RunBusy(void (*command)());

}  // namespace package
