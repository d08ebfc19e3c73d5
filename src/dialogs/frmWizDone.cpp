// SPDX-License-Identifier: GPL-3.0-or-later
#include "dialogs/frmWizDone.h"

#include <QPointer>

#include "platform/base/paths.h"
#include "platform/contracts/prompts.h"
#include "platform/controls/kit/window_size.h"
#include "shared/Global.h"
#include "store/TextConventions.h"
#include "ui_frmWizDone.h"

namespace {

QPointer<frmWizDone> g_form;

}  // namespace

void frmWizDone::ShowForm() {
    if (g_form) {
        g_form->show();
        return;
    }
    g_form = new frmWizDone(dynamic_cast<QWidget*>(Global::Frame));
    g_form->Form_Load();
}

// The form may be closed while its load still waits; it is destroyed later.
void frmWizDone::Unload() {
    if (g_form) {
        g_form->hide();
        g_form->deleteLater();
        g_form.clear();
    }
}

frmWizDone::frmWizDone(QWidget* parent) : QDialog(parent), m_ui(std::make_unique<Ui::frmWizDone>()) {
    m_ui->setupUi(this);
}

frmWizDone::~frmWizDone() = default;

void frmWizDone::Form_Load() {
    try {
        constexpr int Characters = 60, Lines = 8;
        resize(SizeForText(*this, Characters, Lines));
        show();
        cmFunc::PauseSeconds(1);
        m_ui->Anime->Open(AppPath() + "\\back.avi");
    } catch (...) {
        MsgBox("Batch Created Successfully.", vbInformation);
        hide();
    }
}
