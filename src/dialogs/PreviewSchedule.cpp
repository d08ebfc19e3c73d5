// SPDX-License-Identifier: GPL-3.0-or-later
#include "dialogs/PreviewSchedule.h"

#include "execution/Preview.h"
#include "execution/RunReport.h"
#include "platform/contracts/adodb.h"
#include "shared/Global.h"

namespace Global {

namespace {

void OpenAsItWouldRun(const Variant& reportID) {
    ADODB::Recordset rows;
    rows.Open(
        "select * from reportscheduler r left outer join reportparameter x  on r.reportid = x.reportid where "
        "r.reportid = " +
            reportID,
        ConnectionString, ADODB::adOpenStatic, ADODB::adLockReadOnly);
    report::Report& report = OpenReport(rows.Fields("ReportPath").Value.Text());
    if (rows.Fields("LoginReq").Value.Text() == "T") {
        LogTablesOn(report, rows.Fields("UserName").Value.Text(), rows.Fields("Password").Value.Text());
    }
    report.SetRecordSelectionFormula(rows.Fields("SelectionForm").Value.Text());
    for (int field = 1; !rows.EOF_() && report.ParameterFieldCount() != 0; ++field) {
        HandOverParameter(report, field, rows.Fields("ParValue").Value, OtherFieldRule::Fail);
        rows.MoveNext();
    }
    rows.Close();
}

}  // namespace

void PreviewSchedule(const Variant& reportID) {
    try {
        BusyCursor(true);
        OpenAsItWouldRun(reportID);
        ShowPreview();
        BusyCursor(false);
    } catch (...) {
        const RuntimeError error = CurrentError();
        BusyCursor(false);
        ShowError(error);
    }
}

}  // namespace Global
