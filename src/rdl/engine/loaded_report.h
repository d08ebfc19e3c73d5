// SPDX-License-Identifier: GPL-3.0-or-later
// An open report file: its definition with values, logons and formula.
#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "rdl/api/report.h"
#include "rdl/data/load.h"
#include "rdl/definition/model.h"
#include "rdl/engine/expression_values.h"
#include "rdl/engine/report_parameter.h"
#include "rdl/layout/model/instance.h"
#include "rdl/layout/model/report_input.h"

namespace rdl::engine {

class LoadedReport : public Report {
 public:
    // `file` is absolute; relative names in the report start in its folder.
    LoadedReport(std::filesystem::path file, std::shared_ptr<const Definition> definition);

    std::string Title() const override;
    std::string Description() const override { return m_definition->description; }
    std::size_t ParameterCount() const override { return m_parameters.size(); }
    Parameter& ParameterAt(std::size_t index) override { return *m_parameters.at(index); }
    std::size_t TableCount() const override { return m_tables.size(); }
    std::string TableName(std::size_t table) const override { return m_tables.at(table)->name; }
    std::string SourceName(std::size_t table) const override;
    void SetLogon(std::size_t table, const std::string& user, const std::string& password) override;
    std::vector<FontUse> Fonts() const override;
    std::vector<std::string> Problems() const override;
    bool SetRows(const std::string& dataSet, const std::filesystem::path& file) override;
    bool SetDataSource(const std::string& name, const std::string& provider,
                       const std::string& connectString) override;
    std::string Formula() const override { return m_formula; }
    void SetFormula(const std::string& text) override { m_formula = text; }
    void SetBounds(const RunBounds& bounds) override { m_bounds = bounds; }
    void SetExportOptions(const ExportOptions& options) override { m_exportOptions = options; }
    ExpressionValue ValueOf(const std::string& expression, const std::string& dataSet) override;
    void Write(DocumentFormat format, Output& output) override;
    std::unique_ptr<Pages> OpenPages() override;

    // Loads the data and returns the report ready for pages. `renderName` is the value of
    // Globals!RenderFormat.Name. Without vectors charts, gauges and maps become images. Raises Failure.
    std::shared_ptr<layout::ReportInstance> Run(const std::string& renderName, layout::Drawings drawings);

 private:
    void ReadDefaults();
    const DataSet* FindSet(const std::string& name) const;
    data::LoadRequest Request(const std::string& renderName) const;
    data::LoadRequest ResolvedRequest(const std::string& renderName);
    void WriteDataSet(DocumentFormat format, Output& output);

    std::filesystem::path m_file;
    std::shared_ptr<const Definition> m_definition;
    std::vector<const DataSet*> m_tables;
    std::vector<std::unique_ptr<ReportParameterState>> m_parameters;  // in the definition's order
    std::map<std::string, data::Logon> m_logons;
    std::map<std::string, data::SourceOverride> m_overrides;
    std::map<std::string, std::string> m_rowFiles;
    std::string m_formula;
    RunBounds m_bounds;
    ExportOptions m_exportOptions;
    ExpressionValues m_values;
};

}  // namespace rdl::engine
