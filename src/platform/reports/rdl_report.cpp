// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/reports/rdl_report.h"

#include "platform/base/paths.h"
#include "platform/reports/failure.h"
#include "platform/reports/rdl_pages.h"

namespace reports {
namespace {

// Returns the index of the n-th one, from 1 on.
std::size_t Slot(int n, std::size_t count) {
    if (n < 1 || static_cast<std::size_t>(n) > count) {
        throw RuntimeError(err::SubscriptOutOfRange);
    }
    return static_cast<std::size_t>(n) - 1;
}

}  // namespace

RdlReport::RdlReport(std::shared_ptr<rdl::Report> report) : m_report(std::move(report)) {
    for (std::size_t i = 0; i < m_report->ParameterCount(); ++i) {
        m_parameters.push_back(std::make_unique<RdlParameter>(m_report->ParameterAt(i)));
    }
}

void RdlReport::SetTableLogon(int n, const std::string& server, const std::string& database,
                              const std::string& user, const std::string& password) {
    const std::size_t table = Slot(n, m_report->TableCount());
    if (!server.empty() || !database.empty()) {
        throw RuntimeError(InvalidOption,
                           "Data source \"" + m_report->SourceName(table) +
                               "\": a logon can set user and password only, not server and database");
    }
    m_report->SetLogon(table, user, password);
}

report::ParameterField& RdlReport::Parameter(int n) {
    return *m_parameters[Slot(n, m_parameters.size())];
}

std::string RdlReport::TableName(int n) const {
    return m_report->TableName(Slot(n, m_report->TableCount()));
}

void RdlReport::SetMail(const std::string& toList, const std::string& subject, const std::string& message) {
    m_settings.toList = toList;
    m_settings.subject = subject;
    m_settings.message = message;
}

void RdlReport::SetDataSource(const std::string& name, const std::string& provider,
                              const std::string& connectString) {
    if (!m_report->SetDataSource(name, provider, connectString)) {
        throw RuntimeError(InvalidOption, "The report has no data source \"" + name + "\"");
    }
}

std::vector<rdl::FontUse> RdlReport::Fonts() const {
    return Translated([&] { return m_report->Fonts(); });
}

std::vector<std::string> RdlReport::Problems() const {
    return Translated([&] { return m_report->Problems(); });
}

void RdlReport::SetSourceLogon(const std::string& name, const std::string& user,
                               const std::string& password) {
    for (std::size_t table = 0; table < m_report->TableCount(); ++table) {
        if (m_report->SourceName(table) == name) {
            m_report->SetLogon(table, user, password);
        }
    }
}

void RdlReport::SetRows(const std::string& dataSet, const std::string& file) {
    if (!m_report->SetRows(dataSet, paths::ToMachine(file))) {
        throw RuntimeError(InvalidOption, "The report has no data set \"" + dataSet + "\"");
    }
}

void RdlReport::Export(bool) {
    ExportBySettings(m_settings, Title(),
                     [this](const report::FormatRow& format, const std::filesystem::path&,
                            FileOutput& output) { WriteTo(format, output); });
}

void RdlReport::WriteTo(const report::FormatRow& format, FileOutput& output) {
    Translated([&] { m_report->Write(format.format, output); });
}

std::unique_ptr<report::PageView> RdlReport::OpenPages() {
    return Translated([&] { return std::make_unique<RdlPages>(m_report->OpenPages()); });
}

}  // namespace reports
