// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/DeskMenus.h"

#include <map>

#include "desktop/DeskItems.h"
#include "desktop/DeskWindows.h"
#include "desktop/OnSelection.h"
#include "desktop/frmDesk.h"
#include "dialogs/ScheduleRecords.h"
#include "dialogs/frmProp.h"
#include "execution/RunReport.h"
#include "platform/contracts/clock.h"
#include "shared/Global.h"

namespace {

enum class Need { Window, Item };
const std::map<std::string, Need> Needs = {
    {"mnuAdd", Need::Window},      {"mnuIcons", Need::Window},   {"mnuViewList", Need::Window},
    {"mnuDetails", Need::Window},  {"mnuDeskNew", Need::Window}, {"mnuDeskDel", Need::Window},
    {"mnuDesign", Need::Item},     {"mnuDeskOpen", Need::Item},  {"mnuRename", Need::Item},
    {"mnuDeskDelfld", Need::Item}, {"mnuDeskView", Need::Item},  {"mnuDeskExec", Need::Item},
    {"mnuDeskProp", Need::Item},   {"mnubtcRun", Need::Item},    {"mnubtcOutput", Need::Item},
    {"mnubtcPar", Need::Item},     {"mnubtcExec", Need::Item},   {"mnubtcDelSel", Need::Item},
};

}  // namespace

std::optional<bool> HasWhatItActsOn(const std::string& entry) {
    const auto found = Needs.find(entry);
    if (found == Needs.end()) {
        return std::nullopt;
    }
    const frmDesk* desk = FindDesk(Global::DeskIndex);
    return desk != nullptr && (found->second == Need::Window || desk->lsvDesk->HasSelection());
}

void mnuDeskNew_Click() {
    // The key is the same for the whole day: a second item while the first is listed is an error (sic).
    const std::string key = "New Folder" + std::to_string(desk::SecondsOfKey(Today()));
    ActiveDeskForm().lsvDesk->ListItems().Add(key, "New Folder", desk::FolderItem, desk::FolderItem);
}

void mnuDeskOpen_Click() {
    frmDesk& window = ActiveDeskForm();
    if (!window.SelectedText().empty()) {
        window.lsvDesk_DblClick();
    }
}

void mnuRename_Click() {
    ActiveDeskForm().lsvDesk->StartLabelEdit();
}

void mnuDeskDelfld_Click() {
    ActiveDeskForm().ComAction(DeleteCommand);
}

void mnuDeskDel_Click() {
    ActiveDeskForm().ComAction(SeparatorCommand);  // sic: nothing happens
}

void mnuDeskProp_Click() {
    OnSelection([] {
        const DeskWindow& window = Global::ActiveDesk();
        Global::SelectedReportID =
            std::to_string(Global::GetScheduleID(window.SelectedText(), window.Caption()));
        Global::BusyCursor(false);
        frmProp::Instance().ShowForm();
    });
}

// Nobody asked for more than the menu: without a window or an item there is nothing to do.
void mnuDeskRpt_Click() {
    const frmDesk* desk = FindDesk(Global::DeskIndex);
    if (desk != nullptr && desk->lsvDesk->HasSelection()) {
        desk->lsvDesk->SelectedItem().Selected(true);
    }
}
