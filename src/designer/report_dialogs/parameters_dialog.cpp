// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/report_dialogs/parameters_dialog.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>
#include <algorithm>

#include "designer/dialogs/note.h"
#include "designer/expressions/expression_check.h"
#include "designer/model/report_data.h"
#include "designer/report_dialogs/parameter_form.h"
#include "platform/contracts/runtime.h"
#include "platform/reports/rdl_engine.h"
#include "platform/reports/rdl_report.h"

namespace designer {
ParametersDialog::ParametersDialog(DesignModel& model, QWidget* parent)
    : QDialog(parent),
      m_model(model),
      m_old(ReportParametersOf(model.Source())),
      m_parameters(m_old),
      m_list(new QListWidget(this)),
      m_form(new ParameterForm(
          model,
          [this](Document& copy, const ReportParameter& parameter) {
              std::vector<ReportParameter> all = m_parameters;
              if (m_row >= 0) {
                  all[static_cast<std::size_t>(m_row)] = parameter;
              }
              PutReportParameters(copy, all);
          },
          this)) {
    setObjectName("parametersDialog");
    setWindowTitle(tr("Report Parameters"));
    auto* side = new QVBoxLayout;
    BuildList(*side);
    m_note = new Note(*m_list, this);
    auto* middle = new QHBoxLayout;
    middle->addLayout(side, 1);
    middle->addWidget(m_form, 2);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &ParametersDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &ParametersDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(middle, 1);
    layout->addWidget(m_note);
    layout->addWidget(buttons);
    connect(m_form, &ParameterForm::Edited, this, [this] {
        m_note->Clear();
        Take();
        ShowName(m_row);
    });
    connect(m_list, &QListWidget::currentRowChanged, this, &ParametersDialog::ShowCurrent);
    for (int row = 0; row < static_cast<int>(m_parameters.size()); ++row) {
        m_list->addItem(QString::fromStdString(m_parameters[static_cast<std::size_t>(row)].name));
    }
    m_list->setCurrentRow(0);
    ShowCurrent();
    const QSize wanted(fontMetrics().averageCharWidth() * 100, fontMetrics().height() * 26);
    resize(wanted.boundedTo(screen()->availableSize() * 9 / 10));
}

void ParametersDialog::Choose(const std::string& name) {
    if (name.empty()) {
        Add();
        return;
    }
    const auto found = std::find_if(m_parameters.begin(), m_parameters.end(),
                                    [&](const ReportParameter& one) { return one.name == name; });
    m_list->setCurrentRow(found == m_parameters.end() ? 0 : static_cast<int>(found - m_parameters.begin()));
}

void ParametersDialog::BuildList(QVBoxLayout& side) {
    auto* label = new QLabel(tr("Parameter&s:"), this);
    label->setBuddy(m_list);
    m_list->setObjectName("parameters");
    m_list->setAccessibleName(tr("Parameters"));
    m_list->setUniformItemSizes(true);
    side.addWidget(label);
    side.addWidget(m_list, 1);
    auto* grid = new QGridLayout;
    int count = 0;
    const auto add = [&](const QString& text, const char* name, auto work) {
        auto* button = new QPushButton(text, this);
        button->setObjectName(name);
        button->setAutoDefault(false);
        connect(button, &QPushButton::clicked, this, work);
        grid->addWidget(button, count / 2, count % 2);
        ++count;
        return button;
    };
    add(tr("&Add"), "add", [this] { Add(); });
    m_remove = add(tr("&Remove"), "remove", [this] { RemoveCurrent(); });
    m_up = add(tr("&Up"), "up", [this] { MoveCurrent(-1); });
    m_down = add(tr("Do&wn"), "down", [this] { MoveCurrent(1); });
    side.addLayout(grid);
}

void ParametersDialog::ShowName(int row) {
    if (row >= 0) {
        m_list->item(row)->setText(QString::fromStdString(m_parameters[static_cast<std::size_t>(row)].name));
    }
}

void ParametersDialog::Take() {
    if (m_row >= 0) {
        m_parameters[static_cast<std::size_t>(m_row)] = m_form->Parameter();
    }
}

void ParametersDialog::ShowCurrent() {
    Take();
    m_row = m_list->currentRow();
    m_form->setEnabled(m_row >= 0);
    m_form->Show(m_row < 0 ? ReportParameter() : m_parameters[static_cast<std::size_t>(m_row)]);
    m_note->Clear();
    ShowButtons();
}

void ParametersDialog::ShowButtons() {
    m_remove->setEnabled(m_row >= 0);
    m_up->setEnabled(m_row > 0);
    m_down->setEnabled(m_row >= 0 && m_row + 1 < m_list->count());
}

void ParametersDialog::Add() {
    Take();
    const std::string name = NewParameterName(m_parameters);
    m_parameters.push_back({.name = name, .prompt = name});
    m_list->addItem(QString::fromStdString(name));
    m_list->setCurrentRow(m_list->count() - 1);
    m_form->EditName();
}

// What still names the parameter would be a fault of the report.
void ParametersDialog::RemoveCurrent() {
    const ReportParameter& parameter = m_parameters[static_cast<std::size_t>(m_row)];
    if (parameter.place != NewRow) {
        const std::string& name = m_old[static_cast<std::size_t>(parameter.place)].name;
        if (const std::string use = UseOfPart(m_model.Source(), DataPart::Parameter, name); !use.empty()) {
            m_note->ShowError(tr("%1 is used and stays. %2")
                                  .arg(QString::fromStdString(name), QString::fromStdString(use)));
            return;
        }
    }
    const int row = m_row;
    m_row = -1;  // the form has nothing to give any more
    m_parameters.erase(m_parameters.begin() + row);
    delete m_list->takeItem(row);
    m_list->setCurrentRow(std::min(row, m_list->count() - 1));
    ShowCurrent();
    m_list->setFocus();
}

void ParametersDialog::MoveCurrent(int step) {
    Take();
    const int row = m_row, to = m_row + step;
    std::swap(m_parameters[static_cast<std::size_t>(row)], m_parameters[static_cast<std::size_t>(to)]);
    ShowName(row);
    ShowName(to);
    m_row = -1;
    m_list->setCurrentRow(to);
}

std::vector<ReportParameter> ParametersDialog::Others(int row) const {
    std::vector<ReportParameter> others = m_parameters;
    others.erase(others.begin() + row);
    return others;
}

bool ParametersDialog::HasChanged(const ReportParameter& parameter) const {
    return parameter.place == NewRow || parameter != m_old[static_cast<std::size_t>(parameter.place)];
}

bool ParametersDialog::FitTypes(const ReportParameter& parameter, ValuesForm::Role role,
                                report::ParameterField& field) {
    const bool isValid = role == ValuesForm::Role::Valid;
    const ValueOrigin origin = isValid ? parameter.validOrigin : parameter.defaultOrigin;
    const std::vector<ParameterChoice>& values = isValid ? parameter.valid : parameter.defaults;
    for (std::size_t row = 0; origin == ValueOrigin::Typed && row < values.size(); ++row) {
        const std::string& value = values[row].value;
        if (value.empty() || value.starts_with('=')) {
            continue;
        }
        try {
            field.AddCurrentValue(value);
        } catch (const RuntimeError& error) {
            m_form->ShowFault(role, row, QString::fromStdString(error.Description()));
            return false;
        }
    }
    return true;
}

// The engine reads constants as it does in a run: each is one value of the parameter, which has no others
// here.
bool ParametersDialog::FitTypes() {
    std::vector<ReportParameter> bare = m_parameters;
    for (ReportParameter& parameter : bare) {
        parameter.isMultiple = false;
        parameter.defaultOrigin = parameter.validOrigin = ValueOrigin::None;
    }
    std::shared_ptr<reports::RdlReport> report;
    try {
        Document copy = m_model.Source().Copy();
        PutReportParameters(copy, bare);
        report = reports::OpenRdlText(copy.Bytes(), m_model.RunName());
    } catch (const std::exception&) {  // a fault of the report elsewhere, which the dialog does not judge
        return true;
    }
    const int count = std::min(report->ParameterFieldCount(), m_list->count());
    for (int row = 0; row < count; ++row) {
        const ReportParameter& parameter = m_parameters[static_cast<std::size_t>(row)];
        if (HasChanged(parameter)) {
            m_list->setCurrentRow(row);
            report::ParameterField& field = report->Parameter(row + 1);
            if (!FitTypes(parameter, ValuesForm::Role::Defaults, field) ||
                !FitTypes(parameter, ValuesForm::Role::Valid, field)) {
                return false;
            }
        }
    }
    return true;
}

void ParametersDialog::accept() {
    Take();
    for (int row = 0; row < m_list->count(); ++row) {
        if (!HasChanged(m_parameters[static_cast<std::size_t>(row)])) {
            continue;
        }
        m_list->setCurrentRow(row);
        if (!m_form->IsComplete(Others(row))) {
            return;
        }
    }
    if (m_parameters == m_old) {
        QDialog::accept();
        return;
    }
    if (const std::string fault =
            FaultOfEdit(m_model, [&](Document& copy) { PutReportParameters(copy, m_parameters); });
        !fault.empty()) {
        m_note->ShowFault(QString::fromStdString(fault));
        m_form->setFocus();
        return;
    }
    if (!FitTypes()) {
        return;
    }
    if (m_model.Edit(tr("Change Parameters"),
                     [&](Document& document) { PutReportParameters(document, m_parameters); })) {
        QDialog::accept();
    }
}

}  // namespace designer
