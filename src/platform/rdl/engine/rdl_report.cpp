#include "platform/rdl/engine/rdl_report.h"

#include <algorithm>

#include "platform/clock.h"
#include "platform/file_name.h"
#include "platform/paths.h"
#include "platform/rdl/definition/context.h"
#include "platform/rdl/engine/export_format.h"
#include "platform/rdl/engine/export_mail.h"
#include "platform/rdl/engine/failure.h"
#include "platform/rdl/engine/file_output.h"
#include "platform/rdl/engine/page_view.h"
#include "platform/rdl/engine/parameter_values.h"
#include "platform/rdl/engine/private_folder.h"
#include "platform/rdl/engine/run.h"
#include "platform/rdl/formula/marks.h"

namespace rdl::engine {
namespace {

bool HasQuery(const DataSet& dataSet) {
    return !dataSet.hasInlineRows && dataSet.rowsFile.empty() &&
           (dataSet.commandText.IsSet() || !dataSet.sharedDataSet.empty());
}

// A report that is run from a copy finds its data where the application keeps its own.
std::vector<std::string> OtherFolders() {
    try {
        const std::filesystem::path application = paths::ToMachine(AppPath());
        return {application.string(), (application / "samples").string()};
    } catch (const RuntimeError&) {
        return {};  // a report alone, without an application around it
    }
}

std::size_t Slot(int n, std::size_t count) {
    if (n < 1 || static_cast<std::size_t>(n) > count) {
        throw RuntimeError(err::SubscriptOutOfRange);
    }
    return static_cast<std::size_t>(n) - 1;
}

}  // namespace

RdlReport::RdlReport(std::filesystem::path file, Definition definition)
    : m_file(std::move(file)),
      m_definition(std::move(definition)),
      m_formula(formula::WithoutSingleMarks(m_definition.recordSelectionFormula)) {
    for (const DataSet& dataSet : m_definition.dataSets) {
        if (HasQuery(dataSet)) {
            m_tables.push_back(&dataSet);
        }
    }
    for (const ReportParameter& parameter : m_definition.parameters) {
        m_fields.push_back(std::make_unique<RdlParameterField>(parameter));
    }
    ReadDefaults();
}

// Defaults may build on the parameters before them, so they are worked out in order.
void RdlReport::ReadDefaults() {
    data::LoadRequest request = Request("");
    for (const std::unique_ptr<RdlParameterField>& field : m_fields) {
        const ValueList values = ConstantDefaults(request, field->Definition());
        field->SetDefaults(values);
        field->SetValid(ConstantValidValues(request, field->Definition()));
        field->SetPrompt(PromptOf(request, field->Definition()));
        request.parameters.push_back(InputBeforeRun(field->Definition(), values));
    }
}

data::LoadRequest RdlReport::Request(const std::string& renderFormat) const {
    data::LoadRequest request;
    request.definition = &m_definition;
    request.folder = m_file.parent_path().string();
    request.folders = OtherFolders();
    request.reportName = m_file.stem().string();
    request.userName = UserName();
    request.renderFormat = renderFormat;
    request.nowTicks = TicksOf(Now());
    request.logons = m_logons;
    request.overrides = m_overrides;
    request.formula = m_formula;
    return request;
}

const DataSet& RdlReport::TableDataSet(int n) const {
    return *m_tables[Slot(n, m_tables.size())];
}

const std::string& RdlReport::SourceOfTable(int n) const {
    const DataSet& table = TableDataSet(n);
    const std::vector<DataSource>& sources = m_definition.dataSources;
    if (table.dataSourceName.empty() && sources.size() == 1) {
        return sources.front().name;
    }
    const auto found = std::find_if(sources.begin(), sources.end(), [&](const DataSource& source) {
        return SameWord(source.name, table.dataSourceName);
    });
    return found == sources.end() ? table.dataSourceName : found->name;
}

void RdlReport::SetTableLogon(int n, const std::string& server, const std::string& database,
                              const std::string& user, const std::string& password) {
    const std::string& source = SourceOfTable(n);
    if (!server.empty() || !database.empty()) {
        throw RuntimeError(InvalidOption,
                           "Data source \"" + source +
                               "\": a logon can set user and password only, not server and database");
    }
    m_logons[source] = {user, password};
}

report::ParameterField& RdlReport::Parameter(int n) {
    return *m_fields[Slot(n, m_fields.size())];
}

std::string RdlReport::Title() const {
    return m_definition.title.value_or(m_file.stem().string());
}

void RdlReport::SetMail(const std::string& toList, const std::string& subject, const std::string& message) {
    m_toList = toList;
    m_subject = subject;
    m_message = message;
}

void RdlReport::SetDataSource(const std::string& name, const std::string& provider,
                              const std::string& connectString) {
    for (const DataSource& source : m_definition.dataSources) {
        if (SameWord(source.name, name)) {
            m_overrides[source.name] = {provider, connectString};
            return;
        }
    }
    throw RuntimeError(InvalidOption, "The report has no data source \"" + name + "\"");
}

std::shared_ptr<layout::ReportInstance> RdlReport::Run(const std::string& renderFormat, bool hasVectors) {
    data::LoadRequest request = Request(renderFormat);
    request.watch = std::make_shared<RunWatch>(m_bounds);
    const RunWatch::Work work(request.watch);
    Stage(InvalidFormula, [&] { data::CheckFormula(m_definition, m_formula); });
    Stage(InvalidParameter, [&] { ResolveParameters(request, m_fields); });
    std::shared_ptr<layout::ReportInstance> instance = RunReport(request, m_file, !hasVectors);
    instance->title = Title();
    return instance;
}

void RdlReport::Export(bool) {
    const ExportFormat& format = FindFormat(m_format);
    if (m_destination == report::DestinationMail) {
        ExportToMail(format);
        return;
    }
    if (m_destination != report::DestinationDisk) {
        throw RuntimeError(InvalidOption, "There is no export destination " + std::to_string(m_destination));
    }
    const std::string& name = m_format == report::FormatHtml ? m_htmlFile : m_diskFile;
    if (name.empty()) {
        throw RuntimeError(InvalidOption, "The export has no file name");
    }
    ExportToFile(format, paths::ToMachine(name));
}

std::unique_ptr<report::PageView> RdlReport::OpenPages() {
    return std::make_unique<RdlPageView>(Run("RPL", true));
}

void RdlReport::ExportToFile(const ExportFormat& format, const std::filesystem::path& target) {
    // Opened before the report runs: a folder that is missing is told at once.
    FileOutput output(target);
    const std::shared_ptr<layout::ReportInstance> instance = Run(format.renderName, format.hasVectors);
    const RunWatch::Work work(instance->watch);
    writers::Options options;
    options.nowTicks = TicksOf(Now());
    Stage(RunFailed, [&] { format.write(*instance, output, options); });
    output.Commit();
}

void RdlReport::ExportToMail(const ExportFormat& format) {
    const PrivateFolder folder;
    const std::filesystem::path file = folder.Path() / (SafeFileName(Title()) + format.extension);
    ExportToFile(format, file);
    MailFile(m_toList, m_subject, m_message, file);
}

}  // namespace rdl::engine
