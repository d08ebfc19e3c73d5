// The application-wide variables, set at start-up and read everywhere, and the error box.
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

// Settings, read once per process.
extern std::string ConnectionString;
extern std::int16_t PollSeconds;    // between polls
extern std::int16_t PollCountdown;  // seconds left
extern std::string OutputPath;      // ends in a backslash
extern std::string DesignerPath;
extern std::string DefPath;        // where the file dialogs for reports start
extern std::string AlertWho;       // address of failure alerts
extern std::string MailBatchFlag;  // "T" or "F": the package wizard's mail switch

// Windows. Slot 0 of DeskWindows is never used; an empty slot is a window that was closed.
extern MainFrame* Frame;  // null until the main window is loaded
extern std::vector<DeskWindow*> DeskWindows;
extern std::int16_t DeskCount;
extern std::int16_t DeskIndex;
// The window in a slot: 9 "Subscript out of range" when there is no such slot, 91 when its window was closed.
DeskWindow& DeskSlot(int slot);
// The window that commands act on, DeskWindows(DeskIndex).
DeskWindow& ActiveDesk();
// The same, null when there is none.
DeskWindow* FindActiveDesk();
extern std::string CurrentFolderID;
extern std::string CurrentFolder;
extern std::int16_t FolderClicks;  // on the folder tree of the Desktop windows

// The engine is made at its first use and lives as long as the process. Every open replaces CurrentReport.
extern std::shared_ptr<report::Engine> ReportEngine;
extern std::shared_ptr<report::Report> CurrentReport;

// The package run under way. Slot 0 of both is never used; 20 files at most.
extern std::array<std::string, 21> AttachmentList;
extern std::vector<std::string> RecipientList;
// 9 "Subscript out of range" outside 0 to 20.
std::string& AttachmentSlot(int index);
const std::string& RecipientSlot(int index);

// What travels through the parameter dialog. Slot 0 of both lists is never used.
extern std::vector<std::string> ParNames;
extern std::vector<std::string> ParValues;
extern std::string ParCaller;      // the form that shows the dialog: what becomes of the values hangs on it
extern std::string ParReportName;  // under which the package wizard's values are kept
extern bool ParCancelled;
// 9 "Subscript out of range" outside the list.
const std::string& ParNameSlot(int index);
const std::string& ParValueSlot(int index);

extern std::string SelectedReportID;  // the schedule that Report Properties opens
// The package wizard's: the running number of its reports, and the format word of them all.
extern std::int32_t PackageCounter;
extern std::string PackageFormat;

// CurrentReport; 91 when there is none.
report::Report& OpenedReport();
// Opens a report file in the engine; it becomes CurrentReport. On an error CurrentReport stays as it was.
report::Report& OpenReport(const std::string& path);

// "<words><description> [<number>]", the form of every error text.
std::string ErrorText(const std::string& words, const RuntimeError& error);
// The application's error box.
void ShowError(const std::string& description, std::int32_t number);
inline void ShowError(const RuntimeError& error) {
    ShowError(error.Description(), error.Number());
}

}  // namespace Global
