// SPDX-License-Identifier: GPL-3.0-or-later
// The commands that list schedules and their history.
#include "platform/base/one_line.h"
#include "platform/base/paths.h"
#include "shared/Global.h"
#include "tools/oxc_schedule/command_output.h"
#include "tools/oxc_schedule/commands.h"
#include "tools/oxc_schedule/history_moment.h"
#include "tools/oxc_schedule/records.h"
#include "tools/oxc_schedule/schedule_rows.h"

namespace tools {
namespace {

QJsonObject DescribeSchedule(const StoredSchedule& stored) {
    QJsonObject object = ScheduleFields(stored);
    object.insert("id", Json(stored.id).toLongLong());
    object.insert("next", Json(stored.row.nextRun));
    return object;
}

// "name: value" for each field; a text of several lines is indented.
std::string Field(const std::string& name, const std::string& value) {
    std::string text;
    for (std::string_view rest = value; !rest.empty();) {
        const std::string_view line = rest.substr(0, rest.find('\n'));
        text += OnOneLine(line);
        rest.remove_prefix(line.size());
        if (!rest.empty()) {
            text += "\n             ";
            rest.remove_prefix(1);
        }
    }
    std::string label = name + ":";
    label.resize(13, ' ');
    return value.empty() ? "" : label + text + "\n";
}

struct HistoryRow {
    std::string id, folder, title, moment, status, error;
};

std::vector<HistoryRow> ReadHistory(const std::string& condition, std::int64_t limit) {
    ADODB::Recordset rows;
    rows.Open(
        "select h.ReportID, r.Parent, r.ReportTitle, h.LastRun, h.Status, h.ErrMsg from ReportHistory h "
        "left outer join ReportScheduler r on h.ReportID = r.ReportID" +
            condition + " order by h.rowid desc",
        Global::ConnectionString);
    NewestRows<HistoryRow> history(limit);
    for (; !rows.EOF_(); rows.MoveNext()) {
        const auto text = [&rows](std::size_t column) { return rows.Fields(column).Value.Text(); };
        history.Add(text(3), {text(0), text(1), text(2), text(3), text(4), text(5)});
    }
    rows.Close();
    return history.Take();
}

}  // namespace

void ListSchedules(const CommandLine& line) {
    const auto folder = line.Value("folder");
    const std::vector<StoredSchedule> schedules =
        ReadSchedules(folder ? "Parent = " + SqlText(FindFolder(*folder)) : "");
    if (line.Has("json")) {
        QJsonArray array;
        for (const StoredSchedule& schedule : schedules) {
            array.append(DescribeSchedule(schedule));
        }
        return Print(array);
    }
    std::vector<std::vector<std::string>> rows = {
        {"ID", "FOLDER", "TITLE", "FREQUENCY", "AT", "NEXT", "FORMAT", "TO"}};
    for (const auto& [id, row, parameters] : schedules) {
        rows.push_back(
            {id, row.parent, row.title, row.frequency, row.runAt, row.nextRun, row.format, row.sendTo});
    }
    PrintTable(rows);
}

void ShowSchedule(const CommandLine& line) {
    const StoredSchedule stored = FindSchedule(line);
    if (line.Has("json")) {
        return Print(DescribeSchedule(stored));
    }
    const Global::NewSchedule& row = stored.row;
    std::string text = Field("Number", stored.id) + Field("Title", row.title) + Field("Folder", row.parent) +
                       Field("Report", paths::ForUser(row.originalPath)) + Field("Frequency", row.frequency) +
                       Field("At", row.runAt) + Field("Next run", row.nextRun) +
                       Field("Start", row.startDate) + Field("End", row.endDate) +
                       Field("Format", row.format) + Field("To", row.sendTo) + Field("Subject", row.subject) +
                       Field("Message", row.message) + Field("Formula", row.selectionForm) +
                       Field("User", row.loginReq == "T" ? row.userName : "");
    for (const auto& [name, value] : stored.parameters) {
        text += Field("Parameter", name + " = " + value);
    }
    Print(text);
}

void ShowHistory(const CommandLine& line) {
    const bool isOne = !line.names.empty() || line.Has("id");
    const std::vector<HistoryRow> history =
        ReadHistory(isOne ? " where h.ReportID = " + FindSchedule(line).id : "", HistoryLimit(line));
    if (line.Has("json")) {
        QJsonArray array;
        for (const HistoryRow& row : history) {
            array.append(QJsonObject{{"id", Json(row.id).toLongLong()},
                                     {"folder", Json(row.folder)},
                                     {"title", Json(row.title)},
                                     {"moment", Json(row.moment)},
                                     {"status", Json(row.status)},
                                     {"error", Json(row.error)}});
        }
        return Print(array);
    }
    std::vector<std::vector<std::string>> rows = {{"MOMENT", "STATUS", "ID", "FOLDER", "TITLE", "ERROR"}};
    for (const HistoryRow& row : history) {
        rows.push_back({row.moment, row.status, row.id, row.folder, row.title, row.error});
    }
    PrintTable(rows);
}

}  // namespace tools
