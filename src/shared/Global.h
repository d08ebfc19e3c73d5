// SPDX-License-Identifier: GPL-3.0-or-later
// The application-wide variables, which start-up sets and all rooms read, and the error box.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/contracts/report_engine.h"
#include "platform/contracts/runtime.h"
#include "shared/Frame.h"

namespace Global {

// Settings. They are read once in each process, and again by a scheduler that gets SIGHUP.
extern std::string ConnectionString;
extern std::int16_t PollSeconds;    // seconds between two polls
extern std::int16_t PollCountdown;  // seconds until the next poll
extern std::string OutputPath;      // ends in a backslash
extern std::string DesignerPath;
extern std::string DefPath;        // folder in which the file dialogs for reports start
extern std::string AlertWho;       // address of failure alerts
extern std::string MailBatchFlag;  // "T" or "F": the package wizard's mail switch

// Windows. Slot 0 of DeskWindows is never used. A slot is null if its window was closed. The frame owns the
// windows.
extern MainFrame* Frame;  // null until the main window is loaded
extern std::vector<DeskWindow*> DeskWindows;
extern std::int16_t DeskCount;
extern std::int16_t DeskIndex;
// Returns the window in a slot. Raises 9 "Subscript out of range" if there is no such slot, 91 if its window
// was closed.
DeskWindow& DeskSlot(int slot);
// Returns DeskWindows(DeskIndex), the window that commands act on. Raises as DeskSlot.
DeskWindow& ActiveDesk();
// Returns the same window, or null.
DeskWindow* FindActiveDesk();
extern std::string CurrentFolderID;
extern std::string CurrentFolder;
extern std::int16_t FolderClicks;  // counts clicks on the folder trees of the Desktop windows

// The engines are made at their first use and live as long as the process: one for what the user sees and
// edits, one for runs. Every OpenReport and OpenReportToRun replaces CurrentReport.
extern std::shared_ptr<report::Engine> ReportEngine;
extern std::shared_ptr<report::Engine> RunEngine;
extern std::shared_ptr<report::Report> CurrentReport;

// The package run in progress. Slot 0 of both lists is never used. A package has at most 20 files.
extern std::array<std::string, 21> AttachmentList;
extern std::vector<std::string> RecipientList;
// Raises 9 "Subscript out of range" for an index outside 0 to 20.
std::string& AttachmentSlot(int index);
const std::string& RecipientSlot(int index);  // raises 9 outside RecipientList

// Input and output of the parameter dialog. Slot 0 of both lists is never used.
extern std::vector<std::string> ParNames;
extern std::vector<std::string> ParValues;
// the form that shows the dialog; the use of the values depends on it (see frmPar.h)
extern std::string ParCaller;
extern std::string ParReportName;  // the key of the package wizard's values in tmpPar
extern bool ParCancelled;
// Raise 9 "Subscript out of range" outside the list.
const std::string& ParNameSlot(int index);
const std::string& ParValueSlot(int index);

extern std::string SelectedReportID;  // ReportID of the schedule that Report Properties opens
// Of the package wizard: the running number of its reports, and the format word of all of them.
extern std::int32_t PackageCounter;
extern std::string PackageFormat;

// Returns CurrentReport. Raises 91 if no report is open.
report::Report& OpenedReport();
// Opens a report file in the engine and makes it CurrentReport. On an error CurrentReport stays unchanged and
// the error is raised.
report::Report& OpenReport(const std::string& path);
// The same in the engine of runs.
report::Report& OpenReportToRun(const std::string& path);

// Returns "<words><description> [<number>]", the form of every error text.
std::string ErrorText(const std::string& words, const RuntimeError& error);
// Shows the application's error box.
void ShowError(const std::string& description, std::int32_t number);
inline void ShowError(const RuntimeError& error) {
    ShowError(error.Description(), error.Number());
}

}  // namespace Global
