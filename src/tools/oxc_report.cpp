// SPDX-License-Identifier: GPL-3.0-or-later
// oxc-report: makes, inspects or exports a report file, without a display and without the rest of the system.
#include <unistd.h>
#include <QtCore/QCoreApplication>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <cstdlib>
#include <string>
#include <vector>

#include "platform/base/paths.h"
#include "platform/contracts/regional.h"
#include "platform/contracts/run_switches.h"
#include "platform/posix/program.h"
#include "platform/reports/rdl_engine.h"
#include "platform/reports/rdl_report.h"
#include "platform/reports/worker/server.h"
#include "platform/reports/worker/worker_process.h"
#include "rdl/values/ascii.h"
#include "tools/console.h"
#include "tools/hidden_arguments.h"
#include "tools/new_report_command.h"
#include "tools/report_arguments.h"
#include "tools/secret_input.h"

namespace {

using reports::RdlReport;
using tools::Print;
using tools::ReportArguments;

// An argument is a path of the machine, whatever characters it holds.
std::string SystemPath(const std::string& argument) {
    return paths::FromMachine(argument);
}

QString Text(const std::string& text) {
    return QString::fromStdString(text);
}

QJsonObject DescribeParameter(const report::ParameterField& field) {
    QJsonArray defaults;
    for (const std::string& value : field.DefaultValues()) {
        defaults.append(Text(value));
    }
    return {{"name", Text(field.Name())},
            {"type", field.ValueType()},
            {"prompt", Text(field.Prompt())},
            {"defaults", defaults}};
}

QJsonArray DescribeFonts(const RdlReport& report) {
    QJsonArray fonts;
    for (const rdl::FontUse& font : report.Fonts()) {
        fonts.append(QJsonObject{{"name", Text(font.name)}, {"becomes", Text(font.family)}});
    }
    return fonts;
}

QJsonArray ListProblems(const RdlReport& report) {
    QJsonArray problems;
    for (const std::string& problem : report.Problems()) {
        problems.append(Text(problem));
    }
    return problems;
}

void PrintInfo(RdlReport& report, const ReportArguments& arguments) {
    QJsonArray tables, parameters;
    for (int n = 1; n <= report.TableCount(); ++n) {
        tables.append(Text(report.TableName(n)));
    }
    for (int n = 1; n <= report.ParameterFieldCount(); ++n) {
        parameters.append(DescribeParameter(report.Parameter(n)));
    }
    QJsonObject info{{"title", Text(report.Title())},
                     {"description", Text(report.Description())},
                     {"tables", tables},
                     {"parameters", parameters},
                     {"formula", Text(report.RecordSelectionFormula())}};
    if (arguments.withFonts) {
        info.insert("fonts", DescribeFonts(report));
    }
    if (arguments.withProblems) {
        info.insert("problems", ListProblems(report));
    }
    Print(QJsonDocument(info).toJson().toStdString());
}

report::ParameterField& FindParameter(RdlReport& report, const std::string& name) {
    for (int n = 1; n <= report.ParameterFieldCount(); ++n) {
        if (rdl::EqualNoCase(report.Parameter(n).Name(), name)) {
            return report.Parameter(n);
        }
    }
    throw RuntimeError(err::SubscriptOutOfRange, "The report has no parameter \"" + name + "\"");
}

std::string PasswordOf(const ReportArguments& arguments) {
    switch (arguments.passwordSource) {
        case tools::PasswordSource::StandardInput:
            return tools::ReadSecret("Password of " + arguments.user + ": ");
        case tools::PasswordSource::Argument:
            return arguments.password;
        default:
            break;
    }
    constexpr const char* Variable = "OXC_REPORT_PASSWORD";
    if (std::getenv(Variable) == nullptr) {
        throw tools::UsageError("--user needs a password: --password-stdin or the variable " +
                                std::string(Variable));
    }
    return tools::TakeFromEnvironment(Variable);
}

void Export(RdlReport& report, const ReportArguments& arguments) {
    for (const auto& [name, value] : arguments.parameters) {
        FindParameter(report, name).AddCurrentValue(value);
    }
    if (arguments.hasFormula) {
        report.SetRecordSelectionFormula(arguments.formula);
    }
    for (const tools::DataSourceArgument& source : arguments.dataSources) {
        report.SetDataSource(source.name, source.provider, source.connectString);
    }
    for (const auto& [dataSet, file] : arguments.rows) {
        report.SetRows(dataSet, SystemPath(file));
    }
    if (!arguments.user.empty()) {
        const std::string password = PasswordOf(arguments);
        for (int n = 1; n <= report.TableCount(); ++n) {
            report.SetTableLogon(n, "", "", arguments.user, password);
        }
    }
    report.SetExportOptions(arguments.options);
    report.SetExportDestination(report::DestinationDisk);
    report.SetExportFormat(arguments.format);
    report.SetDiskFileName(SystemPath(arguments.output));
    report.SetHtmlFileName(SystemPath(arguments.output));
    report.Export(report::WithoutPrompts);
}

// The program that started this one speaks on the socket. No destructor runs at the end: reports that are
// open then do not matter.
[[noreturn]] void Serve(const std::string& version) {
    if (version != reports::worker::ServeVersion()) {
        throw tools::UsageError("\"" + version + "\" is another version");
    }
    ::_exit(reports::worker::Serve(reports::worker::ServerSocket));
}

void Run(const ReportArguments& arguments) {
    if (arguments.command == tools::Command::Help) {
        Print(tools::Usage());
        return;
    }
    if (arguments.command == tools::Command::Version) {
        Print(std::string("oxc-report ") + OXC_VERSION + "\n");
        return;
    }
    if (arguments.command == tools::Command::Serve) {
        Serve(arguments.version);
    }
    if (arguments.command == tools::Command::New) {
        tools::MakeReport(arguments.newReport, arguments.output, arguments.user,
                          arguments.user.empty() ? "" : PasswordOf(arguments));
        return;
    }
    const std::shared_ptr<RdlReport> report = reports::OpenRdlReport(SystemPath(arguments.file));
    if (arguments.command == tools::Command::Info) {
        PrintInfo(*report, arguments);
    } else {
        Export(*report, arguments);
    }
}

}  // namespace

int main(int argc, char** argv) {
    PrepareProgram();
    const std::vector<std::string> given(argv + 1, argv + argc);
    tools::HideSecrets(argc, argv);
    // Qt's own warnings would add lines.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    const QCoreApplication application(argc, argv);
    KeepNumbersPlain();
    try {
        Run(tools::ParseArguments(given));
        return 0;
    } catch (const tools::UsageError& error) {
        tools::ComplainOfUsage("oxc-report", error.what());
        return 2;
    } catch (...) {
        tools::Complain("oxc-report", CurrentError().Description());
        return 1;
    }
}
