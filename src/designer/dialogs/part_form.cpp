// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/dialogs/part_form.h"

#include <QComboBox>
#include <QFormLayout>
#include <QLineEdit>

#include "designer/dialogs/note.h"

namespace designer {

PartForm::PartForm(const Document& document, DataPart part, const std::vector<std::string>& names,
                   QWidget* parent)
    : QWidget(parent),
      m_document(document),
      m_part(part),
      m_choice(new QComboBox(this)),
      m_name(new QLineEdit(this)),
      m_note(new Note(*m_name, this)) {
    m_choice->setObjectName("part");
    for (const std::string& name : names) {
        m_choice->addItem(QString::fromStdString(name));
    }
    const bool isSource = part == DataPart::Source;
    m_choice->addItem(isSource ? tr("(a new data source)") : tr("(a new data set)"));
    m_name->setObjectName("name");
    m_note->setObjectName("nameNote");
    auto* form = new QFormLayout(this);
    form->setContentsMargins(0, 0, 0, 0);
    form->addRow(isSource ? tr("Data sourc&e:") : tr("Data s&et:"), m_choice);
    form->addRow(tr("&Name:"), m_name);
    form->addRow(QString(), m_note);
    connect(m_choice, &QComboBox::currentIndexChanged, this, [this] {
        ShowName();
        emit Chosen();
    });
    connect(m_name, &QLineEdit::textEdited, this, [this] {
        m_note->Clear();
        emit Changed();
    });
    ShowName();
    setFocusProxy(m_choice);
}

void PartForm::Choose(const std::string& name) {
    const int found = name.empty() ? -1 : m_choice->findText(QString::fromStdString(name));
    m_choice->setCurrentIndex(found < 0 ? m_choice->count() - 1 : found);
}

std::string PartForm::Old() const {
    const bool isNew = m_choice->currentIndex() == m_choice->count() - 1;
    return isNew ? std::string() : m_choice->currentText().toStdString();
}

std::string PartForm::Name() const {
    return m_name->text().trimmed().toStdString();
}

void PartForm::ShowName() {
    const std::string old = Old();
    m_name->setText(QString::fromStdString(old.empty() ? NewNameOf(m_document, m_part) : old));
    m_note->Clear();
}

bool PartForm::IsComplete() {
    const std::string fault = FaultOfName(m_document, m_part, Old(), Name());
    if (!fault.empty()) {
        m_note->ShowError(QString::fromStdString(fault));
    }
    return fault.empty();
}

void PartForm::LockChoice() {
    m_choice->setEnabled(false);
    m_choice->setToolTip(tr("OK or Cancel ends what is being changed"));
}

}  // namespace designer
