// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/oxc_mail/profile_form.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <vector>

#include "platform/base/ascii.h"
#include "platform/contracts/runtime.h"
#include "platform/mail/base/mail_address.h"
#include "ui_mail_dialog.h"

namespace {

using mailer::KnownKey;
using mailer::Security;
using mailer::TransportKind;
using mailer::ValueType;

// In the order of the items of the form's boxes. The first one is the default of a missing key.
constexpr std::array TransportItems{TransportKind::Smtp, TransportKind::Sendmail, TransportKind::Outbox};
constexpr std::array SecurityItems{Security::StartTls, Security::Tls, Security::None};

struct Field {
    KnownKey key;
    QWidget* control;  // From has a second one, txtName
};

// Every key has a field. The usual port depends on the encryption and the usual time limit on the transport,
// so these two come first when the form is filled.
std::array<Field, mailer::ProfileKeys.size()> FieldsOf(const Ui::MailDialog& ui) {
    return {{{"Transport", ui.cboTransport},
             {"Security", ui.cboSecurity},
             {"From", ui.txtAddress},
             {"Host", ui.txtHost},
             {"Port", ui.spnPort},
             {"Verify", ui.chkVerify},
             {"CAFile", ui.txtCAFile},
             {"User", ui.txtUser},
             {"Password", ui.txtPassword},
             {"PasswordCommand", ui.txtPasswordCommand},
             {"Hello", ui.txtHello},
             {"Timeout", ui.spnTimeout},
             {"OutboxFolder", ui.txtOutboxFolder},
             {"Sendmail", ui.txtSendmail},
             {"VCard", ui.txtVCard}}};
}

std::vector<std::string> ItemsOf(KnownKey key) {
    std::vector<std::string> words;
    const auto add = [&](auto kind) { words.emplace_back(key->words[static_cast<std::size_t>(kind)]); };
    if (key == "Transport") {
        std::for_each(TransportItems.begin(), TransportItems.end(), add);
    } else {
        std::for_each(SecurityItems.begin(), SecurityItems.end(), add);
    }
    return words;
}

template <typename Words>
bool IsOneOf(const Words& words, const std::string& word) {
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

void Put(QLineEdit* edit, const std::string& text) {
    edit->setText(QString::fromStdString(text));
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
    for (const char c : name) {
        quoted += c == '"' || c == '\\' ? std::string("\\") + c : std::string(1, c);
    }
    return "\"" + quoted + "\" <" + address + ">";
}

int UsualNumber(const Ui::MailDialog& ui, KnownKey key) {
    return key == "Port" ? UsualPort(ui) : UsualTimeout(ui);
}

void ShowValue(const Ui::MailDialog& ui, const Field& field, const std::string& value) {
    switch (field.key->type) {
        case ValueType::Choice:
            static_cast<QComboBox*>(field.control)->setCurrentIndex(PlaceOf(ItemsOf(field.key), value));
            break;
        case ValueType::Number: {
            const bool isShown = !value.empty() && CanBeShown(field.key, value);
            static_cast<QSpinBox*>(field.control)
                ->setValue(isShown ? NumberOf(value) : UsualNumber(ui, field.key));
            break;
        }
        case ValueType::Secret:
            break;
        case ValueType::Sender: {
            const mailer::Mailbox sender = SenderOf(value);
            ui.txtName->setText(QString::fromStdString(sender.name));
            ui.txtAddress->setText(QString::fromStdString(mailer::ReadableAddress(sender.address)));
            break;
        }
        case ValueType::Switch:
            static_cast<QCheckBox*>(field.control)->setChecked(!IsOneOf(mailer::NoWords, value));
            break;
        case ValueType::Path:
        case ValueType::Text:
            Put(static_cast<QLineEdit*>(field.control), value);
            break;
    }
}

std::string ShownValue(const Ui::MailDialog& ui, const Field& field) {
    switch (field.key->type) {
        case ValueType::Choice: {
            const int index = static_cast<QComboBox*>(field.control)->currentIndex();
            return ItemsOf(field.key)[static_cast<std::size_t>(index)];
        }
        case ValueType::Number: {
            const int number = static_cast<QSpinBox*>(field.control)->value();
            return number == UsualNumber(ui, field.key) ? "" : std::to_string(number);
        }
        case ValueType::Secret:
            break;
        case ValueType::Sender:
            return From(TextOf(ui.txtName), TextOf(ui.txtAddress));
        case ValueType::Switch:
            return static_cast<QCheckBox*>(field.control)->isChecked() ? "" : "no";
        case ValueType::Path:
        case ValueType::Text:
            return TextOf(static_cast<QLineEdit*>(field.control));
    }
    return {};
}

}  // namespace

int UsualPort(const Ui::MailDialog& ui) {
    return mailer::UsualPort(
        SecurityItems[static_cast<std::size_t>(std::max(ui.cboSecurity->currentIndex(), 0))]);
}

int UsualTimeout(const Ui::MailDialog& ui) {
    const auto transport =
        TransportItems[static_cast<std::size_t>(std::max(ui.cboTransport->currentIndex(), 0))];
    return transport == TransportKind::Sendmail ? mailer::UsualSendmailSeconds : mailer::UsualStallSeconds;
}

bool CanBeShown(KnownKey key, const std::string& value) {
    if (key->type == ValueType::Choice) {
        // Transport is required: a profile without it is written with the one that is shown.
        return IsOneOf(key->words, value) || (value.empty() && key != "Transport");
    }
    if (value.empty()) {
        return true;
    }
    if (key->type == ValueType::Switch) {
        return IsOneOf(mailer::YesWords, value) || IsOneOf(mailer::NoWords, value);
    }
    return key->type != ValueType::Number || (NumberOf(value) >= key->least && NumberOf(value) <= key->most);
}

void PrepareForm(const Ui::MailDialog& ui) {
    for (const auto& [key, control] : FieldsOf(ui)) {
        control->setToolTip(QString::fromUtf8(key->help));
        if (key->type == ValueType::Number) {
            auto* const box = static_cast<QSpinBox*>(control);
            box->setRange(key->least, key->most);
            box->setValue(UsualNumber(ui, key));  // also where no profile can be read
        }
    }
}

void FillForm(const Ui::MailDialog& ui, const ProfileValues& values) {
    for (const Field& field : FieldsOf(ui)) {
        if (field.key->type != ValueType::Secret) {
            ShowValue(ui, field, values.at(field.key));
        }
    }
}

ProfileValues FormValues(const Ui::MailDialog& ui) {
    ProfileValues values;
    for (const Field& field : FieldsOf(ui)) {
        if (field.key->type != ValueType::Secret) {
            values[field.key] = ShownValue(ui, field);
        }
    }
    return values;
}
