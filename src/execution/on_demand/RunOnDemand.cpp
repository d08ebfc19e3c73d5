// SPDX-License-Identifier: GPL-3.0-or-later
#include "execution/on_demand/RunOnDemand.h"

#include "execution/PackageRun.h"
#include "execution/RunReport.h"
#include "platform/base/convert.h"
#include "platform/contracts/adodb.h"
#include "platform/contracts/clock.h"
#include "platform/contracts/prompts.h"
#include "scheduler/RunHistory.h"
#include "shared/Global.h"

namespace Global {

namespace {

// In the form of the region, unlike the moment that a poll writes.
std::string HistoryMoment() {
    const DateValue now = Now();
    return DateText(now) + " " + TimeText(now);
}

}  // namespace

bool ExecuteSchedule(const Variant& key) {
    ADODB::Recordset row;
    row.Open("select * from reportscheduler where reportid = " + key, ConnectionString);
    const bool delivered = RunStoredSchedule(row);
    if (delivered) {
        WriteRunHistory(row.Fields("ReportID").Value, HistoryMoment(), "Success", "None");
        MsgBox("Schedule executed successfully", vbInformation);
    }
    row.Close();
    return delivered;
}

bool ExecutePackage(const std::string& key) {
    ADODB::Recordset packages;
    packages.Open("select * from reportbatch where reportid = " + key, ConnectionString);
    std::string lastKey;  // as in the poll: the row of a failure has the key of the package before (sic)
    for (; !packages.EOF_(); packages.MoveNext()) {
        if (!RunPackage(packages, Runner::PackageDemand)) {
            WritePackageFailure(lastKey, "");
            AlertPollFailure("BatchReport", RuntimeError(0, ""));
            return false;
        }
        lastKey = packages.Fields("ReportID").Value.Text();
        WritePackageRun(lastKey);
    }
    packages.Close();
    MsgBox("Package executed successfully!", vbInformation);
    return true;
}

void RecordFailedExecution(const Variant& key, const RuntimeError& error) {
    WriteRunHistory(key, HistoryMoment(), "", error.Description());
}

void ShowFailedExecution(const std::string& words, const RuntimeError& error) {
    MsgBox(ErrorText(words, error), vbExclamation);
}

}  // namespace Global
