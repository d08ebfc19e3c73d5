// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/frmConfig.h"

#include <QPointer>

#include "app/frmMain.h"
#include "dialogs/ModalForm.h"
#include "mail/PickRecipients.h"
#include "platform/base/convert.h"
#include "platform/base/resume_next.h"
#include "platform/contracts/registry.h"
#include "platform/controls/folders/common_dialog.h"
#include "platform/controls/kit/window_size.h"
#include "shared/Global.h"
#include "shared/ShellMod.h"
#include "ui_frmConfig.h"

frmConfig::frmConfig(QWidget* parent) : QDialog(parent), m_ui(std::make_unique<Ui::frmConfig>()) {
    m_ui->setupUi(this);
    connect(m_ui->Command1, &QPushButton::clicked, this, &frmConfig::Command1_Click);
    connect(m_ui->cmdAddress, &QPushButton::clicked, this, &frmConfig::cmdAddress_Click);
    connect(m_ui->cmdDSN, &QPushButton::clicked, this, &frmConfig::cmdDSN_Click);
    connect(m_ui->cmdSave, &QPushButton::clicked, this, &frmConfig::cmdSave_Click);
    connect(m_ui->cmdCancel, &QPushButton::clicked, this, &frmConfig::cmdCancel_Click);
    m_ui->txtcrwpath->ShowsPaths(true);
    constexpr int Characters = 85;
    resize(SizeForText(*this, Characters, 0));
    Form_Load();
}

frmConfig::~frmConfig() = default;

void frmConfig::Form_Load() {
    m_ui->txtPolling->Text(std::to_string(Global::PollSeconds));
    m_ui->txtcrwpath->Text(Global::DesignerPath);
    m_ui->txtAl->Text(Global::AlertWho);
    m_ui->txtDSN->Text(Global::ConnectionString);
}

void frmConfig::ShowPollingInterval(const std::string& seconds) {
    m_ui->txtPolling->Text(seconds);
}

void frmConfig::Command1_Click() {
    CommonDialog& cd = *frmMain::Instance().cd();
    cd.DialogTitle = "Select Application...";
    cd.CancelError = true;
    cd.Filter = "Crystal Reports (crw32.exe)|crw32.exe|";
    cd.InitDir = Global::DefPath;
    ResumeNext([&cd] { cd.ShowOpen(); });
    // After a cancel this is the file chosen before.
    if (!cd.FileName.empty()) {
        m_ui->txtcrwpath->Text(cd.FileName);
    }
}

void frmConfig::cmdAddress_Click() {
    Global::PickRecipients(*m_ui->txtAl);
}

// The data source cannot be changed: the database is in the application's folder.
void frmConfig::cmdDSN_Click() {
    m_ui->txtDSN->Text(Global::ConnectionString);
}

// The interval is stored before it is known to be a number. The current countdown is not changed.
void frmConfig::cmdSave_Click() {
    ShellMod::WriteSetting("Poll", m_ui->txtPolling->Text());
    Global::PollSeconds = CInt(m_ui->txtPolling->Text());
    ShellMod::WriteSetting("CRWPath", m_ui->txtcrwpath->Text());
    Global::DesignerPath = m_ui->txtcrwpath->Text();
    ShellMod::WriteSetting("AlertWho", m_ui->txtAl->Text());
    Global::AlertWho = m_ui->txtAl->Text();
    close();
}

void frmConfig::cmdCancel_Click() {
    close();
}

void mnuPollInt_Click() {
    static QPointer<frmConfig> form;
    // A form that was just closed may not be destroyed yet.
    if (!form || !form->isVisible()) {
        form = new frmConfig(&frmMain::Instance());
        form->setAttribute(Qt::WA_DeleteOnClose);
    }
    BringToFront(*form);
    form->ShowPollingInterval(ShellMod::ReadSetting(HKEY_LOCAL_MACHINE, ShellMod::SettingsKey, "Poll", "15"));
}
