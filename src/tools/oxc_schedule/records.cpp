// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/oxc_schedule/records.h"

#include <algorithm>
#include <map>
#include <utility>

#include "platform/base/convert.h"
#include "shared/Global.h"
#include "store/Folders.h"
#include "tools/oxc_schedule/checks.h"
#include "tools/oxc_schedule/command_output.h"

namespace tools {
namespace {

std::string Where(const std::string& condition) {
    return condition.empty() ? "" : " where " + condition;
}

// Calls `take` with each row that the statement finds.
void ForEachRow(const std::string& statement, const std::function<void(const ADODB::Recordset&)>& take) {
    ADODB::Recordset rows;
    rows.Open(statement, Global::ConnectionString);
    for (; !rows.EOF_(); rows.MoveNext()) {
        take(rows);
    }
    rows.Close();
}

std::string Text(const ADODB::Recordset& row, const char* column) {
    return row.Fields(column).Value.Text();
}

StoredSchedule ScheduleOf(const ADODB::Recordset& row) {
    return {.id = Text(row, "ReportID"),
            .row = {.sendTo = Text(row, "SendTo"),
                    .subject = Text(row, "Subject"),
                    .message = Text(row, "Message"),
                    .startDate = Text(row, "StartDate"),
                    .endDate = Text(row, "EndDate"),
                    .runAt = Text(row, "RunAt"),
                    .frequency = Text(row, "Frequency"),
                    .nextRun = Text(row, "NextRun"),
                    .reportPath = Text(row, "ReportPath"),
                    .title = Text(row, "ReportTitle"),
                    .selectionForm = Text(row, "SelectionForm"),
                    .format = Text(row, "Format"),
                    .parent = Text(row, "Parent"),
                    .originalPath = Text(row, "OriginalPath"),
                    .userName = Text(row, "UserName"),
                    .password = Text(row, "Password"),
                    .loginReq = Text(row, "LoginReq")},
            .parameters = {}};
}

StoredPackage PackageOf(const ADODB::Recordset& row) {
    return {.id = Text(row, "ReportID"),
            .row = {.recipients = Text(row, "Recipients"),
                    .frequency = Text(row, "Frequency"),
                    .runTime = Text(row, "RunTime"),
                    .startDate = Text(row, "StartDate"),
                    .endDate = Text(row, "EndDate"),
                    .nextRunDate = Text(row, "NextRunDate"),
                    .subject = Text(row, "Subject"),
                    .message = Text(row, "Message"),
                    .destination = Text(row, "Destination"),
                    .name = Text(row, "BatchName"),
                    .mailBatch = Text(row, "MailBatch")},
            .reports = {}};
}

void ReadReports(StoredPackage& package) {
    ForEachRow("select * from reportbatchdtls where reportid = " + package.id,
               [&package](const ADODB::Recordset& row) {
                   package.reports.push_back({Text(row, "DetailID"),
                                              Text(row, "ReportTitle"),
                                              Text(row, "ReportPath"),
                                              Text(row, "ReportFormat"),
                                              {}});
               });
    for (PackageReport& report : package.reports) {
        ForEachRow(
            "select * from reportbatchpar where DetailID = " + report.detailID + " order by parid",
            [&report](const ADODB::Recordset& row) { report.values.push_back(Text(row, "ParValue")); });
    }
}

// The key of --id as a statement holds it.
std::string KeyOf(const CommandLine& line) {
    constexpr std::int64_t LargestKey = 2147483647;
    return std::to_string(*line.Number("id", 1, LargestKey));
}

template <typename Stored>
Stored OnlyOne(const std::vector<Stored>& found, const std::string& kind, const std::string& named,
               const std::string& advice) {
    if (found.empty()) {
        Refuse("There is no " + kind + " " + named);
    }
    if (found.size() > 1) {
        std::string keys;
        for (const Stored& one : found) {
            keys += (keys.empty() ? "" : ", ") + one.id;
        }
        Refuse("There are " + std::to_string(found.size()) + " " + kind + "s " + named +
               ", with the numbers " + keys + ": name one by " + advice);
    }
    return found.front();
}

}  // namespace

std::vector<StoredSchedule> ReadSchedules(const std::string& condition) {
    std::vector<StoredSchedule> schedules;
    ForEachRow("select * from reportscheduler" + Where(condition) + " order by Parent, ReportTitle, ReportID",
               [&schedules](const ADODB::Recordset& row) { schedules.push_back(ScheduleOf(row)); });
    std::map<std::string, NamedValues> values;
    ForEachRow(
        "select ReportID, ParName, ParValue from ReportParameter where ReportID in (select ReportID from "
        "reportscheduler" +
            Where(condition) + ") order by rowid",
        [&values](const ADODB::Recordset& row) {
            values[Text(row, "ReportID")].emplace_back(Text(row, "ParName"), Text(row, "ParValue"));
        });
    for (StoredSchedule& schedule : schedules) {
        schedule.parameters = std::move(values[schedule.id]);
    }
    return schedules;
}

std::vector<StoredPackage> ReadPackages(const std::string& condition) {
    std::vector<StoredPackage> packages;
    ForEachRow("select * from reportbatch" + Where(condition) + " order by BatchName, ReportID",
               [&packages](const ADODB::Recordset& row) { packages.push_back(PackageOf(row)); });
    for (StoredPackage& package : packages) {
        ReadReports(package);
    }
    return packages;
}

StoredSchedule FindSchedule(const CommandLine& line) {
    if (line.Has("id")) {
        const std::string key = KeyOf(line);
        return OnlyOne(ReadSchedules("ReportID = " + key), "schedule", "with the number " + key, "--id");
    }
    std::string condition = "ReportTitle = " + SqlText(WithoutMark(line.names.front()));
    std::string named = Quoted(line.names.front());
    if (const auto folder = line.Value("folder")) {
        const std::string stored = FindFolder(*folder);
        condition += " and Parent = " + SqlText(stored);
        named += " in the folder " + Quoted(stored);
    }
    return OnlyOne(ReadSchedules(condition), "schedule", named, "--folder or --id");
}

StoredPackage FindPackage(const CommandLine& line) {
    if (line.Has("id")) {
        const std::string key = KeyOf(line);
        return OnlyOne(ReadPackages("ReportID = " + key), "package", "with the number " + key, "--id");
    }
    return OnlyOne(ReadPackages("BatchName = " + SqlText(WithoutMark(line.names.front()))), "package",
                   Quoted(line.names.front()), "--id");
}

std::vector<StoredFolder> ReadFolders() {
    std::vector<StoredFolder> folders = {{"0", RootFolder, {}}};
    // The list grows while it is read; a row is reached once, because a folder has one parent.
    for (std::size_t i = 0; i < folders.size(); ++i) {
        const StoredFolder parent = folders[i];
        for (const Global::StoredFolder& folder : Global::FoldersBelow(parent.id)) {
            folders.push_back({folder.id, folder.name, parent.name});
        }
    }
    folders.erase(folders.begin());
    return folders;
}

std::vector<StoredFolder> ReadLostFolders() {
    const std::vector<StoredFolder> reached = ReadFolders();
    std::vector<StoredFolder> lost;
    ForEachRow("select folderid, foldername from folders", [&](const ADODB::Recordset& row) {
        const std::string id = Text(row, "folderid");
        if (std::none_of(reached.begin(), reached.end(),
                         [&id](const StoredFolder& folder) { return folder.id == id; })) {
            lost.push_back({.id = id, .name = Text(row, "foldername"), .parent = {}});
        }
    });
    return lost;
}

std::string FindFolder(const std::string& name) {
    if (UCase(name) == UCase(RootFolder)) {
        return RootFolder;
    }
    std::string stored;
    ForEachRow("select foldername from folders where foldername = " + SqlText(WithoutMark(name)),
               [&stored](const ADODB::Recordset& row) { stored = Text(row, "foldername"); });
    if (stored.empty()) {
        Refuse("There is no folder " + Quoted(name));
    }
    return stored;
}

void InTransaction(const std::function<void(ADODB::Connection& connection)>& body) {
    InTransaction([&body](ADODB::Connection& connection, CacheChange& /*cache*/) { body(connection); });
}

void InTransaction(const std::function<void(ADODB::Connection& connection, CacheChange& cache)>& body) {
    ADODB::Connection connection;
    connection.Open(Global::ConnectionString);
    connection.BeginTrans();
    CacheChange cache;
    try {
        body(connection, cache);
        connection.CommitTrans();
        cache.Keep();
    } catch (...) {
        cache.PutBack();  // before another program can write
        connection.RollbackTrans();
        throw;
    }
    connection.Close();
}

std::int64_t NextKey(const std::string& table) {
    std::int64_t last = 0;
    ForEachRow("select seq from sqlite_sequence where name = " + SqlText(table),
               [&last](const ADODB::Recordset& row) { last = CLng(row.Fields("seq").Value); });
    return last + 1;
}

}  // namespace tools
