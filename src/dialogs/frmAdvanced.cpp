// SPDX-License-Identifier: GPL-3.0-or-later
#include "dialogs/frmAdvanced.h"

#include <QFontDatabase>
#include <QFontInfo>

#include "dialogs/ModalForm.h"
#include "platform/contracts/runtime.h"
#include "platform/controls/kit/window_size.h"
#include "ui_frmAdvanced.h"

void frmAdvanced::ShowModal(EditableText& txtSelForm) {
    frmAdvanced form(txtSelForm, OwnerWindow());
    form.exec();
}

frmAdvanced::frmAdvanced(EditableText& txtSelForm, QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::frmAdvanced>()), m_txtSelForm(txtSelForm) {
    m_ui->setupUi(this);
    // In a font of fixed width brackets and quotes are easy to distinguish.
    QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    fixed.setPixelSize(QFontInfo(font()).pixelSize());  // the same size as the other text
    m_ui->txtForm->setFont(fixed);
    connect(m_ui->txtForm, &MultiLineTextBox::LostFocus, this, &frmAdvanced::txtForm_LostFocus);
    connect(m_ui->cmdOk, &QPushButton::clicked, this, &frmAdvanced::cmdOk_Click);
    connect(m_ui->cmdCancel, &QPushButton::clicked, this, &frmAdvanced::cmdCancel_Click);
    constexpr int Characters = 90, Lines = 20;
    resize(SizeForText(*this, Characters, Lines));
    m_ui->txtForm->Text(m_txtSelForm.Text());
}

frmAdvanced::~frmAdvanced() = default;

// Statements put the formula between ' marks. A text without them is not set again, so that typing can still
// be undone.
void frmAdvanced::txtForm_LostFocus() {
    const std::string text = m_ui->txtForm->Text();
    if (const std::string clean = WithoutMarks(text); clean != text) {
        m_ui->txtForm->Text(clean);
    }
}

void frmAdvanced::cmdOk_Click() {
    m_txtSelForm.Text(m_ui->txtForm->Text());
    accept();
}

void frmAdvanced::cmdCancel_Click() {
    reject();
}
