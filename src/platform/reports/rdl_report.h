// SPDX-License-Identifier: GPL-3.0-or-later
// Adapts an RDL report to the contract report::Report.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/contracts/export_formats.h"
#include "platform/contracts/report_engine.h"
#include "platform/reports/export_settings.h"
#include "platform/reports/rdl_parameter.h"
#include "rdl/api/report.h"

namespace reports {

class RdlReport : public report::Report {
 public:
    explicit RdlReport(std::shared_ptr<rdl::Report> report);

    int TableCount() const override { return static_cast<int>(m_report->TableCount()); }
    // Only user and password can be set, because another server or database is another data source.
    void SetTableLogon(int n, const std::string& server, const std::string& database, const std::string& user,
                       const std::string& password) override;

    int ParameterFieldCount() const override { return static_cast<int>(m_parameters.size()); }
    report::ParameterField& Parameter(int n) override;

    // Has no effect: the engine never asks the user and shows no progress.
    void SetRunSwitches(bool, bool) override {}
    std::string RecordSelectionFormula() const override { return m_report->Formula(); }
    void SetRecordSelectionFormula(const std::string& text) override { m_report->SetFormula(text); }
    std::string Title() const override { return m_report->Title(); }
    std::string Description() const override { return m_report->Description(); }

    void SetExportDestination(int code) override { m_settings.destination = code; }
    void SetExportFormat(int code) override { m_settings.format = code; }
    void SetDiskFileName(const std::string& path) override { m_settings.diskFile = path; }
    void SetHtmlFileName(const std::string& path) override { m_settings.htmlFile = path; }
    void SetMail(const std::string& toList, const std::string& subject, const std::string& message) override;
    // Have no effect: each writer has one form, and types, widths and headers are always kept.
    void SetExcelOptions(bool, bool, bool, bool, int) override {}
    void SetHtmlOptions(bool, bool) override {}
    void Export(bool prompt) override;
    std::unique_ptr<report::PageView> OpenPages() override;

    // Functions beyond the contract.
    std::vector<rdl::FontUse> Fonts() const;    // the fonts that the report names
    std::vector<std::string> Problems() const;  // constants of styles that mean nothing, a line each
    std::string TableName(int n) const;         // from 1
    // Replaces provider and connect string of a data source. Raises 5 if the report has no data source of the
    // name.
    void SetDataSource(const std::string& name, const std::string& provider,
                       const std::string& connectString);
    // Sets user and password for the tables of a data source; does nothing if none is of it.
    void SetSourceLogon(const std::string& name, const std::string& user, const std::string& password);
    // Replaces the query of a data set by the rows of a CSV file, given by its system path. Raises 5 if the
    // report has no data set of the name.
    void SetRows(const std::string& dataSet, const std::string& file);
    void SetExportOptions(const rdl::ExportOptions& options) { m_report->SetExportOptions(options); }
    // Runs the report and writes the document, whatever the export's settings. The caller commits it.
    void WriteTo(const report::FormatRow& format, FileOutput& output);
    void SetRunBounds(const rdl::RunBounds& bounds) { m_report->SetBounds(bounds); }

 private:
    std::shared_ptr<rdl::Report> m_report;
    std::vector<std::unique_ptr<RdlParameter>> m_parameters;
    ExportSettings m_settings;
};

}  // namespace reports
