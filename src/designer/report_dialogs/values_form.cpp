// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/report_dialogs/values_form.h"

#include <QComboBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QTableWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "designer/dialogs/note.h"
#include "designer/tables/fields.h"
#include "platform/base/ascii.h"
#include "platform/base/text.h"

namespace designer {
namespace {

// A name that the list does not have is shown all the same.
void ShowName(QComboBox& list, const std::string& name) {
    list.setEditText(QString::fromStdString(name));
}

std::string NameIn(const QComboBox& list) {
    return list.currentText().trimmed().toStdString();
}

}  // namespace

ValuesForm::ValuesForm(const DesignModel& model, Role role, Write write, QWidget* parent)
    : QWidget(parent),
      m_model(model),
      m_role(role),
      m_write(std::move(write)),
      m_origin(new QComboBox(this)),
      m_setPart(new QWidget(this)) {
    const bool isValid = role == Role::Valid;
    m_origin->setObjectName(isValid ? "validOrigin" : "defaultOrigin");
    m_origin->addItems(
        {isValid ? tr("Any value") : tr("No default"), tr("These values"), tr("From a data set")});
    std::vector<RowColumn> columns{{.title = tr("Value"), .takesExpressions = true}};
    if (isValid) {
        columns.push_back({.title = tr("Label"), .takesExpressions = true});
    }
    m_typed = new RowTable(
        model, isValid ? "valid" : "defaults", isValid ? tr("Valid values") : tr("Default values"),
        std::move(columns),
        [this](Document& copy, const std::vector<RowTable::Row>& rows) {
            m_write(copy, {.origin = ValueOrigin::Typed, .typed = ChoicesOf(rows)});
        },
        this);
    auto* top = new QFormLayout;
    top->addRow(isValid ? tr("&Valid values:") : tr("&Default:"), m_origin);
    auto* form = new QFormLayout(m_setPart);
    form->setContentsMargins(0, 0, 0, 0);
    BuildSet(*form);
    m_note = new Note(*m_origin, this);
    setFocusProxy(m_origin);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addWidget(m_typed, 1);
    layout->addWidget(m_setPart, 0, Qt::AlignTop);
    layout->addWidget(m_note);
    layout->addStretch();
    connect(m_origin, &QComboBox::currentIndexChanged, this, &ValuesForm::ShowOrigin);
    connect(m_typed, &RowTable::Edited, this, &ValuesForm::Edited);
    connect(this, &ValuesForm::Edited, m_note, &Note::Clear);
    ShowOrigin();
}

void ValuesForm::BuildSet(QFormLayout& form) {
    const bool isValid = m_role == Role::Valid;
    const auto add = [&](const QString& label, const char* name) {
        auto* list = new QComboBox(m_setPart);
        list->setObjectName(QString(isValid ? "valid" : "default") + name);
        list->setEditable(true);
        list->setInsertPolicy(QComboBox::NoInsert);
        list->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        list->setMinimumContentsLength(20);
        form.addRow(label, list);
        connect(list, &QComboBox::editTextChanged, this, [this] {
            if (!m_isShowing) {
                emit Edited();
            }
        });
        return list;
    };
    m_set = add(tr("Da&ta set:"), "Set");
    m_value = add(tr("Valu&es:"), "Value");
    if (isValid) {
        m_label = add(tr("La&bels:"), "Label");
    }
    for (const ReportSet& set : SetsOf(m_model.Source())) {
        m_set->addItem(QString::fromStdString(set.name));
    }
    m_set->setCurrentIndex(-1);
    connect(m_set, &QComboBox::editTextChanged, this, &ValuesForm::ShowFields);
}

void ValuesForm::ShowOrigin() {
    m_typed->setVisible(m_origin->currentIndex() == 1);
    m_setPart->setVisible(m_origin->currentIndex() == 2);
    if (!m_isShowing) {
        emit Edited();
    }
}

void ValuesForm::ShowFields() {
    QStringList fields;
    for (const ReportSet& set : SetsOf(m_model.Source())) {
        for (const ReportField& field :
             SameAscii(set.name, NameIn(*m_set)) ? set.fields : std::vector<ReportField>()) {
            fields.append(QString::fromStdString(field.name));
        }
    }
    for (QComboBox* list : {m_value, m_label}) {
        if (list) {
            const QSignalBlocker quiet(list);
            const QString text = list->currentText();
            list->clear();
            list->addItems(fields);
            list->setCurrentIndex(-1);
            list->setEditText(text);
        }
    }
}

void ValuesForm::Show(const ParameterValues& values) {
    m_isShowing = true;
    m_origin->setCurrentIndex(static_cast<int>(values.origin));
    std::vector<RowTable::Row> rows;
    for (const ParameterChoice& choice : values.typed) {
        rows.push_back({choice.place, {choice.value, choice.label}});
    }
    m_typed->SetRows(std::move(rows));
    ShowName(*m_set, values.set.set);
    ShowName(*m_value, values.set.value);
    if (m_label) {
        ShowName(*m_label, values.set.label);
    }
    m_note->Clear();
    m_isShowing = false;
}

std::vector<ParameterChoice> ValuesForm::ChoicesOf(const std::vector<RowTable::Row>& rows) const {
    std::vector<ParameterChoice> choices;
    choices.reserve(rows.size());
    for (const RowTable::Row& row : rows) {
        choices.push_back({row.place, row.cells[0], row.cells.size() > 1 ? row.cells[1] : std::string()});
    }
    return choices;
}

ParameterValues ValuesForm::Values() {
    return {.origin = static_cast<ValueOrigin>(m_origin->currentIndex()),
            .typed = ChoicesOf(m_typed->Rows()),
            .set = {NameIn(*m_set), NameIn(*m_value), m_label ? NameIn(*m_label) : std::string()}};
}

bool ValuesForm::Complain(QWidget& control, const QString& text) {
    m_note->ShowFault(text);
    control.setFocus();
    return false;
}

void ValuesForm::ShowFault(std::size_t row, const QString& text) {
    Complain(m_typed->Table(), text);
    m_typed->ShowCell(row, 0);
}

bool ValuesForm::IsComplete(bool isMultiple) {
    const ParameterValues values = Values();
    if (values.origin == ValueOrigin::Typed) {
        if (values.typed.empty()) {
            return Complain(m_typed->Table(), tr("Add a value, or pick \"%1\"").arg(m_origin->itemText(0)));
        }
        if (m_role == Role::Defaults && values.typed.size() > 1 && !isMultiple) {
            return Complain(m_typed->Table(),
                            tr("Only a parameter with several values has more than one default"));
        }
    }
    if (values.origin == ValueOrigin::Query) {
        const auto sets = SetsOf(m_model.Source());
        const auto set = std::find_if(sets.begin(), sets.end(), [&](const ReportSet& one) {
            return SameAscii(one.name, values.set.set);
        });
        if (set == sets.end()) {
            return Complain(*m_set, values.set.set.empty()
                                        ? tr("Pick the data set that has the values")
                                        : tr("The report has no data set %1").arg(m_set->currentText()));
        }
        for (QComboBox* list : {m_value, m_label}) {
            const std::string name = list ? NameIn(*list) : std::string();
            if (list && name.empty() && list == m_value) {
                return Complain(*list, tr("Pick the field that has the values"));
            }
            const bool isField =
                std::any_of(set->fields.begin(), set->fields.end(),
                            [&](const ReportField& field) { return SameText(field.name, name); });
            if (!name.empty() && !isField) {
                return Complain(
                    *list,
                    tr("The data set %1 has no field %2").arg(m_set->currentText(), list->currentText()));
            }
        }
    }
    return true;
}

}  // namespace designer
