// SPDX-License-Identifier: GPL-3.0-or-later
#include "execution/on_demand/DemandCommands.h"

#include "dialogs/ScheduleRecords.h"
#include "execution/RunReport.h"
#include "execution/on_demand/RunOnDemand.h"
#include "shared/Frame.h"
#include "shared/Global.h"
#include "store/TextConventions.h"

void mnuDeskExec_Click() {
    std::int16_t key = 0;
    try {
        const DeskWindow& desk = Global::ActiveDesk();
        key = Global::GetScheduleID(desk.SelectedText(), desk.Caption());
        Global::ExecuteSchedule(key);
    } catch (...) {
        const RuntimeError error = CurrentError();
        Global::RecordFailedExecution(key, error);
        Global::ShowFailedExecution("An error was encountered. ", error);
    }
}

void mnubtcExec_Click() {
    Global::ExecutePackage(cmFunc::PackageOfKey(Global::ActiveDesk().SelectedKey()));
}

void mnuExec_Click(HistoryFrame& (*history)()) {
    std::string key;
    try {
        Global::BusyCursor(true);
        if (const std::optional<std::string> schedule = history().SelectedSchedule()) {
            key = cmFunc::GetDelimitedField(*schedule, 1, ":");
            if (Global::ExecuteSchedule(key)) {
                history().Form_Load();
            }
        }
        Global::BusyCursor(false);
    } catch (...) {
        const RuntimeError error = CurrentError();
        Global::RecordFailedExecution(key, error);
        Global::BusyCursor(false);
        Global::ShowFailedExecution("An error was encountered, ", error);
        history().Form_Load();
    }
}
