// SPDX-License-Identifier: GPL-3.0-or-later
// The commands on packages.
#include <algorithm>
#include <map>

#include "execution/on_demand/RunOnDemand.h"
#include "platform/base/convert.h"
#include "platform/base/marks.h"
#include "platform/base/paths.h"
#include "platform/base/text.h"
#include "platform/contracts/adodb.h"
#include "scheduler/Frequencies.h"
#include "shared/Global.h"
#include "tools/oxc_schedule/checks.h"
#include "tools/oxc_schedule/command_output.h"
#include "tools/oxc_schedule/commands.h"
#include "tools/oxc_schedule/history_moment.h"
#include "tools/oxc_schedule/next_text.h"
#include "tools/oxc_schedule/package_rows.h"
#include "tools/oxc_schedule/records.h"

namespace tools {
namespace {

struct GivenReport {
    std::string file;
    NamedValues parameters;
};

// A value belongs to the report before it.
std::vector<GivenReport> GivenReports(const CommandLine& line) {
    std::vector<GivenReport> reports;
    for (const auto& [option, value] : line.options) {
        if (option == "report") {
            reports.push_back({value, {}});
        } else if (option == "p" && reports.empty()) {
            throw ScheduleUsageError("-p stands before --report");
        } else if (option == "p") {
            reports.back().parameters.push_back(ParameterOf(value));
        }
    }
    if (reports.empty()) {
        throw ScheduleUsageError(line.command + " needs --report");
    }
    return reports;
}

void RefuseTaken(const std::string& name) {
    const auto taken = ReadPackages("BatchName = " + SqlText(name));
    if (!taken.empty()) {
        Refuse("There is a package " + Quoted(name) + " already, number " + taken.front().id);
    }
}

std::string CheckedName(const std::string& text) {
    std::string name = WithoutMark(text);
    if (name.empty()) {
        Refuse("The name of the package is empty");
    }
    RefuseControls("The name", name);
    RefuseTaken(name);
    return name;
}

// Wrong usage is reported before anything else.
void CheckPackageUsage(const CommandLine& line) {
    if (line.Has("no-mail") == line.Has("to")) {
        throw ScheduleUsageError(line.command + " needs either --to or --no-mail");
    }
    RequiredOption(line, "at");
    FrequencyOf(line, "");
}

// The wizard stores "N/A" as the recipients of a package that is not mailed.
std::string RecipientsOf(const CommandLine& line) {
    return line.Has("no-mail") ? "N/A" : CheckedRecipients(line.All("to"));
}

Global::NewPackage PackageOf(const CommandLine& line) {
    const DateRange dates = CheckedDates(line);
    const auto output = line.Value("output");
    return {.recipients = RecipientsOf(line),
            .frequency = FrequencyOf(line, Global::frequencies::Daily),
            .runTime = CheckedTime(RequiredOption(line, "at")),
            .startDate = dates.start,
            .endDate = dates.end,
            .nextRunDate = dates.start,
            .subject = WithoutMark(line.ValueOr("subject", "")),
            .message = WithoutMark(line.ValueOr("message", "")),
            .destination = CheckedOutputFolder(output ? GivenPath(*output) : Global::OutputPath),
            .name = CheckedName(line.names.front()),
            .mailBatch = line.Has("no-mail") ? "F" : "T"};
}

// Finds a report of the package by its number, its title or its file name.
const PackageReport& FindReport(const StoredPackage& package, const std::string& named) {
    for (std::size_t i = 0; i < package.reports.size(); ++i) {
        const PackageReport& report = package.reports[i];
        if (named == std::to_string(i + 1) || SameText(WithoutMark(named), report.title) ||
            SameText(named, FileNameOf(report.path))) {
            return report;
        }
    }
    Refuse("The package " + Quoted(package.row.name) + " has no report " + Quoted(named));
}

// The stored values have no names. If the report has another number of parameters than values, their
// positions say nothing any more.
std::vector<std::string> NewValues(const PackageReport& report, const NamedValues& given) {
    report::Report& opened = OpenReportFile(report.path);
    const auto parameters = static_cast<std::size_t>(opened.ParameterFieldCount());
    if (parameters != report.values.size() && given.size() < parameters) {
        Refuse("The report " + Quoted(report.title) + " has " + std::to_string(parameters) +
               " parameters, and " + std::to_string(report.values.size()) +
               " values are stored: it has changed since. Give all of its values with -p");
    }
    std::vector<std::string> values;
    for (const auto& [name, value] :
         CheckedParameters(opened, given, NamedByPosition(opened, report.values))) {
        values.push_back(value);
    }
    return values;
}

void RefuseChanged(const StoredPackage& stored) {
    const std::vector<StoredPackage> now = ReadPackages("ReportID = " + stored.id);
    if (now.size() != 1 || !IsSame(now.front(), stored)) {
        Refuse("Package " + stored.id + " was changed by another program meanwhile; give the command again");
    }
}

struct PackageRun {
    std::string id, moment, status, error;
};

std::vector<PackageRun> ReadPackageRuns(const std::string& condition, std::int64_t limit) {
    ADODB::Recordset rows;
    rows.Open("select ReportID, LastRun, ErrMsg from ReportBatchHstry" + condition + " order by rowid desc",
              Global::ConnectionString);
    NewestRows<PackageRun> runs(limit);
    for (; !rows.EOF_(); rows.MoveNext()) {
        const std::string moment = Replace(rows.Fields(1).Value.Text(), ",", " ");
        // Only the row of a delivery has no text; an empty one is that of a mail that failed.
        runs.Add(moment,
                 {rows.Fields(0).Value.Text(), moment, rows.Fields(2).Value.IsNull() ? "Success" : "Failure",
                  rows.Fields(2).Value.Text()});
    }
    rows.Close();
    return runs.Take();
}

std::string Shown(const StoredPackage& package) {
    return "Package " + package.id + ", " + Quoted(package.row.name) + ",";
}

// What a command with --json prints of the package that it has made or changed.
QJsonObject Result(const StoredPackage& stored) {
    return {{"id", Json(stored.id).toLongLong()},
            {"name", Json(stored.row.name)},
            {"next", Json(stored.row.nextRunDate)}};
}

QJsonObject DescribePackage(const StoredPackage& stored) {
    QJsonObject object = PackageFields(stored.row);
    object.insert("id", Json(stored.id).toLongLong());
    object.insert("next", Json(stored.row.nextRunDate));
    object.insert("reports", ReportFields(stored));
    return object;
}

}  // namespace

void AddPackage(const CommandLine& line) {
    const std::vector<GivenReport> given = GivenReports(line);
    CheckPackageUsage(line);
    StoredPackage package{.id = {}, .row = PackageOf(line), .reports = {}};
    const std::string format = CheckedFormat(line.ValueOr("format", "pdf"), Global::Runner::PackagePoll);
    for (const GivenReport& one : given) {
        AppendReport(package, GivenPath(one.file), format, one.parameters);
    }
    InTransaction([&package](ADODB::Connection& connection) {
        RefuseTaken(package.row.name);
        PackageKeys keys;
        package.id = std::to_string(keys.package);
        InsertPackageRows(connection, package, keys);
    });
    PrintChange(line, Shown(package) + " is added. " + FirstRunText(ItemOf(package.row)) + "\n",
                Result(package));
}

void SetPackage(const CommandLine& line) {
    const std::vector<GivenReport> given = GivenReports(line);
    if (given.size() > 1) {
        throw ScheduleUsageError("package set needs one --report");
    }
    const StoredPackage package = FindPackage(line);
    const PackageReport& report = FindReport(package, given.front().file);
    const std::vector<std::string> values = NewValues(report, given.front().parameters);
    InTransaction([&](ADODB::Connection& connection) {
        RefuseChanged(package);
        Global::ReplacePackageValues(connection, package.id, report.detailID, "DetailID = " + report.detailID,
                                     values);
    });
    QJsonObject result = Result(package);
    result.insert("report", Json(report.title));
    PrintChange(line, Shown(package) + " has the new values of its report " + Quoted(report.title) + ".\n",
                result);
}

void RemovePackage(const CommandLine& line) {
    StoredPackage package;
    InTransaction([&](ADODB::Connection& connection) {
        package = FindPackage(line);
        Global::DeletePackage(connection, package.id);
    });
    PrintChange(line, Shown(package) + " is removed.\n", Result(package));
}

// Also deletes a package that is left without reports, as the Desktop does.
void RemovePackageReport(const CommandLine& line) {
    const std::string named = RequiredOption(line, "report");
    StoredPackage package;
    std::string title;
    InTransaction([&](ADODB::Connection& connection) {
        package = FindPackage(line);
        const PackageReport& report = FindReport(package, named);
        title = report.title;
        connection.Execute("delete from reportbatchdtls where DetailID = " + report.detailID);
        connection.Execute("delete from reportbatchpar where DetailID = " + report.detailID);
        if (package.reports.size() == 1) {
            Global::DeletePackage(connection, package.id);
        }
    });
    const bool isGone = package.reports.size() == 1;
    QJsonObject result = Result(package);
    result.insert("report", Json(title));
    result.insert("removed", isGone);
    PrintChange(line,
                Shown(package) + " has no report " + Quoted(title) + " any more" +
                    (isGone ? ". It was the last one: the package is removed.\n" : ".\n"),
                result);
}

void RunStoredPackage(const CommandLine& line) {
    const StoredPackage package = FindPackage(line);
    const CommandPrompts boxes;
    if (!Global::ExecutePackage(package.id)) {
        Refuse(boxes.Complaint("Package " + package.id + " is not delivered"));
    }
    PrintChange(line, boxes.Information(), Result(package));
}

// A failure is stored under the package that was delivered before it in the same poll, or under none.
void ShowPackageHistory(const CommandLine& line) {
    const std::string condition =
        line.names.empty() && !line.Has("id") ? "" : " where ReportID = " + SqlText(FindPackage(line).id);
    std::map<std::string, std::string> names;
    for (const StoredPackage& package : ReadPackages()) {
        names[package.id] = package.row.name;
    }
    QJsonArray array;
    std::vector<std::vector<std::string>> table = {{"MOMENT", "STATUS", "ID", "NAME", "ERROR"}};
    for (const auto& [id, moment, status, error] : ReadPackageRuns(condition, HistoryLimit(line))) {
        table.push_back({moment, status, id, names[id], error});
        array.append(QJsonObject{{"id", id.empty() ? QJsonValue() : QJsonValue(Json(id).toLongLong())},
                                 {"name", Json(names[id])},
                                 {"moment", Json(moment)},
                                 {"status", Json(status)},
                                 {"error", Json(error)}});
    }
    if (line.Has("json")) {
        return Print(array);
    }
    PrintTable(table);
}

void ListPackages(const CommandLine& line) {
    const std::vector<StoredPackage> packages = ReadPackages();
    if (line.Has("json")) {
        QJsonArray array;
        for (const StoredPackage& package : packages) {
            array.append(DescribePackage(package));
        }
        return Print(array);
    }
    std::vector<std::vector<std::string>> rows = {
        {"ID", "NAME", "FREQUENCY", "AT", "NEXT", "REPORTS", "OUTPUT", "TO"}};
    for (const auto& [id, row, reports] : packages) {
        rows.push_back({id, row.name, row.frequency, row.runTime, row.nextRunDate,
                        std::to_string(reports.size()), paths::ForUser(row.destination), row.recipients});
    }
    PrintTable(rows);
}

void ShowPackage(const CommandLine& line) {
    const StoredPackage stored = FindPackage(line);
    if (line.Has("json")) {
        return Print(DescribePackage(stored));
    }
    const Global::NewPackage& row = stored.row;
    std::vector<std::vector<std::string>> rows = {
        {"Number:", stored.id},         {"Name:", row.name},
        {"Frequency:", row.frequency},  {"At:", row.runTime},
        {"Next run:", row.nextRunDate}, {"Start:", row.startDate},
        {"End:", row.endDate},          {"Output:", paths::ForUser(row.destination)},
        {"To:", row.recipients},        {"Subject:", row.subject},
        {"Message:", row.message}};
    for (const PackageReport& report : stored.reports) {
        rows.push_back({"Report:", paths::ForUser(report.path) + " as " + report.format});
        for (const std::string& value : report.values) {
            rows.push_back({"Value:", value});
        }
    }
    std::erase_if(rows, [](const auto& one) { return one[1].empty(); });
    PrintTable(rows);
}

}  // namespace tools
