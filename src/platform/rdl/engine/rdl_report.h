// An RDL report as the system drives it: parameters, logon, formula, then an export.
#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/rdl/data/load.h"
#include "platform/rdl/definition/model.h"
#include "platform/rdl/engine/parameter_field.h"
#include "platform/rdl/layout/instance.h"
#include "platform/rdl/run/run_watch.h"
#include "platform/report_engine.h"

namespace rdl::engine {

struct ExportFormat;

class RdlReport : public report::Report {
 public:
    // `file` is an absolute machine path; relative names in the report start at its folder.
    RdlReport(std::filesystem::path file, Definition definition);

    // The tables are the data sets that run a query.
    int TableCount() const override { return static_cast<int>(m_tables.size()); }
    // Only user and password can be set: another server or database is another data source.
    void SetTableLogon(int n, const std::string& server, const std::string& database, const std::string& user,
                       const std::string& password) override;

    int ParameterFieldCount() const override { return static_cast<int>(m_fields.size()); }
    report::ParameterField& Parameter(int n) override;

    // Nobody is ever asked and no progress shown, whatever the switches say.
    void SetRunSwitches(bool, bool) override {}
    std::string RecordSelectionFormula() const override { return m_formula; }
    void SetRecordSelectionFormula(const std::string& text) override { m_formula = text; }
    std::string Title() const override;
    std::string Description() const override { return m_definition.description; }

    void SetExportDestination(int code) override { m_destination = code; }
    void SetExportFormat(int code) override { m_format = code; }
    void SetDiskFileName(const std::string& path) override { m_diskFile = path; }
    void SetHtmlFileName(const std::string& path) override { m_htmlFile = path; }
    void SetMail(const std::string& toList, const std::string& subject, const std::string& message) override;
    // The writers have one form each: types, widths and headers are always kept.
    void SetExcelOptions(bool, bool, bool, bool, int) override {}
    void SetHtmlOptions(bool, bool) override {}
    void Export(bool prompt) override;
    std::unique_ptr<report::PageView> OpenPages() override;

    // Beyond what the system asks for.
    const Definition& TheDefinition() const { return m_definition; }
    const DataSet& TableDataSet(int n) const;  // from 1
    // Replaces provider and connect string of a data source; 5 when the report has none of the name.
    void SetDataSource(const std::string& name, const std::string& provider,
                       const std::string& connectString);
    // What a run may take; as the system runs reports unless this is told.
    void SetRunBounds(const RunBounds& bounds) { m_bounds = bounds; }
    // The report with its data, ready for pages; `renderFormat` is what Globals!RenderFormat.Name says.
    std::shared_ptr<layout::ReportInstance> Run(const std::string& renderFormat, bool hasVectors);

 private:
    void ReadDefaults();
    data::LoadRequest Request(const std::string& renderFormat) const;
    const std::string& SourceOfTable(int n) const;
    void ExportToFile(const ExportFormat& format, const std::filesystem::path& target);
    void ExportToMail(const ExportFormat& format);

    std::filesystem::path m_file;
    Definition m_definition;
    std::vector<const DataSet*> m_tables;
    std::vector<std::unique_ptr<RdlParameterField>> m_fields;  // in the definition's order
    std::map<std::string, data::Logon> m_logons;
    std::map<std::string, data::SourceOverride> m_overrides;
    std::string m_formula;
    int m_destination = report::DestinationDisk;
    int m_format = 0;
    std::string m_diskFile, m_htmlFile;
    std::string m_toList, m_subject, m_message;
    RunBounds m_bounds;
};

}  // namespace rdl::engine
