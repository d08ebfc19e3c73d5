// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/DocumentCommands.h"

#include <cstdint>
#include <string>

#include "dialogs/ScheduleRecords.h"
#include "platform/base/paths.h"
#include "platform/contracts/adodb.h"
#include "shared/Global.h"
#include "shared/ShellMod.h"

namespace {

constexpr const char* VendorSite = "https://oxbow-courier.example";

void Open(const std::string& file, int showMode) {
    std::string verb = "open";
    ShellMod::OpenDocument(file, showMode, "", "", verb, {});
}

std::string OriginalPath(std::int16_t schedule) {
    ADODB::Recordset rows;
    rows.Open("select originalpath from reportscheduler where reportid = " + std::to_string(schedule),
              Global::ConnectionString);
    const Variant path = rows.Fields("originalpath").Value;
    rows.Close();
    if (path.IsNull()) {
        throw RuntimeError(err::InvalidUseOfNull);
    }
    return path.Text();
}

std::string PathOfSelected() {
    const DeskWindow& desk = Global::ActiveDesk();
    const std::string title = desk.SelectedText();
    const std::string folder = desk.Caption();
    try {
        return OriginalPath(Global::GetScheduleID(title, folder));
    } catch (const RuntimeError& error) {
        if (error.Number() != err::DataColumnMissing) {
            throw;
        }
    }
    // This is the second and last attempt: its error is shown.
    return OriginalPath(Global::GetScheduleID(title, folder));
}

}  // namespace

void mnuHelp_Click() {
    Open(AppPath() + "\\Oxbow Courier.chm", ShellMod::ShowNormal);
}

void mnuSupport_Click() {
    Open(std::string(VendorSite) + "/Support.htm", ShellMod::ShowMaximized);
}

void mnutbLoad_Click() {
    Open(AppPath() + "\\oxc.exe", ShellMod::ShowDefault);
}

void mnuDesign_Click() {
    try {
        Open(PathOfSelected(), ShellMod::ShowMaximized);
    } catch (...) {
        Global::ShowError(CurrentError());
    }
}
