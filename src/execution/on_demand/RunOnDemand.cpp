// SPDX-License-Identifier: GPL-3.0-or-later
#include "execution/on_demand/RunOnDemand.h"

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

void RecordFailedExecution(const Variant& key, const RuntimeError& error) {
    WriteRunHistory(key, HistoryMoment(), "", error.Description());
}

void ShowFailedExecution(const std::string& words, const RuntimeError& error) {
    MsgBox(ErrorText(words, error), vbExclamation);
}

}  // namespace Global
