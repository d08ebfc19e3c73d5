// SPDX-License-Identifier: GPL-3.0-or-later
// The rows of a package with its reports and their values, for the commands and for import and export.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/contracts/report_engine.h"
#include "tools/oxc_schedule/command_output.h"
#include "tools/oxc_schedule/records.h"

namespace tools {

// The keys that the next rows get. They stay true as long as a transaction of the caller keeps other programs
// from writing.
struct PackageKeys {
    std::int64_t package = NextKey("ReportBatch");
    std::int64_t detail = NextKey("ReportBatchDtls");
};

// Returns the text after the last backslash of a path of the system.
std::string FileNameOf(const std::string& path);

// Opens and checks the report and appends it to the package with its checked values (CheckedParameters).
// Refuses the 21st report: a package has at most 20 files.
void AppendReport(StoredPackage& package, const std::string& path, const std::string& format,
                  const NamedValues& given, const std::vector<std::string>& values = {});

// Returns stored values, which have no names, with the names of the report's parameters at their positions.
NamedValues NamedByPosition(report::Report& report, const std::vector<std::string>& values);

// Inserts the package under the keys and moves them on.
void InsertPackageRows(ADODB::Connection& connection, const StoredPackage& package, PackageKeys& keys);

// Returns true if everything that a user sets is equal.
bool IsSame(const StoredPackage& one, const StoredPackage& other);

// Return the fields of a package and its reports as JSON. Paths are written as users write them.
QJsonObject PackageFields(const Global::NewPackage& row);
QJsonArray ReportFields(const StoredPackage& package);

}  // namespace tools
