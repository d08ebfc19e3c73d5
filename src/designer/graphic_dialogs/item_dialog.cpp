// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/graphic_dialogs/item_dialog.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QVBoxLayout>

#include "designer/dialogs/form_row.h"
#include "designer/dialogs/note.h"
#include "designer/expressions/expression_check.h"
#include "designer/graphic_dialogs/expression_field.h"
#include "designer/graphic_dialogs/report_copy.h"

namespace designer {

ItemDialog::ItemDialog(DesignModel& model, ElementId item, const QString& title, QWidget* parent)
    : QDialog(parent),
      m_model(model),
      m_item(item),
      m_form(new QFormLayout),
      m_below(new QVBoxLayout),
      m_note(new Note(*this, this)) {
    setWindowTitle(title + " " + QString::fromStdString(model.Source().Attribute(item, "Name").value_or("")));
    m_note->setObjectName("note");
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &ItemDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &ItemDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(m_form);
    layout->addLayout(m_below, 1);
    layout->addWidget(m_note);
    layout->addWidget(buttons);
    setMinimumWidth(fontMetrics().averageCharWidth() * 70);
}

ExpressionField* ItemDialog::AddLine(const QString& label, const char* name, const std::string& value,
                                     const std::function<ElementId(const Document&, ElementId)>& owner,
                                     const char* path) {
    auto* field = new ExpressionField(QString(label).remove('&').remove(':'), this);
    field->Line().setObjectName(name);
    field->SetValue(value);
    field->SetOpener([this, owner, path] {
        return EditInCopy(
            m_model,
            [&](Document& copy) {
                const ElementId item = InCopy(m_model.Source(), m_item, copy);
                Write(copy, item);
                return owner(copy, item);
            },
            path, this);
    });
    AddFieldRow(*m_form, label, field);
    return field;
}

void ItemDialog::accept() {
    const std::string fault =
        FaultOfEdit(m_model, [this](Document& copy) { Write(copy, InCopy(m_model.Source(), m_item, copy)); });
    if (!fault.empty()) {
        m_note->ShowFault(QString::fromStdString(fault));
        return;
    }
    if (m_model.Edit(StepName(m_model, tr("Change"), {m_item}),
                     [this](Document& document) { Write(document, m_item); })) {
        QDialog::accept();
    }
}

}  // namespace designer
