// SPDX-License-Identifier: GPL-3.0-or-later
// Computes values of expressions in a thread of their own, one after the other, so that the window stays
// alive.
#pragma once

#include <QObject>
#include <QTimer>
#include <chrono>
#include <future>
#include <memory>
#include <optional>
#include <string>

#include "designer/model/design_model.h"
#include "rdl/api/query_rows.h"  // StopSignal
#include "rdl/api/report.h"

namespace designer {

struct ValueRequest {
    std::string report;  // the bytes of the file
    std::string expression, dataSet;
};

struct ValueOutcome {
    rdl::ExpressionValue value;
    std::string failure;  // as the engine gives it; empty if there is none
    std::shared_ptr<rdl::Report> report = {};
};

class ValueRun : public QObject {
    Q_OBJECT
 public:
    // The model must live as long as this.
    explicit ValueRun(const DesignModel& model, QObject* parent = nullptr);
    // Stops what is running, and does not wait for it.
    ~ValueRun() override;

    // Computes the value, in place of one that is being computed; that one is stopped first. The rows that
    // were read for a request are kept for the next one of the same report.
    void Start(ValueRequest request);
    // Ends what is running; Stopped follows.
    void Stop();
    void ForgetRows() { m_report.reset(); }
    bool IsRunning() const { return m_stop != nullptr; }

 signals:
    void Done(const designer::ValueOutcome& outcome);
    void Stopped(bool isTooLong);  // by Stop, or as it took two minutes

 private:
    void Begin();
    void Look();

    const DesignModel& m_model;
    std::optional<ValueRequest> m_next;
    std::string m_bytes;                      // of the report that is kept or running
    std::shared_ptr<rdl::Report> m_report;    // null while its thread has it
    std::shared_ptr<rdl::StopSignal> m_stop;  // of the thread; null: none is running
    std::future<ValueOutcome> m_outcome;
    std::chrono::steady_clock::time_point m_begin;
    bool m_isStopped = false, m_isTooLong = false;
    QTimer m_look;
};

}  // namespace designer
