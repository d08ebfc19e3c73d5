// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/engine/loaded_report.h"

#include <algorithm>

#include "rdl/api/host.h"
#include "rdl/data/common/message.h"
#include "rdl/engine/definitions.h"
#include "rdl/engine/in_stage.h"
#include "rdl/engine/parameter_values.h"
#include "rdl/engine/problems.h"
#include "rdl/engine/report_pages.h"
#include "rdl/engine/run.h"
#include "rdl/formula/quotation_marks.h"
#include "rdl/text/fonts.h"
#include "rdl/values/ascii.h"
#include "rdl/writers/formats.h"

namespace rdl {
namespace engine {
namespace {

bool HasQuery(const DataSet& dataSet) {
    return !dataSet.inlineRows && dataSet.rowsFile.empty() &&
           (dataSet.HasCommand() || !dataSet.sharedDataSet.empty());
}

}  // namespace

LoadedReport::LoadedReport(std::filesystem::path file, std::shared_ptr<const Definition> definition)
    : m_file(std::move(file)),
      m_definition(std::move(definition)),
      m_formula(formula::WithoutSingleMarks(m_definition->recordSelectionFormula)) {
    for (const DataSet& dataSet : m_definition->dataSets) {
        if (HasQuery(dataSet)) {
            m_tables.push_back(&dataSet);
        }
    }
    for (const ReportParameter& parameter : m_definition->parameters) {
        m_parameters.push_back(std::make_unique<ReportParameterState>(parameter));
    }
    ReadDefaults();
}

// Defaults may build on the parameters before them, so they are computed in order.
void LoadedReport::ReadDefaults() {
    data::LoadRequest request = Request("");
    for (const std::unique_ptr<ReportParameterState>& field : m_parameters) {
        const ValueList values = ConstantDefaults(request, field->Definition());
        field->SetDefaults(values);
        field->SetValid(ConstantValidValues(request, field->Definition()));
        field->SetPrompt(PromptOf(request, field->Definition()));
        request.parameters.push_back(InputBeforeRun(field->Definition(), values));
    }
}

data::LoadRequest LoadedReport::Request(const std::string& renderName) const {
    data::LoadRequest request;
    request.definition = m_definition.get();
    request.folder = m_file.parent_path().string();
    request.folders = TheHost().DataFolders();
    request.reportName = m_file.stem().string();
    request.userName = TheHost().UserName();
    request.renderFormat = renderName;
    request.nowTicks = TheHost().NowTicks();
    request.logons = m_logons;
    request.overrides = m_overrides;
    request.rowFiles = m_rowFiles;
    request.formula = m_formula;
    return request;
}

std::string LoadedReport::Title() const {
    return m_definition->title.value_or(m_file.stem().string());
}

std::vector<FontUse> LoadedReport::Fonts() const {
    return InStage(Stage::Open, [&] {
        std::vector<FontUse> uses;
        for (const std::string& name : m_definition->fonts) {
            uses.push_back({name, text::File(text::FindFont({name})).family});
        }
        return uses;
    });
}

std::vector<std::string> LoadedReport::Problems() const {
    return InStage(Stage::Open, [&] { return ProblemsOf(m_file); });
}

std::string LoadedReport::SourceName(std::size_t index) const {
    const DataSet& table = *m_tables.at(index);
    const std::vector<DataSource>& sources = m_definition->dataSources;
    if (table.dataSourceName.empty() && sources.size() == 1) {
        return sources.front().name;
    }
    const auto found = std::find_if(sources.begin(), sources.end(), [&](const DataSource& source) {
        return EqualNoCase(source.name, table.dataSourceName);
    });
    return found == sources.end() ? table.dataSourceName : found->name;
}

void LoadedReport::SetLogon(std::size_t table, const std::string& user, const std::string& password) {
    m_logons[SourceName(table)] = {user, password};
}

bool LoadedReport::SetDataSource(const std::string& name, const std::string& provider,
                                 const std::string& connectString) {
    for (const DataSource& source : m_definition->dataSources) {
        if (EqualNoCase(source.name, name)) {
            m_overrides[source.name] = {provider, connectString};
            return true;
        }
    }
    return false;
}

bool LoadedReport::SetRows(const std::string& dataSet, const std::filesystem::path& file) {
    const DataSet* const found = FindSet(dataSet);
    if (found) {
        m_rowFiles[found->name] = file.string();
    }
    return found;
}

// Null if the report has no data set of the name.
const DataSet* LoadedReport::FindSet(const std::string& name) const {
    const auto& all = m_definition->dataSets;
    const auto found = std::find_if(all.begin(), all.end(),
                                    [&name](const DataSet& set) { return EqualNoCase(set.name, name); });
    return found == all.end() ? nullptr : &*found;
}

// Formula and parameters are checked; the limits of the run begin.
data::LoadRequest LoadedReport::ResolvedRequest(const std::string& renderName) {
    data::LoadRequest request = Request(renderName);
    request.watch = std::make_shared<RunWatch>(m_bounds);
    const RunWatch::Work work(request.watch);
    InStage(Stage::Formula, [&] { data::CheckFormula(*m_definition, m_formula); });
    InStage(Stage::Parameter, [&] { ResolveParameters(request, m_parameters); });
    return request;
}

std::shared_ptr<layout::ReportInstance> LoadedReport::Run(const std::string& renderName,
                                                          layout::Drawings drawings) {
    const data::LoadRequest request = ResolvedRequest(renderName);
    const RunWatch::Work work(request.watch);
    std::shared_ptr<layout::ReportInstance> instance = RunReport(request, m_file, drawings);
    instance->title = Title();
    return instance;
}

ExpressionValue LoadedReport::ValueOf(const std::string& expression, const std::string& dataSet) {
    const std::vector<DataSet>& all = m_definition->dataSets;
    const DataSet* const set = dataSet.empty() && all.size() == 1 ? &all.front() : FindSet(dataSet);
    return m_values.ValueOf(
        *m_definition, expression, set ? set->name : std::string(), [this](bool needsParameters) {
            data::LoadRequest request = needsParameters ? ResolvedRequest("RPL") : Request("RPL");
            request.watch = std::make_shared<RunWatch>(m_bounds);
            return request;
        });
}

void LoadedReport::Write(DocumentFormat format, Output& output) {
    if (!m_exportOptions.dataSet.empty()) {
        WriteDataSet(format, output);
        return;
    }
    const writers::FormatWriter& writer = writers::WriterOf(format);
    const std::shared_ptr<layout::ReportInstance> instance =
        Run(std::string(RowOf(format).renderName), writer.drawings);
    const RunWatch::Work work(instance->watch);
    writers::Options options;
    options.nowTicks = TheHost().NowTicks();
    options.choices = m_exportOptions;
    InStage(Stage::Run, [&] { writer.write(*instance, output, options); });
}

void LoadedReport::WriteDataSet(DocumentFormat format, Output& output) {
    if (format != DocumentFormat::Csv) {
        throw Failure(Stage::Run, "The rows of a data set are exported as CSV only");
    }
    const DataSet* const found = FindSet(m_exportOptions.dataSet);
    if (!found) {
        throw Failure(Stage::Data,
                      "The report has no data set \"" + data::CleanText(m_exportOptions.dataSet) + "\"");
    }
    const data::LoadRequest request = ResolvedRequest(std::string(RowOf(format).renderName));
    const RunWatch::Work work(request.watch);
    const Table table = InStage(Stage::Data, [&] { return data::LoadSelectedTable(request, *found); });
    InStage(Stage::Run, [&] { writers::WriteCsv(table, output); });
}

std::unique_ptr<Pages> LoadedReport::OpenPages() {
    return std::make_unique<ReportPages>(Run("RPL", layout::Drawings::Vectors));
}

}  // namespace engine

std::shared_ptr<Report> OpenReport(const std::filesystem::path& file) {
    return engine::InStage(Stage::Open, [&] {
        return std::make_shared<engine::LoadedReport>(std::filesystem::absolute(file),
                                                      engine::OpenDefinition(file));
    });
}

std::shared_ptr<Report> OpenReportText(std::string_view bytes, const std::filesystem::path& file) {
    return engine::InStage(Stage::Open, [&] {
        return std::make_shared<engine::LoadedReport>(
            std::filesystem::absolute(file), engine::ReadDefinition(bytes, file.filename().string()));
    });
}

}  // namespace rdl
