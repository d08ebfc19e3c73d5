// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/new_report_command.h"

#include <algorithm>

#include "designer/new_report/source_text.h"
#include "platform/base/caption.h"
#include "platform/base/text.h"
#include "platform/contracts/regional.h"
#include "platform/contracts/runtime.h"
#include "platform/posix/atomic_file.h"
#include "platform/reports/failure.h"
#include "platform/reports/machine_host.h"
#include "rdl/values/ascii.h"
#include "tools/hidden_arguments.h"

namespace tools {
namespace {

namespace fs = std::filesystem;

std::string ProviderOf(const fs::path& file) {
    const std::string_view provider = designer::ProviderOfFile(file);
    if (provider.empty()) {
        throw RuntimeError(
            reports::InvalidOption,
            "The provider of the data source is not known by the name of its file: the extensions are " +
                designer::KnownExtensions() + "; else --data-source needs PROVIDER:CONNECT STRING");
    }
    return std::string(provider);
}

// Whether the connect string is the bare name of a file: it has no key, and is not JSON itself.
bool IsFileName(std::string_view text) {
    return text.find('=') == std::string_view::npos && !text.starts_with('{') && !text.starts_with('[') &&
           !text.starts_with('<');
}

void TakeSource(const NewReportArguments& arguments, const fs::path& folder, designer::NewReport& report) {
    report.provider = arguments.provider;
    report.connectString = arguments.connectString;
    report.sourceName = arguments.sourceName;
    const bool isFile = arguments.provider.empty() || IsFileName(arguments.connectString);
    if (!isFile) {
        return;
    }
    const fs::path file = arguments.connectString;
    report.provider = arguments.provider.empty() ? ProviderOf(file) : arguments.provider;
    report.connectString =
        "Data Source=" + designer::ConnectValue(designer::FileNameFrom(folder, arguments.connectString));
    report.sourceName = report.sourceName.empty() ? file.stem().string() : report.sourceName;
}

// Returns the tables and views of an SQLite database in the order of their names; an empty text if they
// cannot be read.
std::string TablesOf(rdl::QueryRequest request) {
    constexpr std::size_t Enough = 300;
    request.query =
        "select name from sqlite_master where type in ('table', 'view') and name not like "
        "'sqlite^_%' escape '^' order by name";
    std::string tables;
    try {
        const rdl::QueryRows rows = rdl::ReadQueryRows(request);
        for (std::size_t row = 0; row < rows.RowCount(); ++row) {
            if (tables.size() > Enough) {
                return tables + " ...";
            }
            tables += (tables.empty() ? "" : ", ") + std::string(rows.At(row, 0).AsText());
        }
    } catch (const rdl::Failure&) {
        return {};
    }
    return tables;
}

std::vector<designer::ReportColumn> ReadColumns(const designer::NewReport& report, const fs::path& folder,
                                                const std::string& user, const std::string& password) {
    const rdl::QueryRequest request{.provider = report.provider,
                                    .connectString = report.connectString,
                                    .query = report.query,
                                    .folder = folder,
                                    .user = user,
                                    .password = password};
    if (report.query.empty() && SameText(report.provider, "SQLite")) {
        const std::string tables = TablesOf(request);
        throw RuntimeError(reports::InvalidOption,
                           "The database needs a query: --query \"select * from TABLE\"" +
                               (tables.empty() ? std::string() : "; its tables are " + tables));
    }
    return reports::Translated([&] { return designer::ColumnsOf(rdl::ReadQueryRows(request)); });
}

bool HasColumn(const designer::NewReport& report, std::string_view name) {
    return std::any_of(report.columns.begin(), report.columns.end(),
                       [name](const designer::ReportColumn& column) { return SameText(column.name, name); });
}

// Replaces each entry that is no column by the names between its commas.
void SplitNames(const designer::NewReport& report, std::vector<std::string>& names) {
    std::vector<std::string> all;
    for (const std::string& entry : names) {
        std::string_view rest = entry;
        while (!HasColumn(report, rest) && rest.find(',') != std::string_view::npos) {
            all.emplace_back(rdl::Trimmed(rest.substr(0, rest.find(','))));
            rest.remove_prefix(rest.find(',') + 1);
        }
        all.emplace_back(HasColumn(report, rest) ? rest : rdl::Trimmed(rest));
    }
    names = std::move(all);
}

}  // namespace

void MakeReport(const NewReportArguments& arguments, const fs::path& output, const std::string& user,
                const std::string& password) {
    std::error_code error;
    if (!arguments.force && fs::exists(output, error)) {
        throw RuntimeError(err::FileExists, "\"" + output.string() + "\" exists: --force replaces it");
    }
    reports::UseMachineHost();
    const fs::path folder = fs::absolute(output).parent_path();
    designer::NewReport report = arguments.report;
    TakeSource(arguments, folder, report);
    report.columns = ReadColumns(report, folder, user, password);
    for (std::vector<std::string>* const names :
         {&report.shown, &report.groups, &report.sums, &report.rows, &report.across, &report.values}) {
        SplitNames(report, *names);
    }
    report.title = report.title.empty() ? CaptionOf(output.stem().string()) : report.title;
    report.language = RegionTag();
    const std::string text = designer::NewReportText(report);
    AtomicFile file(
        output, arguments.force ? AtomicFile::IfThere::Replace : AtomicFile::IfThere::Fail,
        HoldsPassword(report.connectString) ? AtomicFile::Readers::Owner : AtomicFile::Readers::Mask);
    file.Write(text);
    file.Commit();
}

}  // namespace tools
