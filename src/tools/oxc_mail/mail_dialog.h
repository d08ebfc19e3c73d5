// SPDX-License-Identifier: GPL-3.0-or-later
// The window that edits the mail profile, like the account settings of a mail program.
#pragma once

#include <QDialog>
#include <memory>
#include <string>

#include "platform/mail/profile/editor.h"
#include "tools/oxc_mail/mail_job.h"
#include "tools/oxc_mail/profile_form.h"

namespace Ui {
class MailDialog;
}
class QLineEdit;

// Works on the user's profile. A save changes only the keys that were changed in the window; the rest of the
// file stays as it is on the disk at that time. Check and Send Test use the values in the window, saved or
// not. The stored password is never put into a control.
class MailDialog : public QDialog {
    Q_OBJECT
 public:
    explicit MailDialog(QWidget* parent = nullptr);
    ~MailDialog() override;

    // Runs for Close, Escape and the frame's close button. Asks about changes that are not saved.
    void reject() override;

 private slots:
    void cboTransport_Click();
    void cboSecurity_Click();
    void chkShow_Click(bool shown);
    void cmdForget_Click();
    void cmdCAFile_Click();
    void cmdSendmail_Click();
    void cmdOutboxFolder_Click();
    void cmdVCard_Click();
    void txtVCard_Change();
    void cmdCheck_Click();
    void cmdTest_Click();
    void cmdStop_Click();
    void cmdSave_Click();

 private:
    void Connect();
    void LineUpFields();
    void FitToScreen();
    void Load();
    bool Save();
    bool IsChanged() const;
    // Returns the profile that the window shows. Raises as ProfileEditor does.
    mailer::MailProfile ShownProfile() const;
    void PutInto(mailer::ProfileEditor& editor) const;
    void ShowPasswordState();
    void ShowBusy(bool busy);
    void ShowResult(const std::string& text);
    void Start(const std::string& announcement, MailJob::Work work);
    void ChooseFile(QLineEdit* edit, const QString& title);

    std::unique_ptr<Ui::MailDialog> m_ui;
    ProfileValues m_loaded;  // the form's values when they were last read or saved
    ProfileValues m_broken;  // values of the file that the form cannot show
    bool m_hasPassword = false;
    bool m_forgetPassword = false;
    int m_usualPort = 0;     // of the encryption chosen last
    int m_usualTimeout = 0;  // in seconds, of the transport that is shown
    MailJob m_job;
};
