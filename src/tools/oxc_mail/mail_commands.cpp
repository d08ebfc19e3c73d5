// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/oxc_mail/mail_commands.h"

#include <vector>

#include "platform/base/ascii.h"
#include "platform/mail/base/mail_errors.h"
#include "platform/mail/check.h"
#include "platform/mail/profile/editor.h"
#include "tools/console.h"
#include "tools/oxc_mail/alert_setting.h"
#include "tools/secret_input.h"

namespace tools {
namespace {

mailer::MailProfile Profile() {
    try {
        return mailer::ReadMailProfile(mailer::MailProfilePath());
    } catch (const RuntimeError& error) {
        if (error.Number() != mailer::ErrNoProfile) {
            throw;
        }
        throw RuntimeError(error.Number(),
                           error.Description() + "; make it with: oxc-mail set Transport=... From=...");
    }
}

void Show() {
    const mailer::ProfileEditor editor;
    std::string lines = "; " + WithoutControls(mailer::MailProfilePath().string()) + "\n";
    for (const mailer::ProfileKey& key : mailer::ProfileKeys) {
        const std::string value = editor.Value(key);
        if (key.type == mailer::ValueType::Secret) {
            lines.append("; ").append(key.name).append(value.empty() ? ": not set\n" : ": set\n");
        } else if (!value.empty()) {
            lines.append(key.name).append("=").append(value).append("\n");
        }
    }
    Print(lines);
    Profile();
}

void Set(const MailArguments& arguments) {
    mailer::ProfileEditor editor;
    for (const auto& [key, value] : arguments.values) {
        editor.Set(key, value);
    }
    editor.Save();
}

void AskPassword() {
    mailer::ProfileEditor editor;
    // Checks the profile before the user types a password in vain.
    editor.Profile();
    const std::string password = ReadSecret("Password: ");
    editor.Set("Password", password);
    editor.Save();
    Print(password.empty() ? "The password is taken away.\n" : "The password is stored.\n");
}

void Check() {
    const mailer::MailProfile profile = Profile();
    std::vector<mailer::Finding> findings = mailer::CheckMail(profile);
    findings.push_back(mailer::CheckAlertAddress(profile, AlertSetting()));
    std::string failures;
    for (const mailer::Finding& finding : findings) {
        if (finding.isFine) {
            Print(finding.text + "\n");
        } else {
            failures += (failures.empty() ? "" : " ") + finding.text;
        }
    }
    if (!failures.empty()) {
        throw RuntimeError(mailer::ErrBadProfile, failures);
    }
}

void Test(const std::string& recipient) {
    const mailer::MailProfile profile = Profile();
    try {
        Print(mailer::SendTestMessage(profile, recipient) + "\n");
    } catch (const RuntimeError& error) {
        throw RuntimeError(error.Number(), mailer::Advise(error, profile));
    }
}

}  // namespace

void RunMailCommand(const MailArguments& arguments) {
    switch (arguments.command) {
        case MailCommand::Help:
            return Print(MailUsage());
        case MailCommand::Version:
            return Print("oxc-mail " OXC_VERSION "\n");
        case MailCommand::Show:
            return Show();
        case MailCommand::Set:
            return Set(arguments);
        case MailCommand::Password:
            return AskPassword();
        case MailCommand::Check:
            return Check();
        case MailCommand::Test:
            return Test(arguments.recipient);
        case MailCommand::Window:
            break;
    }
}

}  // namespace tools
