// What a failed talk with a mail server means.
#pragma once

#include <string>

#include "platform/mail/mail_profile.h"
#include "platform/mail/smtp_talk.h"
#include "platform/runtime.h"

namespace mailer {

// `code` is libcurl's (CURLcode), `detail` its own words. The text says which server, what it refused and
// with which answer:
//   err::MailboxOrServer  not reached, no such name, silent, dropped, turning mail away for now or answering
//   by no rule err::MailboxFull      452, 552 or an answer that says so (x.2.2) ErrNotSecure          TLS
//   missing, or a certificate that is not trusted ErrLoginRefused       user or password refused, or a login
//   wanted ErrRecipientRefused   no recipient is accepted, or one is put off; the text names them
//   ErrMessageRefused     sender or content is not accepted
RuntimeError ExplainSmtpFailure(int code, const SmtpTalk& talk, const MailProfile& profile,
                                const std::string& detail);

}  // namespace mailer
