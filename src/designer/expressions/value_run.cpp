// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/expressions/value_run.h"

#include <thread>
#include <utility>

#include "platform/base/ascii.h"
#include "platform/base/paths.h"
#include "platform/contracts/runtime.h"
#include "platform/reports/failure.h"
#include "platform/reports/machine_host.h"

namespace designer {
namespace {

constexpr int LookPauseOfRun = 30;             // milliseconds between two looks at the thread
constexpr std::chrono::seconds MostTime(120);  // that a value may take, as a query of a dialog
constexpr std::chrono::seconds MostWork(60);   // processor time

struct ValueJob {
    ValueRequest request;
    std::filesystem::path file;
    Logons logons;
    std::shared_ptr<rdl::Report> report;  // null: it is opened
    std::shared_ptr<const rdl::StopSignal> stop;
};

std::shared_ptr<rdl::Report> OpenedFor(const ValueJob& job) {
    std::shared_ptr<rdl::Report> report = rdl::OpenReportText(job.request.report, job.file);
    for (std::size_t table = 0; table < report->TableCount(); ++table) {
        for (const auto& [source, logon] : job.logons) {
            if (SameAscii(source, report->SourceName(table))) {
                report->SetLogon(table, logon.user, logon.password);
            }
        }
    }
    rdl::RunBounds bounds;
    bounds.work = MostWork;
    bounds.data = MostTime;
    report->SetBounds(bounds);
    return report;
}

ValueOutcome OutcomeOf(ValueJob& job) {
    const rdl::StopsAt stops(job.stop);
    ValueOutcome outcome;
    try {
        reports::Translated([&] {
            if (!job.report) {
                job.report = OpenedFor(job);
            }
            outcome.value = job.report->ValueOf(job.request.expression, job.request.dataSet);
        });
    } catch (const RuntimeError& error) {
        outcome.failure = error.Description();
    }
    if (!job.stop->IsGiven()) {
        outcome.report = std::move(job.report);
    }
    return outcome;
}

}  // namespace

ValueRun::ValueRun(const DesignModel& model, QObject* parent) : QObject(parent), m_model(model) {
    m_look.setInterval(LookPauseOfRun);
    connect(&m_look, &QTimer::timeout, this, &ValueRun::Look);
}

ValueRun::~ValueRun() {
    if (m_stop) {
        m_stop->Give();
    }
}

void ValueRun::Start(ValueRequest request) {
    m_next = std::move(request);
    if (m_stop) {
        m_stop->Give();  // the next one begins when its thread has ended
    } else {
        Begin();
    }
}

void ValueRun::Begin() {
    if (m_next->report != m_bytes) {
        m_report.reset();
    }
    m_bytes = m_next->report;
    m_stop = std::make_shared<rdl::StopSignal>();
    ValueJob job{*std::exchange(m_next, std::nullopt), m_model.RunName(), m_model.SourceLogons(),
                 std::move(m_report), m_stop};
    m_report.reset();
    m_isStopped = m_isTooLong = false;
    reports::UseMachineHost();
    AppPath();  // is found at its first use: before there are two threads
    std::packaged_task<ValueOutcome()> task([job = std::move(job)]() mutable { return OutcomeOf(job); });
    m_outcome = task.get_future();
    std::thread(std::move(task)).detach();
    m_begin = std::chrono::steady_clock::now();
    m_look.start();
}

void ValueRun::Stop() {
    m_next.reset();
    if (m_stop) {
        m_isStopped = true;
        m_stop->Give();
    }
}

void ValueRun::Look() {
    if (m_outcome.wait_for(std::chrono::seconds(0)) != std::future_status::ready) {
        if (!m_stop->IsGiven() && std::chrono::steady_clock::now() - m_begin > MostTime) {
            m_isTooLong = true;
            Stop();
        }
        return;
    }
    m_look.stop();
    ValueOutcome outcome = m_outcome.get();
    const bool wasEnded = m_stop->IsGiven();
    m_stop.reset();
    m_report = std::exchange(outcome.report, nullptr);
    if (m_next) {
        Begin();
    } else if (wasEnded && m_isStopped) {
        emit Stopped(m_isTooLong);
    } else {
        emit Done(outcome);
    }
}

}  // namespace designer
