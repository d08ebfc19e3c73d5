// SPDX-License-Identifier: GPL-3.0-or-later
#include "dialogs/ParameterRows.h"

#include "shared/Global.h"

namespace Global {

namespace {

std::string NewestSchedule() {
    ADODB::Recordset newest;
    newest.Open("select max(ReportID) from reportscheduler", ConnectionString);
    std::string key = newest.Fields(0).Value.Text();
    newest.Close();
    return key;
}

}  // namespace

void InsertParameterRow(ADODB::Connection& connection, const std::string& reportID, const std::string& name,
                        const std::string& value) {
    connection.Execute("insert into ReportParameter(ReportID, ParName, ParValue) Values(" + reportID + ",'" +
                       name + "','" + value + "')");
}

void AddParameterRows(int count) {
    try {
        const std::string reportID = NewestSchedule();
        ADODB::Connection connection;
        connection.Open(ConnectionString);
        for (int i = 1; i <= count; ++i) {
            InsertParameterRow(connection, reportID, ParNameSlot(i), ParValueSlot(i));
        }
        connection.Close();
    } catch (...) {
        ShowError(CurrentError());
    }
}

bool ReplaceParameterRows(const Variant& reportID, const ParameterLine& line) {
    try {
        report::Report& report = OpenedReport();
        const int count = report.ParameterFieldCount();
        if (count == 0) {
            return true;
        }
        ADODB::Connection connection;
        connection.Open(ConnectionString);
        connection.Execute("delete from reportparameter where reportid = " + reportID);
        for (int i = 1; i <= count; ++i) {
            connection.Execute("insert into reportparameter(ReportID, ParName, ParValue) values(" + reportID +
                               ",'" + report.Parameter(i).Name() + "','" + line(i) + "')");
        }
        connection.Close();
        return true;
    } catch (...) {
        ShowError(CurrentError());
        return false;
    }
}

}  // namespace Global
