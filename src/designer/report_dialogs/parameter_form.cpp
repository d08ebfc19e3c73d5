// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/report_dialogs/parameter_form.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QTabBar>
#include <QTabWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "designer/dialogs/form_row.h"
#include "designer/dialogs/note.h"
#include "designer/document/names.h"
#include "platform/base/ascii.h"
#include "rdl/api/identifier.h"

namespace designer {

ParameterForm::ParameterForm(const DesignModel& model, Write write, QWidget* parent)
    : QWidget(parent), m_model(model), m_write(std::move(write)), m_tabs(new QTabWidget(this)) {
    m_tabs->setObjectName("parameterTabs");
    m_tabs->setAccessibleName(tr("Parts of the parameter"));
    m_tabs->addTab(BuildGeneral(HasMultipleValues(model.Source())), tr("&General"));
    m_defaults = AddValues(model, ValuesForm::Role::Defaults, tr("De&fault"));
    m_valid = AddValues(model, ValuesForm::Role::Valid, tr("Va&lid values"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_tabs);
    connect(m_tabs, &QTabWidget::currentChanged, this, [this] {
        if (!m_tabs->tabBar()->hasFocus()) {
            m_tabs->currentWidget()->setFocus();
        }
    });
}

QCheckBox* ParameterForm::AddCheck(QLayout& layout, const char* name, const QString& text) {
    auto* box = new QCheckBox(text, this);
    box->setObjectName(name);
    layout.addWidget(box);
    connect(box, &QCheckBox::clicked, this, &ParameterForm::Edited);
    return box;
}

QWidget* ParameterForm::BuildGeneral(bool hasMultiple) {
    auto* page = new QWidget(m_tabs);
    m_name = new QLineEdit(page);
    m_name->setObjectName("name");
    m_name->setToolTip(
        tr("Expressions follow a new name as Parameters!Name; a name in a text stays as it is"));
    m_nameNote = new Note(*m_name, page);
    m_type = new QComboBox(page);
    m_type->setObjectName("type");
    for (const std::string_view type : ParameterTypes()) {
        m_type->addItem(QString::fromUtf8(type));
    }
    m_prompt = new ExpressionLine(
        m_model, "prompt", tr("Prompt"),
        [this](Document& copy, const std::string& value) {
            ReportParameter parameter = Parameter();
            parameter.prompt = value;
            m_write(copy, parameter);
        },
        page);
    auto* checks = new QVBoxLayout;
    m_multiple = AddCheck(*checks, "multiple", tr("Se&veral values"));
    m_nullable = AddCheck(*checks, "nullable", tr("&Null is a value"));
    m_blank = AddCheck(*checks, "blank", tr("An empty te&xt is a value"));
    m_hidden = AddCheck(*checks, "hidden", tr("&Hidden (for other programs)"));
    for (QCheckBox* box : {m_multiple, m_hidden}) {
        box->setEnabled(hasMultiple);
        box->setToolTip(!hasMultiple ? tr("Reports of 2003 do not have this")
                        : box == m_hidden
                            ? tr("Kept in the file; previews and schedules ask for it all the same")
                            : QString());
    }
    auto* form = new QFormLayout(page);
    form->addRow(tr("Na&me:"), m_name);
    form->addRow(QString(), m_nameNote);
    form->addRow(tr("&Type:"), m_type);
    AddFieldRow(*form, tr("&Prompt:"), m_prompt);
    form->addRow(QString(), checks);
    connect(m_name, &QLineEdit::textEdited, this, [this](const QString& name) {
        m_nameNote->Clear();
        if (m_isPromptTheName) {
            m_prompt->SetText(name.trimmed().toStdString());
        }
        emit Edited();
    });
    connect(m_type, &QComboBox::activated, this, &ParameterForm::Edited);
    connect(m_prompt, &ExpressionLine::Edited, this, [this] {
        m_isPromptTheName = false;
        emit Edited();
    });
    page->setFocusProxy(m_name);
    setFocusProxy(m_name);
    return page;
}

ValuesForm* ParameterForm::AddValues(const DesignModel& model, ValuesForm::Role role, const QString& title) {
    auto* form = new ValuesForm(
        model, role,
        [this, role](Document& copy, const ParameterValues& values) { m_write(copy, With(values, role)); },
        m_tabs);
    m_tabs->addTab(form, title);
    connect(form, &ValuesForm::Edited, this, [this] {
        if (!m_isShowing) {
            emit Edited();
        }
    });
    return form;
}

void ParameterForm::EditName() {
    m_tabs->setCurrentIndex(0);
    m_name->setFocus();
    m_name->selectAll();
}

void ParameterForm::Show(const ReportParameter& parameter) {
    m_isShowing = true;
    m_shown = parameter;
    m_name->setText(QString::fromStdString(parameter.name));
    m_nameNote->Clear();
    const QString type = QString::fromStdString(parameter.type);
    while (m_type->count() > static_cast<int>(ParameterTypes().size())) {
        m_type->removeItem(m_type->count() - 1);
    }
    if (m_type->findText(type) < 0) {
        m_type->addItem(type);  // a word that the engine does not know
    }
    m_type->setCurrentText(type);
    m_prompt->SetText(parameter.prompt);
    m_isPromptTheName = !parameter.name.empty() && parameter.prompt == parameter.name;
    m_multiple->setChecked(parameter.isMultiple);
    m_nullable->setChecked(parameter.isNullable);
    m_blank->setChecked(parameter.isBlankAllowed);
    m_hidden->setChecked(parameter.isHidden);
    m_defaults->Show({parameter.defaultOrigin, parameter.defaults, parameter.defaultSet});
    m_valid->Show({parameter.validOrigin, parameter.valid, parameter.validSet});
    m_isShowing = false;
}

ReportParameter ParameterForm::With(const ParameterValues& values, ValuesForm::Role role) {
    const bool isValid = role == ValuesForm::Role::Valid;
    ReportParameter parameter = m_shown;
    (isValid ? parameter.validOrigin : parameter.defaultOrigin) = values.origin;
    (isValid ? parameter.valid : parameter.defaults) = values.typed;
    (isValid ? parameter.validSet : parameter.defaultSet) = values.set;
    return parameter;
}

ReportParameter ParameterForm::Parameter() {
    m_shown.name = m_name->text().trimmed().toStdString();
    m_shown.type = m_type->currentText().toStdString();
    m_shown.prompt = m_prompt->Text();
    m_shown.isMultiple = m_multiple->isChecked();
    m_shown.isNullable = m_nullable->isChecked();
    m_shown.isBlankAllowed = m_blank->isChecked();
    m_shown.isHidden = m_hidden->isChecked();
    m_shown = With(m_defaults->Values(), ValuesForm::Role::Defaults);
    m_shown = With(m_valid->Values(), ValuesForm::Role::Valid);
    return m_shown;
}

void ParameterForm::ShowFault(ValuesForm::Role role, std::size_t row, const QString& text) {
    ValuesForm& values = role == ValuesForm::Role::Valid ? *m_valid : *m_defaults;
    m_tabs->setCurrentWidget(&values);
    values.ShowFault(row, text);
}

bool ParameterForm::IsComplete(const std::vector<ReportParameter>& others) {
    const ReportParameter parameter = Parameter();
    const QString name = QString::fromStdString(parameter.name);
    const bool isTaken = std::any_of(others.begin(), others.end(), [&](const ReportParameter& other) {
        return SameAscii(other.name, parameter.name);
    });
    if (isTaken || !rdl::IsIdentifier(parameter.name)) {
        m_tabs->setCurrentIndex(0);
        m_nameNote->ShowError(name.isEmpty() ? tr("Type a name for the parameter")
                              : isTaken      ? tr("Another parameter has the name %1").arg(name)
                                             : QString::fromStdString(NotAName(parameter.name)));
        return false;
    }
    for (ValuesForm* values : {m_defaults, m_valid}) {
        // The page first: only what is visible gets the focus.
        const int before = m_tabs->currentIndex();
        m_tabs->setCurrentWidget(values);
        if (!values->IsComplete(parameter.isMultiple)) {
            return false;
        }
        m_tabs->setCurrentIndex(before);
    }
    return true;
}

}  // namespace designer
