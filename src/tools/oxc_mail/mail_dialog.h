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
    // Handlers, each of the control that it names. An error becomes a text in the window.
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
    void Connect();       // controls to their handlers
    void LineUpFields();  // gives the labels of all pages one width
    void FitToScreen();
    // Reads the profile into the controls and says in the window what is wrong with it. Values that no
    // control can show go to m_broken.
    void Load();
    // Returns false if a value is refused or the file cannot be written; the window says why.
    bool Save();
    // Returns true if a control differs from what was read or saved last.
    bool IsChanged() const;
    // Returns the profile that the window shows. Raises as ProfileEditor does.
    mailer::MailProfile ShownProfile() const;
    // Puts the keys that were changed into the editor. Raises as it does for a value that it refuses.
    void PutInto(mailer::ProfileEditor& editor) const;
    void ShowPasswordState();
    // Disables what cannot be used while a job runs; Stop is enabled then.
    void ShowBusy(bool busy);
    void ShowResult(const std::string& text);
    // Shows the announcement and runs the work beside the window; its result is shown when it ends.
    void Start(const std::string& announcement, MailJob::Work work);
    // Asks for a file and puts its path into the edit, unless the user cancels.
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
