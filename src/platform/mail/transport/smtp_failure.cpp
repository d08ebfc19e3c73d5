// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/mail/transport/smtp_failure.h"

#include <curl/curl.h>

#include "platform/base/text.h"
#include "platform/mail/base/mail_address.h"
#include "platform/mail/base/mail_errors.h"

namespace mailer {
namespace {

using Stage = SmtpTalk::Stage;

bool IsTls(int code) {
    return code == CURLE_SSL_CONNECT_ERROR || code == CURLE_PEER_FAILED_VERIFICATION ||
           code == CURLE_USE_SSL_FAILED || code == CURLE_SSL_CACERT_BADFILE ||
           code == CURLE_SSL_CERTPROBLEM || code == CURLE_SSL_CIPHER || code == CURLE_SSL_ISSUER_ERROR ||
           code == CURLE_SSL_INVALIDCERTSTATUS;
}

// A server that closes the connection during the TLS handshake counts as lost and not as untrusted.
bool IsDroppedHandshake(int code, const std::string& detail) {
    return code == CURLE_SSL_CONNECT_ERROR &&
           (Contains(detail, "SYSCALL") || Contains(detail, "unexpected eof") || Contains(detail, "reset"));
}

bool IsFull(const SmtpTalk& talk) {
    const std::string& reply = talk.Reply();
    // 452 is also the reply to too many recipients (RFC 5321, section 4.5.3.1.10) and then concerns no
    // mailbox.
    if (Contains(reply, " 4.5.3") || Contains(reply, " 5.5.3")) {
        return false;
    }
    for (const char* full : {" 4.2.2", " 5.2.2", " 4.3.1", " 5.3.1", " 4.3.4", " 5.3.4"}) {
        if (Contains(reply, full)) {
            return true;
        }
    }
    // With another enhanced code the number does not mean a full mailbox: 552 5.7.0 is content that was found
    // dangerous.
    constexpr std::size_t CodeLength = 3;
    const std::string status = reply.size() > CodeLength ? reply.substr(CodeLength + 1, 2) : std::string();
    const bool enhanced = status == "4." || status == "5.";
    return !enhanced && (talk.Code() == 452 || talk.Code() == 552);
}

bool IsLoginAnswer(int code) {
    return code == 530 || code == 534 || code == 535 || code == 538;
}

std::string Answer(const SmtpTalk& talk) {
    return talk.Reply().empty() ? std::string() : " It answered: " + Shown(talk.Reply());
}

// Returns the names of the refused recipients, which are all recipients of the message.
std::string Refused(const SmtpTalk& talk) {
    std::string names;
    for (const MAPI::Refusal& refusal : talk.Refusals()) {
        names += (names.empty() ? "\"" : ", \"") + refusal.Address + "\"";
    }
    return (talk.Refusals().size() == 1 ? "the recipient " : "the recipients ") + Shown(names);
}

RuntimeError ExplainRefusal(const SmtpTalk& talk, const std::string& server) {
    constexpr int Unavailable = 421;
    const bool later = talk.Code() < 500;
    if (talk.Code() == Unavailable || talk.At() == Stage::Greeting || talk.At() == Stage::Hello) {
        return {err::MailboxOrServer, server + " turns mail away." + Answer(talk)};
    }
    if (talk.At() == Stage::Recipient && !IsFull(talk) && !IsLoginAnswer(talk.Code())) {
        return {ErrRecipientRefused,
                server +
                    (later ? " does not take mail for \"" + Shown(talk.Recipient()) + "\" now"
                           : " refuses " + Refused(talk)) +
                    "; nobody has got the message." + Answer(talk)};
    }
    if (IsFull(talk)) {
        const std::string whose =
            talk.At() == Stage::Recipient ? " of \"" + Shown(talk.Recipient()) + "\"" : "";
        return {err::MailboxFull, server + " says that the mailbox" + whose +
                                      " is full or the message is too large; nobody has got it." +
                                      Answer(talk)};
    }
    if (later) {
        return {err::MailboxOrServer, server + " cannot take the message now." + Answer(talk)};
    }
    if (talk.At() == Stage::Login || IsLoginAnswer(talk.Code())) {
        return {ErrLoginRefused,
                server + " refuses the login; look at User and Password of the mail profile." + Answer(talk)};
    }
    if (talk.At() == Stage::Sender) {
        return {ErrMessageRefused,
                server + " refuses the sender; look at From of the mail profile." + Answer(talk)};
    }
    return {ErrMessageRefused, server + " refuses the message." + Answer(talk)};
}

std::string UnexpectedText(const std::string& server, const SmtpTalk& talk) {
    std::string text = server + " gives an unexpected answer";
    if (talk.At() == Stage::Recipient) {
        text += " to the recipient \"" + Shown(talk.Recipient()) + "\"";
    }
    return text +
           (talk.IsContentGiven() ? " to the whole message; nobody knows whether it has taken it."
                                  : "; nobody has got the message.") +
           Answer(talk);
}

std::string LateText(const std::string& server, const SmtpTalk& talk, const MailProfile& profile) {
    if (talk.IsContentGiven()) {
        return server + " was given the whole message and has not answered within " +
               std::to_string(profile.acceptSeconds) + " seconds; nobody knows whether it has taken it.";
    }
    return server + " does not answer in time (" + std::to_string(profile.connectSeconds) +
           " seconds to connect, " + std::to_string(profile.stallSeconds) + " while sending).";
}

std::string LostText(int code, const std::string& server, const SmtpTalk& talk, const MailProfile& profile) {
    switch (code) {
        case CURLE_COULDNT_RESOLVE_HOST:
            return server + " cannot be found: there is no such name, or no name service.";
        case CURLE_COULDNT_CONNECT:
            return server + " cannot be reached: nothing answers there.";
        case CURLE_OPERATION_TIMEDOUT:
            return LateText(server, talk, profile);
        default:
            return server + " dropped the connection before it took the message.";
    }
}

}  // namespace

RuntimeError ExplainSmtpFailure(int code, const SmtpTalk& talk, const MailProfile& profile,
                                const std::string& detail) {
    const std::string server =
        "The mail server \"" + profile.host + "\", port " + std::to_string(profile.port) + ",";
    constexpr int FirstRefusal = 400;
    const std::string said = detail.empty() ? std::string() : " (" + Shown(detail) + ")";
    if (code == CURLE_SSL_CACERT_BADFILE) {
        return {ErrBadProfile, "CAFile of the mail profile cannot be read" + said};
    }
    // The certificate is checked after the last reply, which therefore does not concern it.
    if (IsTls(code) && talk.Code() < FirstRefusal && !IsDroppedHandshake(code, detail)) {
        return {ErrNotSecure,
                code == CURLE_PEER_FAILED_VERIFICATION
                    ? server + " shows a certificate that is not trusted; nothing was sent." + said
                    : server + " offers no secure connection; nothing was sent." + said};
    }
    if (code == CURLE_USE_SSL_FAILED && talk.Code() >= 500) {
        return {ErrNotSecure, server + " offers no secure connection; nothing was sent." + Answer(talk)};
    }
    if (talk.Code() >= FirstRefusal) {
        return ExplainRefusal(talk, server);
    }
    if (code == CURLE_LOGIN_DENIED) {
        return {ErrLoginRefused, server + " refuses the login." + said};
    }
    if (code == CURLE_URL_MALFORMAT || code == CURLE_UNSUPPORTED_PROTOCOL) {
        return {ErrBadProfile, server + " cannot be spoken to" + said};
    }
    if (talk.IsUnexpected() && code != CURLE_OPERATION_TIMEDOUT) {
        return {err::MailboxOrServer, UnexpectedText(server, talk)};
    }
    return {err::MailboxOrServer, LostText(code, server, talk, profile)};
}

}  // namespace mailer
