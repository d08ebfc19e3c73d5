// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/oxc_schedule/package_rows.h"

#include "platform/base/convert.h"
#include "platform/base/paths.h"
#include "shared/Global.h"
#include "tools/oxc_schedule/checks.h"

namespace tools {

std::string FileNameOf(const std::string& path) {
    return path.substr(path.rfind('\\') + 1);
}

void AppendReport(StoredPackage& package, const std::string& path, const std::string& format,
                  const NamedValues& given, const std::vector<std::string>& values) {
    if (package.reports.size() + 1 >= Global::AttachmentList.size()) {
        Refuse("A package has at most " + std::to_string(Global::AttachmentList.size() - 1) + " reports");
    }
    RefuseMark("The path", path);
    PackageReport report{.detailID = {},
                         .title = std::to_string(package.reports.size() + 1) + ">" + FileNameOf(path),
                         .path = path,
                         .format = format,
                         .values = {}};
    report::Report& opened = OpenReportFile(path);
    for (const auto& [name, value] : CheckedParameters(opened, given, NamedByPosition(opened, values))) {
        report.values.push_back(value);
    }
    package.reports.push_back(std::move(report));
}

NamedValues NamedByPosition(report::Report& report, const std::vector<std::string>& values) {
    NamedValues named;
    for (int n = 1; n <= report.ParameterFieldCount() && named.size() < values.size(); ++n) {
        named.emplace_back(report.Parameter(n).Name(), values[named.size()]);
    }
    return named;
}

bool IsSame(const StoredPackage& one, const StoredPackage& other) {
    return PackageFields(one.row) == PackageFields(other.row) && ReportFields(one) == ReportFields(other);
}

void InsertPackageRows(ADODB::Connection& connection, const StoredPackage& package, PackageKeys& keys) {
    Global::InsertPackage(connection, package.row);
    for (const PackageReport& report : package.reports) {
        Global::InsertPackageReport(connection, CInt(keys.package), report.title, report.path, report.format);
        for (const std::string& value : report.values) {
            Global::InsertPackageValue(connection, std::to_string(keys.package), std::to_string(keys.detail),
                                       value);
        }
        ++keys.detail;
    }
    ++keys.package;
}

QJsonObject PackageFields(const Global::NewPackage& row) {
    const bool isMailed = row.mailBatch == "T";
    return {{"name", Json(row.name)},
            {"frequency", Json(row.frequency)},
            {"at", Json(row.runTime)},
            {"start", Json(row.startDate)},
            {"end", Json(row.endDate)},
            {"output", Json(paths::ForUser(row.destination))},
            {"mail", isMailed},
            {"to", Json(isMailed ? row.recipients : "")},
            {"subject", Json(row.subject)},
            {"message", Json(row.message)}};
}

QJsonArray ReportFields(const StoredPackage& package) {
    QJsonArray reports;
    for (const PackageReport& report : package.reports) {
        QJsonArray values;
        for (const std::string& value : report.values) {
            values.append(Json(value));
        }
        reports.append(QJsonObject{{"report", Json(paths::ForUser(report.path))},
                                   {"format", Json(report.format)},
                                   {"values", values}});
    }
    return reports;
}

}  // namespace tools
