// SPDX-License-Identifier: GPL-3.0-or-later
#include "shared/Global.h"

#include "platform/contracts/prompts.h"
#include "platform/contracts/shared_store.h"

namespace Global {

std::string ConnectionString;
std::int16_t PollSeconds = 0;
std::int16_t PollCountdown = 0;
std::string OutputPath;
std::string DesignerPath;
std::string DefPath;
std::string AlertWho;
std::string MailBatchFlag;

MainFrame* Frame = nullptr;
std::vector<DeskWindow*> DeskWindows;
std::int16_t DeskCount = 0;
std::int16_t DeskIndex = 0;
std::string CurrentFolderID;
std::string CurrentFolder;
std::int16_t FolderClicks = 0;

std::shared_ptr<report::Engine> ReportEngine;
std::shared_ptr<report::Engine> RunEngine;
std::shared_ptr<report::Report> CurrentReport;

std::array<std::string, 21> AttachmentList;
std::vector<std::string> RecipientList;

std::vector<std::string> ParNames;
std::vector<std::string> ParValues;
std::string ParCaller;
std::string ParReportName;
bool ParCancelled = false;
std::string SelectedReportID;
std::int32_t PackageCounter = 0;
std::string PackageFormat;

namespace {

// Slot 0 of such a list exists and is not used. Tables and parameters of a report have no such slot: Slot of
// platform/reports/rdl_report.cpp.
const std::string& SlotFromOne(const std::vector<std::string>& list, int index) {
    if (index < 1 || index >= static_cast<int>(list.size())) {
        throw RuntimeError(err::SubscriptOutOfRange);
    }
    return list[static_cast<std::size_t>(index)];
}

}  // namespace

DeskWindow& DeskSlot(int slot) {
    if (slot < 0 || slot >= static_cast<int>(DeskWindows.size())) {
        throw RuntimeError(err::SubscriptOutOfRange);
    }
    DeskWindow* const window = DeskWindows[static_cast<std::size_t>(slot)];
    if (window == nullptr) {
        throw RuntimeError(err::ObjectNotSet);
    }
    return *window;
}

DeskWindow& ActiveDesk() {
    return DeskSlot(DeskIndex);
}

DeskWindow* FindActiveDesk() {
    const auto slot = static_cast<std::size_t>(DeskIndex);
    return DeskIndex > 0 && slot < DeskWindows.size() ? DeskWindows[slot] : nullptr;
}

std::string& AttachmentSlot(int index) {
    if (index < 0 || index >= static_cast<int>(AttachmentList.size())) {
        throw RuntimeError(err::SubscriptOutOfRange);
    }
    return AttachmentList[static_cast<std::size_t>(index)];
}

const std::string& RecipientSlot(int index) {
    return SlotFromOne(RecipientList, index);
}

const std::string& ParNameSlot(int index) {
    return SlotFromOne(ParNames, index);
}

const std::string& ParValueSlot(int index) {
    return SlotFromOne(ParValues, index);
}

report::Report& OpenedReport() {
    if (!CurrentReport) {
        throw RuntimeError(err::ObjectNotSet);
    }
    return *CurrentReport;
}

report::Report& OpenReport(const std::string& path) {
    if (!ReportEngine) {
        ReportEngine = report::CreateEngine();
    }
    CurrentReport = ReportEngine->OpenReport(ReportOnThisMachine(ConnectionString, path));
    return *CurrentReport;
}

report::Report& OpenReportToRun(const std::string& path) {
    if (!RunEngine) {
        RunEngine = report::CreateRunEngine();
    }
    CurrentReport = RunEngine->OpenReport(ReportOnThisMachine(ConnectionString, path));
    return *CurrentReport;
}

std::string ErrorText(const std::string& words, const RuntimeError& error) {
    return words + error.Description() + " [" + std::to_string(error.Number()) + "]";
}

void ShowError(const std::string& description, std::int32_t number) {
    // "encountred": sic
    MsgBox("Oxbow Courier encountred an error. " + description + " [" + std::to_string(number) + "]",
           vbExclamation);
}

}  // namespace Global
