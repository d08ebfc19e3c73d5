// SPDX-License-Identifier: GPL-3.0-or-later
// The dialog for the parameters of the report: a list of them, which is changed and ordered, and the
// properties of one. OK is one step of the document.
#pragma once

#include <QDialog>
#include <string>
#include <vector>

#include "designer/model/design_model.h"
#include "designer/model/report_parameters.h"
#include "designer/report_dialogs/values_form.h"

namespace report {
class ParameterField;
}

class QListWidget;
class QPushButton;
class QVBoxLayout;

namespace designer {

class Note;
class ParameterForm;

class ParametersDialog : public QDialog {
    Q_OBJECT
 public:
    // The model must live as long as the dialog.
    explicit ParametersDialog(DesignModel& model, QWidget* parent = nullptr);
    // Shows the parameter of this name; a new one if the name is empty. Without it the first one is shown.
    void Choose(const std::string& name);
    void accept() override;

 private:
    void BuildList(QVBoxLayout& side);
    void Add();
    void RemoveCurrent();
    void MoveCurrent(int step);
    void ShowCurrent();
    void Take();  // what the form shows
    void ShowButtons();
    void ShowName(int row);
    std::vector<ReportParameter> Others(int row) const;
    bool HasChanged(const ReportParameter& parameter) const;
    bool FitTypes();
    bool FitTypes(const ReportParameter& parameter, ValuesForm::Role role, report::ParameterField& field);

    DesignModel& m_model;
    const std::vector<ReportParameter> m_old;
    std::vector<ReportParameter> m_parameters;
    QListWidget* m_list;
    QPushButton *m_remove, *m_up, *m_down;
    ParameterForm* m_form;
    Note* m_note = nullptr;
    int m_row = -1;  // that the form shows
};

}  // namespace designer
