// SPDX-License-Identifier: GPL-3.0-or-later
// The dialog for the parameters of the report: a list of them, which is changed and ordered, and the
// properties of one. OK is one step of the document.
#pragma once

#include <QDialog>
#include <string>
#include <vector>

#include "designer/model/design_model.h"
#include "designer/model/report_parameters.h"

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
    // Shows the parameter of this name first, or a new one if `isNew`. The model must live as long as the
    // dialog.
    ParametersDialog(DesignModel& model, const std::string& name, bool isNew, QWidget* parent = nullptr);
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
    bool FitTypes(const ReportParameter& parameter, bool isValid, report::ParameterField& field);

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
