// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/oxc_schedule/schedule_rows.h"

#include "dialogs/ParameterRows.h"
#include "platform/base/marks.h"
#include "platform/base/paths.h"

namespace tools {

void InsertScheduleRows(ADODB::Connection& connection, const StoredSchedule& schedule) {
    Global::NewSchedule row = schedule.row;
    // Unlike the other values, paths stand in no other statement, so that they can hold the mark.
    row.reportPath = DoubledMarks(row.reportPath);
    row.originalPath = DoubledMarks(row.originalPath);
    Global::InsertSchedule(connection, row);
    for (const auto& [name, value] : schedule.parameters) {
        Global::InsertParameterRow(connection, schedule.id, name, value);
    }
}

void ReplaceValues(ADODB::Connection& connection, const std::string& reportID, const NamedValues& values) {
    connection.Execute("delete from ReportParameter where ReportID = " + reportID);
    for (const auto& [name, value] : values) {
        Global::InsertParameterRow(connection, reportID, name, value);
    }
}

void RefuseChanged(const StoredSchedule& stored) {
    const std::vector<StoredSchedule> now = ReadSchedules("ReportID = " + stored.id);
    if (now.size() != 1 || !IsSame(now.front(), stored)) {
        Refuse("Schedule " + stored.id + " was changed by another program meanwhile; give the command again");
    }
}

bool IsSame(const StoredSchedule& one, const StoredSchedule& other) {
    return ScheduleFields(one) == ScheduleFields(other) && one.row.password == other.row.password;
}

QJsonObject ScheduleFields(const StoredSchedule& schedule) {
    const Global::NewSchedule& row = schedule.row;
    QJsonArray parameters;
    for (const auto& [name, value] : schedule.parameters) {
        parameters.append(QJsonObject{{"name", Json(name)}, {"value", Json(value)}});
    }
    return {{"title", Json(row.title)},
            {"folder", Json(row.parent)},
            {"report", Json(paths::ForUser(row.originalPath))},
            {"to", Json(row.sendTo)},
            {"subject", Json(row.subject)},
            {"message", Json(row.message)},
            {"start", Json(row.startDate)},
            {"end", Json(row.endDate)},
            {"at", Json(row.runAt)},
            {"frequency", Json(row.frequency)},
            {"format", Json(row.format)},
            {"formula", Json(row.selectionForm)},
            {"user", Json(row.loginReq == "T" ? row.userName : "")},
            {"parameters", parameters}};
}

QJsonObject Result(const std::string& id, const std::string& title, const std::string& folder,
                   const std::string& next) {
    return {{"id", Json(id).toLongLong()},
            {"title", Json(title)},
            {"folder", Json(folder)},
            {"next", Json(next)}};
}

QJsonObject Result(const StoredSchedule& schedule) {
    return Result(schedule.id, schedule.row.title, schedule.row.parent, schedule.row.nextRun);
}

std::string Named(const Global::NewSchedule& row) {
    return Quoted(row.title) + " in the folder " + Quoted(row.parent);
}

}  // namespace tools
