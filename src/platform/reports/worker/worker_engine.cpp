// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/reports/worker/worker_engine.h"

#include <utility>
#include <vector>

#include "platform/reports/export_settings.h"
#include "platform/reports/failure.h"
#include "platform/reports/worker/worker.h"

namespace reports::worker {
namespace {

// An open report of a process, and the process with it.
struct Link {
    Link(std::shared_ptr<Worker> process, int number, std::string file)
        : worker(std::move(process)), report(number), path(std::move(file)) {}
    ~Link() { Post(Close{report}); }
    Link(const Link&) = delete;
    Link& operator=(const Link&) = delete;

    template <typename Request>
    typename Request::Answer Call(const Request& request, int file = -1) const {
        return worker->Call(request, path, file);
    }

    template <typename Request>
    void Post(const Request& request) const noexcept {
        worker->Post(request, path);
    }

    const std::shared_ptr<Worker> worker;
    const int report;
    const std::string path;
};

class WorkerParameter : public report::ParameterField {
 public:
    WorkerParameter(const Link& link, int n, Field field) : m_link(link), m_n(n), m_field(std::move(field)) {}

    int ValueType() const override { return m_field.valueType; }
    bool IsWholeNumber() const override { return m_field.isWholeNumber; }
    std::string Name() const override { return m_field.name; }
    std::string Prompt() const override { return m_field.prompt; }
    std::vector<std::string> DefaultValues() const override {
        return m_link.Call(worker::DefaultValues{m_link.report, m_n}).texts;
    }
    std::vector<std::string> ValidValues() const override {
        return m_link.Call(worker::ValidValues{m_link.report, m_n}).texts;
    }
    void ClearCurrentValueAndRange() override { m_link.Post(ClearField{m_link.report, m_n}); }
    void AddCurrentValue(const report::ParameterValue& value) override {
        m_link.Call(AddValue{m_link.report, m_n, value});
    }

 private:
    const Link& m_link;
    const int m_n;
    const Field m_field;
};

class WorkerReport : public report::Report {
 public:
    WorkerReport(std::shared_ptr<Worker> worker, const std::string& path, Opened opened)
        : m_link(std::move(worker), opened.report, path), m_opened(std::move(opened)) {
        int n = 0;
        for (Field& field : m_opened.fields) {
            m_parameters.push_back(std::make_unique<WorkerParameter>(m_link, ++n, std::move(field)));
        }
    }

    int TableCount() const override { return m_opened.tables; }
    void SetTableLogon(int n, const std::string& server, const std::string& database, const std::string& user,
                       const std::string& password) override {
        m_link.Call(LogOn{m_link.report, n, server, database, user, password});
    }
    int ParameterFieldCount() const override { return static_cast<int>(m_parameters.size()); }
    report::ParameterField& Parameter(int n) override {
        if (n < 1 || n > ParameterFieldCount()) {
            throw RuntimeError(err::SubscriptOutOfRange);
        }
        return *m_parameters[static_cast<std::size_t>(n) - 1];
    }
    void SetRunSwitches(bool prompts, bool progress) override {
        m_link.Post(SetSwitches{m_link.report, prompts, progress});
    }
    std::string RecordSelectionFormula() const override { return m_opened.formula; }
    void SetRecordSelectionFormula(const std::string& text) override {
        m_link.Call(SetFormula{m_link.report, text});
        m_opened.formula = text;
    }
    std::string Title() const override { return m_opened.title; }
    std::string Description() const override { return m_opened.description; }
    void SetExportDestination(int code) override { m_settings.destination = code; }
    void SetExportFormat(int code) override { m_settings.format = code; }
    void SetDiskFileName(const std::string& path) override { m_settings.diskFile = path; }
    void SetHtmlFileName(const std::string& path) override { m_settings.htmlFile = path; }
    void SetMail(const std::string& toList, const std::string& subject, const std::string& message) override {
        m_settings.toList = toList;
        m_settings.subject = subject;
        m_settings.message = message;
    }
    void SetExcelOptions(bool keepsTypes, bool pageHeaders, bool pageBreaks, bool gridlines,
                         int baseArea) override {
        m_link.Post(
            worker::SetExcelOptions{m_link.report, keepsTypes, pageHeaders, pageBreaks, gridlines, baseArea});
    }
    void SetHtmlOptions(bool firstSwitch, bool secondSwitch) override {
        m_link.Post(worker::SetHtmlOptions{m_link.report, firstSwitch, secondSwitch});
    }
    void Export(bool /*prompt*/) override {
        ExportBySettings(
            m_settings, Title(),
            [this](const report::FormatRow& format, const std::filesystem::path& target,
                   const FileOutput& output) {
                m_link.Call(Write{m_link.report, format.Code(), target.string()}, output.Handle());
            });
    }
    std::unique_ptr<report::PageView> OpenPages() override {
        throw RuntimeError(InvalidOption, "A report of a run has no pages for the screen");
    }

 private:
    Link m_link;
    Opened m_opened;
    std::vector<std::unique_ptr<WorkerParameter>> m_parameters;
    ExportSettings m_settings;
};

class WorkerEngine : public report::Engine {
 public:
    explicit WorkerEngine(Settings settings) : m_settings(std::move(settings)) {}

    std::shared_ptr<report::Report> OpenReport(const std::string& path) override {
        if (!m_worker || m_worker->IsWornOut()) {
            m_worker.reset();
            m_worker = std::make_shared<Worker>(m_settings);
        }
        Opened opened = m_worker->Call(Open{path}, path);
        return std::make_shared<WorkerReport>(m_worker, path, std::move(opened));
    }

 private:
    const Settings m_settings;
    std::shared_ptr<Worker> m_worker;  // reports that are open keep the one that they are in
};

}  // namespace

std::shared_ptr<report::Engine> CreateWorkerEngine(Settings settings) {
    return std::make_shared<WorkerEngine>(std::move(settings));
}

std::shared_ptr<report::Engine> CreateMachineWorkerEngine() {
    return CreateWorkerEngine(SettingsOfMachine());
}

}  // namespace reports::worker
