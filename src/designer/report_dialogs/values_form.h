// SPDX-License-Identifier: GPL-3.0-or-later
// Where the default values or the valid values of a parameter come from: nowhere, typed ones, or a data set.
#pragma once

#include <QWidget>
#include <functional>
#include <string>
#include <vector>

#include "designer/expressions/row_table.h"
#include "designer/model/report_parameters.h"

class QComboBox;
class QFormLayout;

namespace designer {

class Note;

struct ParameterValues {
    ValueOrigin origin = ValueOrigin::None;
    std::vector<ParameterChoice> typed = {};
    SetValues set = {};
    bool operator==(const ParameterValues&) const = default;
};

class ValuesForm : public QWidget {
    Q_OBJECT
 public:
    enum class Role { Defaults, Valid };
    // Writes the values to where they are going to stand, in a copy of the report.
    using Write = std::function<void(Document&, const ParameterValues&)>;

    // The model must live as long as this.
    ValuesForm(const DesignModel& model, Role role, Write write, QWidget* parent = nullptr);

    void Show(const ParameterValues& values);
    ParameterValues Values();
    // Looks whether the values are complete, of which there may be several or not; says what is missing, and
    // puts the focus there.
    bool IsComplete(bool isMultiple);
    // Says what is wrong with a value that is typed, and puts the focus there.
    void ShowFault(std::size_t row, const QString& text);

 signals:
    void Edited();  // by the user

 private:
    void BuildSet(QFormLayout& form);
    void ShowOrigin();
    void ShowFields();
    bool Complain(QWidget& control, const QString& text);
    std::vector<ParameterChoice> ChoicesOf(const std::vector<RowTable::Row>& rows) const;

    const DesignModel& m_model;
    const Role m_role;
    const Write m_write;
    QComboBox* m_origin;
    RowTable* m_typed;
    QWidget* m_setPart;
    QComboBox *m_set, *m_value, *m_label = nullptr;
    Note* m_note;
    bool m_isShowing = false;
};

}  // namespace designer
