// SPDX-License-Identifier: GPL-3.0-or-later
// The properties of one parameter of the report: its name, its type, what may be given, and its values.
#pragma once

#include <QWidget>
#include <functional>

#include "designer/expressions/expression_line.h"
#include "designer/model/report_parameters.h"
#include "designer/report_dialogs/values_form.h"

class QCheckBox;
class QComboBox;
class QLineEdit;
class QTabWidget;

namespace designer {

class Note;

class ParameterForm : public QWidget {
    Q_OBJECT
 public:
    // Writes the parameter to where it is going to stand, in a copy of the report.
    using Write = std::function<void(Document&, const ReportParameter&)>;

    // The model must live as long as this.
    ParameterForm(const DesignModel& model, Write write, QWidget* parent = nullptr);

    void Show(const ReportParameter& parameter);
    ReportParameter Parameter();
    // Puts the focus into the name, which the next key replaces.
    void EditName();
    // Looks whether the parameter can be so among `others`; says why not, and puts the focus there.
    bool IsComplete(const std::vector<ReportParameter>& others);
    // Says what is wrong with a default or a valid value that is typed, and puts the focus there.
    void ShowFault(ValuesForm::Role role, std::size_t row, const QString& text);

 signals:
    void Edited();  // by the user

 private:
    QWidget* BuildGeneral(bool hasMultiple);
    QCheckBox* AddCheck(QLayout& layout, const char* name, const QString& text);
    ValuesForm* AddValues(const DesignModel& model, ValuesForm::Role role, const QString& title);
    ReportParameter With(const ParameterValues& values, ValuesForm::Role role);

    const DesignModel& m_model;
    const Write m_write;
    ReportParameter m_shown;
    bool m_isPromptTheName = false;  // it follows the name then, until the user changes it
    QTabWidget* m_tabs;
    QLineEdit* m_name = nullptr;
    Note* m_nameNote = nullptr;
    QComboBox* m_type = nullptr;
    ExpressionLine* m_prompt = nullptr;
    QCheckBox *m_multiple = nullptr, *m_nullable = nullptr, *m_blank = nullptr, *m_hidden = nullptr;
    ValuesForm *m_defaults = nullptr, *m_valid = nullptr;
    bool m_isShowing = false;
};

}  // namespace designer
