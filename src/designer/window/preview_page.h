// SPDX-License-Identifier: GPL-3.0-or-later
// The report as it runs now, with its data, in the viewer. A report with parameters asks for them first.
#pragma once

#include <QWidget>
#include <functional>
#include <memory>
#include <vector>

#include "designer/dialogs/logons.h"
#include "designer/model/design_model.h"
#include "platform/contracts/report_engine.h"

class QFormLayout;
class QLabel;
class QListWidget;
class QPushButton;
class QScrollArea;
class ReportViewer;

namespace designer {

class PreviewPage : public QWidget {
    Q_OBJECT
 public:
    explicit PreviewPage(QWidget* parent = nullptr);
    ~PreviewPage() override;

    // Opens the report as it is now. One without parameters runs at once, another one when the user has typed
    // them; values that were typed before are offered again. Errors appear in a list.
    void Open(const DesignModel& model, const Logons& logons);

 protected:
    void changeEvent(QEvent* event) override;

 private:
    struct Field {
        std::string name;
        QWidget* editor;
        std::function<QString()> text;
    };
    void AskForParameters();
    QWidget* MakeEditor(const report::ParameterField& parameter, Field& field);
    void Run();
    void ShowError(const QString& text);

    std::shared_ptr<report::Report> m_report;
    std::vector<Field> m_fields;
    std::vector<std::pair<std::string, QString>> m_typed;  // by the name of the parameter
    QWidget* m_parameters;
    QFormLayout* m_form = nullptr;
    QScrollArea* m_scroll;
    QPushButton* m_run;
    QListWidget* m_errors;
    ReportViewer* m_viewer;
};

}  // namespace designer
