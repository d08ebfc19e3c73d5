// SPDX-License-Identifier: GPL-3.0-or-later
// The command line of oxc-report.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "rdl/api/export_options.h"
#include "tools/new_report_arguments.h"
#include "tools/usage_error.h"

namespace tools {

enum class Command { Help, Version, Info, Export, New, Serve };

struct DataSourceArgument {
    std::string name, provider, connectString;
};

// The source of the password that belongs to --user.
enum class PasswordSource { Argument, StandardInput, Environment };

struct ReportArguments {
    Command command = Command::Help;
    std::string file;
    std::string version;                           // serve only: that the caller expects
    bool withFonts = false, withProblems = false;  // info only
    int format = 0;                                // the code of platform/contracts/export_formats.h
    std::string output;                            // export and new
    // in the given order; a name may be repeated
    std::vector<std::pair<std::string, std::string>> parameters;
    bool hasFormula = false;
    std::string formula;
    std::string user;
    PasswordSource passwordSource = PasswordSource::Environment;
    std::string password;  // only for PasswordSource::Argument
    std::vector<DataSourceArgument> dataSources;
    std::vector<std::pair<std::string, std::string>> rows;  // data sets and their CSV files
    rdl::ExportOptions options;
    NewReportArguments newReport;  // new only
};

// `arguments` does not hold the program's name. Raises UsageError.
ReportArguments ParseArguments(const std::vector<std::string>& arguments);

std::string Usage();

}  // namespace tools
