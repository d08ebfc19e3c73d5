// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/oxc_mail/mail_dialog.h"

#include <QFileDialog>
#include <QFormLayout>
#include <QIcon>
#include <QInputDialog>
#include <QLabel>
#include <QMessageBox>
#include <QScreen>
#include <algorithm>
#include <vector>

#include "platform/contracts/runtime.h"
#include "platform/mail/book/address_book.h"
#include "platform/mail/check.h"
#include "platform/mail/profile/editor.h"
#include "tools/oxc_mail/alert_setting.h"
#include "ui_mail_dialog.h"

// The picture is in a static library, so that only this call registers it. It must be outside every
// namespace.
static void RegisterPicture() {
    Q_INIT_RESOURCE(mail_window);
}

namespace {

std::string TextOf(const mailer::Finding& finding) {
    return (finding.isFine ? "OK: " : "Failed: ") + finding.text;
}

// A file that cannot be an address book must not make the window wait.
QString EntriesOf(const std::string& file) {
    try {
        mailer::AddressBook book(mailer::ProfilePath(file));
        const std::size_t count = book.ListEntries().size();
        return QString::number(count) + (count == 1 ? " entry" : " entries");
    } catch (const RuntimeError& error) {
        return QString::fromStdString(error.Description());
    }
}

}  // namespace

MailDialog::MailDialog(QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::MailDialog>()), m_job(nullptr) {
    RegisterPicture();
    m_ui->setupUi(this);
    PrepareForm(*m_ui);
    setWindowIcon(QIcon(":/images/mail-logo.svg"));
    LineUpFields();
    Connect();
    ShowBusy(false);
    Load();
    FitToScreen();
}

MailDialog::~MailDialog() = default;

// Each group has a layout of its own, which does not know the labels of the others.
void MailDialog::LineUpFields() {
    std::vector<QWidget*> labels;
    for (const QFormLayout* layout : findChildren<QFormLayout*>()) {
        for (int row = 0; row < layout->rowCount(); ++row) {
            if (const QLayoutItem* label = layout->itemAt(row, QFormLayout::LabelRole); label != nullptr) {
                labels.push_back(label->widget());
            }
        }
    }
    int widest = 0;
    for (const QWidget* label : labels) {
        widest = std::max(widest, label->sizeHint().width());
    }
    for (QWidget* label : labels) {
        label->setMinimumWidth(widest);
    }
}

// The size that all controls need, limited to the screen; the rest scrolls.
void MailDialog::FitToScreen() {
    constexpr int ResultLines = 5;
    constexpr int WidthInCharacters = 84;
    const QFontMetrics metrics(font());
    m_ui->txtResult->setFixedHeight(metrics.lineSpacing() * (ResultLines + 1));
    const int around = m_ui->txtResult->height() + 3 * m_ui->cmdSave->sizeHint().height() +
                       m_ui->prgBusy->sizeHint().height();
    const QSize wanted(metrics.averageCharWidth() * WidthInCharacters,
                       m_ui->pagProfile->sizeHint().height() + around);
    resize(wanted.expandedTo(sizeHint()).boundedTo(screen()->availableSize() * 0.9));
}

void MailDialog::Connect() {
    const Ui::MailDialog& ui = *m_ui;
    connect(ui.cboTransport, &QComboBox::currentIndexChanged, this, &MailDialog::cboTransport_Click);
    connect(ui.cboSecurity, &QComboBox::currentIndexChanged, this, &MailDialog::cboSecurity_Click);
    connect(ui.chkShow, &QCheckBox::toggled, this, &MailDialog::chkShow_Click);
    connect(ui.cmdForget, &QPushButton::clicked, this, &MailDialog::cmdForget_Click);
    connect(ui.cmdCAFile, &QToolButton::clicked, this, &MailDialog::cmdCAFile_Click);
    connect(ui.cmdSendmail, &QToolButton::clicked, this, &MailDialog::cmdSendmail_Click);
    connect(ui.cmdOutboxFolder, &QToolButton::clicked, this, &MailDialog::cmdOutboxFolder_Click);
    connect(ui.cmdVCard, &QToolButton::clicked, this, &MailDialog::cmdVCard_Click);
    connect(ui.txtVCard, &QLineEdit::editingFinished, this, &MailDialog::txtVCard_Change);
    connect(ui.cmdCheck, &QPushButton::clicked, this, &MailDialog::cmdCheck_Click);
    connect(ui.cmdTest, &QPushButton::clicked, this, &MailDialog::cmdTest_Click);
    connect(ui.cmdStop, &QPushButton::clicked, this, &MailDialog::cmdStop_Click);
    connect(ui.cmdSave, &QPushButton::clicked, this, &MailDialog::cmdSave_Click);
    connect(ui.cmdClose, &QPushButton::clicked, this, &MailDialog::reject);
    connect(&m_job, &MailJob::Ended, this, [this](const QString& text) {
        ShowBusy(false);
        ShowResult(text.toStdString());
    });
}

// Shows every value that can be read, even if others are invalid.
void MailDialog::Load() {
    try {
        const mailer::ProfileEditor editor;
        ProfileValues values;
        for (const mailer::ProfileKey& key : mailer::ProfileKeys) {
            if (key.type == mailer::ValueType::Secret) {
                m_hasPassword = !editor.Value(key).empty();
                continue;
            }
            values[key] = editor.Value(key);
            if (!CanBeShown(key, values[key])) {
                m_broken[key] = values[key];
            }
        }
        FillForm(*m_ui, values);
        if (editor.IsNew()) {
            ShowResult(
                "There is no mail profile yet. Fill this in, try it with Check and store it with Save.");
        } else {
            editor.Profile();
        }
    } catch (const RuntimeError& error) {
        ShowResult("Failed: " + error.Description() + ".");
    }
    m_loaded = FormValues(*m_ui);
    m_usualPort = UsualPort(*m_ui);
    m_usualTimeout = UsualTimeout(*m_ui);
    cboTransport_Click();
    txtVCard_Change();
    ShowPasswordState();
}

void MailDialog::PutInto(mailer::ProfileEditor& editor) const {
    for (const auto& [key, value] : FormValues(*m_ui)) {
        if (value != m_loaded.at(key) || m_broken.contains(key)) {
            editor.Set(key, value);
        }
    }
    const std::string password = m_ui->txtPassword->text().toStdString();
    if (!password.empty() || m_forgetPassword) {
        editor.Set("Password", password);
    }
}

mailer::MailProfile MailDialog::ShownProfile() const {
    mailer::ProfileEditor editor;
    PutInto(editor);
    return editor.Profile();
}

bool MailDialog::IsChanged() const {
    return FormValues(*m_ui) != m_loaded || !m_ui->txtPassword->text().isEmpty() || m_forgetPassword;
}

bool MailDialog::Save() {
    try {
        mailer::ProfileEditor editor;
        PutInto(editor);
        editor.Save();
        m_hasPassword = !editor.Value("Password").empty();
    } catch (const RuntimeError& error) {
        ShowResult("Not saved: " + error.Description() + ".");
        return false;
    }
    m_loaded = FormValues(*m_ui);
    m_broken.clear();
    m_forgetPassword = false;
    m_ui->txtPassword->clear();
    m_ui->chkShow->setChecked(false);
    ShowPasswordState();
    ShowResult("Saved. The next mail goes out this way.");
    return true;
}

void MailDialog::reject() {
    if (IsChanged()) {
        QMessageBox box(QMessageBox::Question, windowTitle(),
                        "The mail profile has changes that are not saved.",
                        QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, this);
        box.setDefaultButton(QMessageBox::Save);
        const int answer = box.exec();
        if (answer == QMessageBox::Cancel || (answer == QMessageBox::Save && !Save())) {
            return;
        }
    }
    m_job.Stop();
    QDialog::reject();
}

// A time limit that the user has set is kept.
void MailDialog::cboTransport_Click() {
    const int index = m_ui->cboTransport->currentIndex();
    if (m_ui->spnTimeout->value() == m_usualTimeout) {
        m_ui->spnTimeout->setValue(UsualTimeout(*m_ui));
    }
    m_usualTimeout = UsualTimeout(*m_ui);
    m_ui->stkTransport->setCurrentIndex(index);
    m_ui->pagTimeout->setVisible(m_ui->stkTransport->currentWidget() != m_ui->pagOutbox);
}

// A port that the user has set is kept.
void MailDialog::cboSecurity_Click() {
    if (m_ui->spnPort->value() == m_usualPort) {
        m_ui->spnPort->setValue(UsualPort(*m_ui));
    }
    m_usualPort = UsualPort(*m_ui);
    m_ui->chkVerify->setEnabled(m_ui->cboSecurity->currentText() != "None");
    m_ui->txtCAFile->setEnabled(m_ui->chkVerify->isEnabled());
    m_ui->cmdCAFile->setEnabled(m_ui->chkVerify->isEnabled());
}

void MailDialog::chkShow_Click(bool shown) {
    m_ui->txtPassword->setEchoMode(shown ? QLineEdit::Normal : QLineEdit::Password);
}

void MailDialog::cmdForget_Click() {
    m_forgetPassword = true;
    m_ui->txtPassword->clear();
    ShowPasswordState();
}

void MailDialog::ShowPasswordState() {
    const bool isStored = m_hasPassword && !m_forgetPassword;
    m_ui->txtPassword->setPlaceholderText(isStored           ? "stored"
                                          : m_forgetPassword ? "goes when saved"
                                                             : "none stored");
    m_ui->cmdForget->setEnabled(isStored);
}

void MailDialog::ChooseFile(QLineEdit* edit, const QString& title) {
    const QString file = QFileDialog::getOpenFileName(this, title, edit->text());
    if (!file.isEmpty()) {
        edit->setText(file);
    }
}

void MailDialog::cmdCAFile_Click() {
    ChooseFile(m_ui->txtCAFile, "Trusted Authorities");
}

void MailDialog::cmdSendmail_Click() {
    ChooseFile(m_ui->txtSendmail, "Mail Program");
}

void MailDialog::cmdOutboxFolder_Click() {
    const QString folder =
        QFileDialog::getExistingDirectory(this, "Outbox Folder", m_ui->txtOutboxFolder->text());
    if (!folder.isEmpty()) {
        m_ui->txtOutboxFolder->setText(folder);
    }
}

void MailDialog::cmdVCard_Click() {
    ChooseFile(m_ui->txtVCard, "Address Book");
    txtVCard_Change();
}

void MailDialog::txtVCard_Change() {
    const std::string text = m_ui->txtVCard->text().trimmed().toStdString();
    m_ui->lblEntries->setText(text.empty() ? "no address book" : EntriesOf(text));
}

void MailDialog::ShowBusy(bool busy) {
    m_ui->prgBusy->setVisible(busy);
    m_ui->cmdStop->setEnabled(busy);
    m_ui->cmdCheck->setEnabled(!busy);
    m_ui->cmdTest->setEnabled(!busy);
}

void MailDialog::ShowResult(const std::string& text) {
    m_ui->txtResult->setPlainText(QString::fromStdString(text));
}

void MailDialog::Start(const std::string& announcement, MailJob::Work work) {
    ShowResult(announcement);
    ShowBusy(true);
    m_job.Start(std::move(work));
}

void MailDialog::cmdCheck_Click() {
    try {
        // The settings are read here: the thread that works with the server must not use them.
        Start("Checking ...",
              [profile = ShownProfile(), alertWho = tools::AlertSetting()](const std::stop_token& stop) {
                  std::string text;
                  for (const mailer::Finding& finding : CheckMail(profile, stop)) {
                      text += TextOf(finding) + "\n";
                  }
                  return text + TextOf(CheckAlertAddress(profile, alertWho));
              });
    } catch (const RuntimeError& error) {
        ShowResult("Failed: " + error.Description() + ".");
    }
}

void MailDialog::cmdTest_Click() {
    try {
        const mailer::MailProfile profile = ShownProfile();
        bool isGiven = false;
        const std::string recipient =
            QInputDialog::getText(this, "Test Message", "Send a test message to:", QLineEdit::Normal,
                                  QString::fromStdString(profile.from.address), &isGiven)
                .trimmed()
                .toStdString();
        if (!isGiven || recipient.empty()) {
            return;
        }
        Start("Sending ...", [profile, recipient](const std::stop_token& stop) {
            try {
                return "OK: " + SendTestMessage(profile, recipient, stop);
            } catch (const RuntimeError& error) {
                if (error.Number() == err::MailUserCancel) {
                    throw;
                }
                return "Failed: " + Advise(error, profile);
            }
        });
    } catch (const RuntimeError& error) {
        ShowResult("Failed: " + error.Description() + ".");
    }
}

void MailDialog::cmdStop_Click() {
    m_ui->cmdStop->setEnabled(false);
    m_job.Stop();
}

void MailDialog::cmdSave_Click() {
    Save();
}
