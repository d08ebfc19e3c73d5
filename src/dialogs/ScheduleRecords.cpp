// SPDX-License-Identifier: GPL-3.0-or-later
#include "dialogs/ScheduleRecords.h"

#include "platform/base/convert.h"
#include "shared/Global.h"

namespace Global {

namespace {

std::int16_t FirstKey(const std::string& statement, const char* field) {
    ADODB::Recordset rows;
    rows.Open(statement, ConnectionString, ADODB::adOpenForwardOnly, ADODB::adLockReadOnly);
    const std::int16_t key = rows.EOF_() ? std::int16_t{0} : CInt(rows.Fields(field).Value);
    rows.Close();
    return key;
}

const std::string& Given(const std::optional<std::string>& argument) {
    if (!argument) {
        throw RuntimeError(err::TypeMismatch);
    }
    return *argument;
}

std::string UpdateStatement(const Variant& reportID, const ScheduleChange& change) {
    return "update reportscheduler set ReportTitle = '" + change.title + "', SendTo = '" + change.sendTo +
           "', Subject = '" + change.subject + "', Message = '" + change.message + "', RunAt = '" +
           change.runAt + "', Frequency = '" + change.frequency + "', Format = '" + change.format +
           "', SelectionForm = '" + change.selectionForm + "',Parent = '" + change.parent + "',UserName = '" +
           Given(change.userName) + "',[Password] = '" + Given(change.password) + "',LoginReq = '" +
           change.loginReq + "' where ReportID = " + reportID;
}

}  // namespace

std::int16_t GetFolderID(const std::string& folderName) {
    return FirstKey("select folderid  from folders where foldername = '" + folderName + "'", "FolderID");
}

std::int16_t GetScheduleID(const std::string& title, const std::string& parent) {
    return FirstKey("select reportid from reportscheduler where reporttitle = '" + title +
                        "' and parent = '" + parent + "'",
                    "ReportID");
}

void InsertSchedule(ADODB::Connection& connection, const NewSchedule& schedule) {
    connection.Execute(
        "insert into ReportScheduler(SendTo,Subject,Message,StartDate, EndDate, RunAT, Frequency, NextRun, "
        "ReportPath, ReportTitle, Client, SelectionForm, Format,Parent,OriginalPath,UserName, "
        "[Password],LoginReq) Values('" +
        schedule.sendTo + "', '" + schedule.subject + "', '" + schedule.message + "','" + schedule.startDate +
        "','" + schedule.endDate + "','" + schedule.runAt + "', '" + schedule.frequency + "','" +
        schedule.nextRun + "','" + schedule.reportPath + "','" + schedule.title + "','NONE','" +
        schedule.selectionForm + "','" + schedule.format + "','" + schedule.parent + "','" +
        schedule.originalPath + "','" + schedule.userName + "','" + schedule.password + "','" +
        schedule.loginReq + "')");
}

bool UpdateSchedule(const Variant& reportID, const ScheduleChange& change) {
    try {
        const std::string update = UpdateStatement(reportID, change);
        ADODB::Connection connection;
        connection.Open(ConnectionString);
        connection.Execute(update);
        connection.Close();
        return true;
    } catch (...) {
        ShowError(CurrentError());
        return false;
    }
}

void UpdateSchedule(ADODB::Connection& connection, const Variant& reportID, const ScheduleChange& change) {
    connection.Execute(UpdateStatement(reportID, change));
}

void DeleteSchedule(const Variant& reportID) {
    ADODB::Connection connection;
    connection.Open(ConnectionString);
    DeleteSchedule(connection, reportID);
    connection.Close();
}

void DeleteSchedule(ADODB::Connection& connection, const Variant& reportID) {
    connection.Execute("delete from reportscheduler where ReportID = " + reportID);
    connection.Execute("delete from reportparameter where reportID = " + reportID);
    connection.Execute("delete from reporthistory where ReportID = " + reportID);
}

}  // namespace Global
