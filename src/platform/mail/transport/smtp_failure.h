// SPDX-License-Identifier: GPL-3.0-or-later
// Converts a failed SMTP dialogue to an error of the system.
#pragma once

#include <string>

#include "platform/contracts/runtime.h"
#include "platform/mail/profile/mail_profile.h"
#include "platform/mail/transport/smtp_talk.h"

namespace mailer {

// Returns the error. `code` is libcurl's (CURLcode), `detail` its text. The description names the server,
// what it refused and its answer (reply codes of RFC 5321, section 4.2; enhanced codes of RFC 3463):
//   err::MailboxOrServer  not reached, no such name, silent, dropped, turning mail away for now, or an
//                         unexpected answer
//   err::MailboxFull      452, 552 or an answer that says so (x.2.2)
//   ErrNotSecure          TLS missing, or a certificate that is not trusted
//   ErrLoginRefused       user or password refused, or a login wanted
//   ErrRecipientRefused   no recipient is accepted, or one is put off; the text names them
//   ErrMessageRefused     sender or content is not accepted
RuntimeError ExplainSmtpFailure(int code, const SmtpTalk& talk, const MailProfile& profile,
                                const std::string& detail);

}  // namespace mailer
