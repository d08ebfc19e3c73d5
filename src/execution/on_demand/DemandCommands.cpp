// SPDX-License-Identifier: GPL-3.0-or-later
#include "execution/on_demand/DemandCommands.h"

#include "dialogs/ScheduleRecords.h"
#include "execution/PackageRun.h"
#include "execution/on_demand/RunOnDemand.h"
#include "platform/contracts/adodb.h"
#include "platform/contracts/prompts.h"
#include "scheduler/RunHistory.h"
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
    const std::string key = cmFunc::PackageOfKey(Global::ActiveDesk().SelectedKey());
    ADODB::Recordset packages;
    packages.Open("select * from reportbatch where reportid = " + key, Global::ConnectionString);
    std::string lastKey;  // as in the poll: the row of a failure has the key of the package before (sic)
    for (; !packages.EOF_(); packages.MoveNext()) {
        if (!Global::RunPackage(packages, Global::Runner::PackageDemand)) {
            Global::WritePackageFailure(lastKey, "");
            Global::AlertPollFailure("BatchReport", RuntimeError(0, ""));
            return;
        }
        lastKey = packages.Fields("ReportID").Value.Text();
        Global::WritePackageRun(lastKey);
    }
    packages.Close();
    MsgBox("Package executed successfully!", vbInformation);
}
