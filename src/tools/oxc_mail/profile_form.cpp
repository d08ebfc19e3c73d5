// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/oxc_mail/profile_form.h"

#include <algorithm>
#include <charconv>
#include <vector>

#include "platform/base/ascii.h"
#include "platform/contracts/runtime.h"
#include "platform/mail/base/mail_address.h"
#include "ui_mail_dialog.h"

namespace {

// In the order of the boxes in the form. The first value is the default of a missing key.
const std::vector<std::string> Transports{"smtp", "sendmail", "outbox"};
const std::vector<std::string> Securities{"starttls", "tls", "none"};
const std::vector<std::string> YesWords{"yes", "true", "1"};
const std::vector<std::string> NoWords{"no", "false", "0"};

constexpr int UsualPorts[] = {587, 465, 25};
constexpr int UsualTimeouts[] = {60, 600, 60};

bool IsOneOf(const std::vector<std::string>& words, const std::string& word) {
    return std::find(words.begin(), words.end(), ToLower(word)) != words.end();
}

int PlaceOf(const std::vector<std::string>& words, const std::string& word) {
    const auto found = std::find(words.begin(), words.end(), ToLower(word));
    return found == words.end() ? 0 : static_cast<int>(found - words.begin());
}

// Returns 0 if the text is not a number.
int NumberOf(const std::string& text) {
    int number = 0;
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), number);
    return failure == std::errc() && end == text.data() + text.size() ? number : 0;
}

void Put(QLineEdit* edit, const ProfileValues& values, const char* key) {
    edit->setText(QString::fromStdString(values.at(key)));
    edit->setCursorPosition(0);
}

std::string TextOf(const QLineEdit* edit) {
    return edit->text().trimmed().toStdString();
}

// A sender that cannot be read is shown unchanged, so that the user can correct it.
mailer::Mailbox SenderOf(const std::string& from) {
    try {
        return mailer::ParseMailbox(from);
    } catch (const RuntimeError&) {
        return {"", from};
    }
}

std::string From(const std::string& name, const std::string& address) {
    if (name.empty()) {
        return address;
    }
    std::string plain = name + " <" + address + ">";
    if (SenderOf(plain) == mailer::Mailbox{name, mailer::MachineAddress(address)}) {
        return plain;
    }
    std::string quoted;
    for (const char letter : name) {
        quoted += letter == '"' || letter == '\\' ? std::string("\\") + letter : std::string(1, letter);
    }
    return "\"" + quoted + "\" <" + address + ">";
}

}  // namespace

int UsualPort(const Ui::MailDialog& ui) {
    return UsualPorts[std::max(ui.cboSecurity->currentIndex(), 0)];
}

int UsualTimeout(const Ui::MailDialog& ui) {
    return UsualTimeouts[std::max(ui.cboTransport->currentIndex(), 0)];
}

bool CanBeShown(const std::string& key, const std::string& value) {
    if (key == "Transport") {
        return IsOneOf(Transports, value);
    }
    if (value.empty()) {
        return true;
    }
    if (key == "Security") {
        return IsOneOf(Securities, value);
    }
    if (key == "Verify") {
        return IsOneOf(YesWords, value) || IsOneOf(NoWords, value);
    }
    if (key == "Port") {
        return NumberOf(value) >= 1 && NumberOf(value) <= 65535;
    }
    if (key == "Timeout") {
        return NumberOf(value) >= 1 && NumberOf(value) <= 3600;
    }
    return true;
}

void FillForm(const Ui::MailDialog& ui, const ProfileValues& values) {
    ui.cboTransport->setCurrentIndex(PlaceOf(Transports, values.at("Transport")));
    const mailer::Mailbox sender = SenderOf(values.at("From"));
    ui.txtName->setText(QString::fromStdString(sender.name));
    ui.txtAddress->setText(QString::fromStdString(mailer::ReadableAddress(sender.address)));
    Put(ui.txtHost, values, "Host");
    ui.cboSecurity->setCurrentIndex(PlaceOf(Securities, values.at("Security")));
    const bool hasPort = !values.at("Port").empty() && CanBeShown("Port", values.at("Port"));
    ui.spnPort->setValue(hasPort ? NumberOf(values.at("Port")) : UsualPort(ui));
    ui.chkVerify->setChecked(!IsOneOf(NoWords, values.at("Verify")));
    Put(ui.txtCAFile, values, "CAFile");
    Put(ui.txtUser, values, "User");
    Put(ui.txtPasswordCommand, values, "PasswordCommand");
    Put(ui.txtHello, values, "Hello");
    const bool hasTimeout = !values.at("Timeout").empty() && CanBeShown("Timeout", values.at("Timeout"));
    ui.spnTimeout->setValue(hasTimeout ? NumberOf(values.at("Timeout")) : UsualTimeout(ui));
    Put(ui.txtOutboxFolder, values, "OutboxFolder");
    Put(ui.txtSendmail, values, "Sendmail");
    Put(ui.txtVCard, values, "VCard");
}

ProfileValues FormValues(const Ui::MailDialog& ui) {
    const int port = ui.spnPort->value();
    const int timeout = ui.spnTimeout->value();
    return {
        {"Transport", Transports[static_cast<std::size_t>(ui.cboTransport->currentIndex())]},
        {"From", From(TextOf(ui.txtName), TextOf(ui.txtAddress))},
        {"Host", TextOf(ui.txtHost)},
        {"Security", Securities[static_cast<std::size_t>(ui.cboSecurity->currentIndex())]},
        {"Port", port == UsualPort(ui) ? "" : std::to_string(port)},
        {"Verify", ui.chkVerify->isChecked() ? "" : "no"},
        {"CAFile", TextOf(ui.txtCAFile)},
        {"User", TextOf(ui.txtUser)},
        {"PasswordCommand", TextOf(ui.txtPasswordCommand)},
        {"Hello", TextOf(ui.txtHello)},
        {"Timeout", timeout == UsualTimeout(ui) ? "" : std::to_string(timeout)},
        {"OutboxFolder", TextOf(ui.txtOutboxFolder)},
        {"Sendmail", TextOf(ui.txtSendmail)},
        {"VCard", TextOf(ui.txtVCard)},
    };
}
