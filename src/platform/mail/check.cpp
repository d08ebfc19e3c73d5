// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/mail/check.h"

#include "platform/mail/base/mail_errors.h"
#include "platform/mail/mail_context.h"
#include "platform/mail/transport/outbox.h"
#include "platform/mail/transport/sendmail.h"
#include "platform/mail/transport/smtp_check.h"

namespace mailer {
namespace {

struct Advice {
    std::vector<KnownKey> keys;  // to look at
    const char* what;            // to do; empty: the error says it all
};

Advice AdviceOnServer(std::int32_t number, const MailProfile& profile) {
    switch (number) {
        case err::MailboxOrServer:
            return {{"Host", "Port"},
                    "See whether name and port are right and the network is there; try again later."};
        case ErrLoginRefused:
            return profile.user.empty()
                       ? Advice{{"User"}, "The server needs a login: give User and a password."}
                       : Advice{{"User", "Password"}, "Give the user name and the password again."};
        case ErrNotSecure:
            return {{"Security", "CAFile"},
                    "Ask who runs the server which encryption it offers (starttls or tls, and the port), and "
                    "name the file of its authority in CAFile if it has one of its own."};
        case ErrMessageRefused:
            return {{"From"}, "Give an address that this login may send from."};
        default:
            return {{}, ""};
    }
}

Advice AdviceOnProgram(std::int32_t number) {
    switch (number) {
        case ErrBadProfile:
            return {{"Sendmail"}, "Install a mail program, or give the path of the one there is."};
        case err::MailboxOrServer:
        case ErrMessageRefused:
            return {{"Sendmail"}, "Ask who looks after the mail of this machine."};
        default:
            return {{}, ""};
    }
}

// An error about a recipient needs no further advice.
Advice AdviceOn(std::int32_t number, const MailProfile& profile) {
    if (number == err::FileNotFound) {
        return {{"VCard"}, "Name a vCard file that you may read, or none."};
    }
    switch (profile.transport) {
        case TransportKind::Outbox:
            return number == err::PathFileAccess || number == err::MailboxFull
                       ? Advice{{"OutboxFolder"}, "Choose a folder that you may write to and that has room."}
                       : Advice{{}, ""};
        case TransportKind::Sendmail:
            return AdviceOnProgram(number);
        case TransportKind::Smtp:
            break;
    }
    return AdviceOnServer(number, profile);
}

std::string Sentence(const std::string& text) {
    return text + (text.ends_with('.') ? "" : ".");
}

std::string Server(const MailProfile& profile) {
    return "The mail server \"" + profile.host + "\", port " + std::to_string(profile.port) + ",";
}

std::string CheckAddressBook(const MailProfile& profile) {
    AddressBook book(profile.addressBook);
    const std::size_t count = book.ListEntries().size();
    return "The address book \"" + profile.addressBook.string() + "\" has " + std::to_string(count) +
           (count == 1 ? " entry." : " entries.");
}

std::string CheckTransport(const MailProfile& profile, const std::stop_token& stop) {
    switch (profile.transport) {
        case TransportKind::Outbox:
            OutboxTransport(profile.outboxFolder).CheckWritable();
            return "The outbox \"" + profile.outboxFolder.string() + "\" can be written.";
        case TransportKind::Sendmail:
            SendmailTransport(profile.sendmail, profile.sendmailSeconds).CheckProgram();
            return "The mail program \"" + profile.sendmail + "\" is there.";
        case TransportKind::Smtp:
            break;
    }
    CheckSmtp(profile, stop);
    return Server(profile) + " takes mail from " + profile.from.address + ": " +
           (profile.security == Security::None ? "without encryption" : "encrypted") +
           (profile.security == Security::None || profile.verify ? "" : " but not verified") +
           (profile.user.empty() ? ", without a login." : ", logged on as \"" + Shown(profile.user) + "\".");
}

template <typename Step>
void Take(Step step, const MailProfile& profile, std::vector<Finding>& findings) {
    try {
        findings.push_back({true, step()});
    } catch (const RuntimeError& error) {
        if (error.Number() == err::MailUserCancel) {
            throw;
        }
        findings.push_back({false, Advise(error, profile)});
    }
}

}  // namespace

std::string Advise(const RuntimeError& error, const MailProfile& profile) {
    const Advice advice = AdviceOn(error.Number(), profile);
    std::string keys;
    for (const KnownKey key : advice.keys) {
        keys.append(keys.empty() ? "" : ", ").append(key->name);
    }
    return keys + (keys.empty() ? "" : ": ") + Sentence(error.Description()) +
           (*advice.what == '\0' ? "" : " ") + advice.what;
}

std::vector<Finding> CheckMail(const MailProfile& profile, const std::stop_token& stop) {
    std::vector<Finding> findings;
    if (profile.isExposed) {
        findings.push_back({false, KnownKey("Password").Name() + ": " + ExposureText(profile) + "."});
    }
    if (!profile.addressBook.empty()) {
        Take([&] { return CheckAddressBook(profile); }, profile, findings);
    }
    Take([&] { return CheckTransport(profile, stop); }, profile, findings);
    return findings;
}

Finding CheckAlertAddress(const MailProfile& profile, const std::string& alertWho) {
    if (alertWho.empty()) {
        return {true, "No alert address is set in Options: nobody gets a mail when a report fails."};
    }
    try {
        return {true, "Alerts go to " + AddressBook(profile.addressBook).Resolve(alertWho).address + "."};
    } catch (const RuntimeError& error) {
        return {false, "On error alert, in Options: Alerts cannot go out. " + Sentence(error.Description()) +
                           " Give one address, or one name of the address book."};
    }
}

std::string SendTestMessage(const MailProfile& profile, const std::string& recipient,
                            const std::stop_token& stop) {
    MailContext context(profile, stop);
    OutgoingMail mail =
        context.NewMail("Test message",
                        "This message was sent to try out the mail profile of Oxbow Courier.\n"
                        "Reports and alerts will go the same way.\n");
    mail.recipients.push_back(context.book.Resolve(recipient));
    context.transport->Deliver(mail);
    const std::string to = "The test message to " + mail.recipients[0].address;
    switch (profile.transport) {
        case TransportKind::Outbox:
            return to + " is in the outbox \"" + profile.outboxFolder.string() + "\".";
        case TransportKind::Sendmail:
            return to + " was taken by the mail program \"" + profile.sendmail + "\".";
        case TransportKind::Smtp:
            break;
    }
    return Server(profile) + " has taken the test message to " + mail.recipients[0].address + ".";
}

}  // namespace mailer
