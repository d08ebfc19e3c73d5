// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/run/timed_engine.h"

#include "platform/reports/rdl_engine.h"
#include "platform/reports/worker/worker_engine.h"

Stopwatch g_opening, g_exporting;

namespace {

class TimedReport : public report::Report {
 public:
    explicit TimedReport(std::shared_ptr<report::Report> report) : m_report(std::move(report)) {}
    int TableCount() const override { return m_report->TableCount(); }
    void SetTableLogon(int n, const std::string& server, const std::string& database, const std::string& user,
                       const std::string& password) override {
        m_report->SetTableLogon(n, server, database, user, password);
    }
    int ParameterFieldCount() const override { return m_report->ParameterFieldCount(); }
    report::ParameterField& Parameter(int n) override { return m_report->Parameter(n); }
    void SetRunSwitches(bool first, bool second) override { m_report->SetRunSwitches(first, second); }
    std::string RecordSelectionFormula() const override { return m_report->RecordSelectionFormula(); }
    void SetRecordSelectionFormula(const std::string& text) override {
        m_report->SetRecordSelectionFormula(text);
    }
    std::string Title() const override { return m_report->Title(); }
    std::string Description() const override { return m_report->Description(); }
    void SetExportDestination(int code) override { m_report->SetExportDestination(code); }
    void SetExportFormat(int code) override { m_report->SetExportFormat(code); }
    void SetDiskFileName(const std::string& path) override { m_report->SetDiskFileName(path); }
    void SetHtmlFileName(const std::string& path) override { m_report->SetHtmlFileName(path); }
    void SetMail(const std::string& to, const std::string& subject, const std::string& message) override {
        m_report->SetMail(to, subject, message);
    }
    void SetExcelOptions(bool o1, bool o2, bool o3, bool o4, int o5) override {
        m_report->SetExcelOptions(o1, o2, o3, o4, o5);
    }
    void SetHtmlOptions(bool o1, bool o2) override { m_report->SetHtmlOptions(o1, o2); }
    void Export(bool prompt) override {
        const Stopwatch::Scope scope(g_exporting);
        m_report->Export(prompt);
    }
    std::unique_ptr<report::PageView> OpenPages() override { return m_report->OpenPages(); }

 private:
    std::shared_ptr<report::Report> m_report;
};

class TimedEngine : public report::Engine {
 public:
    explicit TimedEngine(std::shared_ptr<report::Engine> engine) : m_engine(std::move(engine)) {}
    std::shared_ptr<report::Report> OpenReport(const std::string& path) override {
        const Stopwatch::Scope scope(g_opening);
        return std::make_shared<TimedReport>(m_engine->OpenReport(path));
    }

 private:
    std::shared_ptr<report::Engine> m_engine;
};

}  // namespace

std::shared_ptr<report::Engine> CreateTimedEngine() {
    return std::make_shared<TimedEngine>(reports::CreateRdlEngine());
}

std::shared_ptr<report::Engine> CreateTimedWorkerEngine() {
    reports::worker::Settings settings = reports::worker::SettingsOfMachine();
    settings.program = std::filesystem::path(OXC_STAGE) / "oxc-report";
    return std::make_shared<TimedEngine>(reports::worker::CreateWorkerEngine(settings));
}
