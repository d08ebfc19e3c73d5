// SPDX-License-Identifier: GPL-3.0-or-later
// The report as it runs now, with its data, in the viewer. It runs in a thread of its own: pages appear as
// they are made, and the run can be stopped. The parameters are above the pages.
#pragma once

#include <QTimer>
#include <QWidget>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "designer/model/asked_parameters.h"
#include "designer/model/design_model.h"
#include "platform/contracts/report_engine.h"
#include "platform/reports/background_run.h"

class QLabel;
class QListWidget;
class QProgressBar;
class QPushButton;
class ReportViewer;

namespace designer {

class ParameterBar;

class PreviewPage : public QWidget {
    Q_OBJECT
 public:
    explicit PreviewPage(QWidget* parent = nullptr);
    ~PreviewPage() override;

    // Opens the report as it is now, and runs it. One with a parameter that has neither a value nor a default
    // waits for the user. Errors appear in a list.
    void Open(const DesignModel& model);
    // Does so unless the report is as it was and still runs.
    void OpenIfChanged(const DesignModel& model);
    // Ends the run and shows nothing.
    void Clear();
    bool IsRunning() const { return m_timer.isActive(); }

 signals:
    void ErrorChosen(const QString& text);  // the user wants to see what it is about

 private:
    void BuildParts();
    void FillChoices(const DesignModel& model, std::vector<AskedParameter>& parameters);
    void Run();
    void Stop();
    void LookAtRun();
    void ShowProgress();
    void ShowError(const QString& text);

    // Two of the same report: one makes the pages in the thread of the run, the other one saves them.
    std::shared_ptr<report::Report> m_running, m_saved;
    std::function<std::shared_ptr<report::Report>()> m_open;  // the report as it was opened last
    std::string m_bytes;                                      // of that report
    std::unique_ptr<reports::BackgroundRun> m_run;
    bool m_shows = false;  // pages of the run
    QTimer m_timer;        // while a run is going on
    ParameterBar* m_parameters;
    QWidget* m_progress;
    QProgressBar* m_bar;
    QLabel* m_state;
    QPushButton* m_stop;
    QListWidget* m_errors;
    ReportViewer* m_viewer;
};

}  // namespace designer
