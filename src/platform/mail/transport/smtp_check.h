// SPDX-License-Identifier: GPL-3.0-or-later
// Tests whether a mail server would accept mail, without sending any.
#pragma once

#include <stop_token>

#include "platform/mail/profile/mail_profile.h"

namespace mailer {

// Connects, encrypts and logs in as the profile says, names the sender (MAIL) and quits before it names a
// recipient. MAIL finds what a login alone does not: a server that requires a login which the profile lacks,
// and a sender that this login may not use. Raises the errors of smtp_failure.h, and err::MailUserCancel
// after a stop.
void CheckSmtp(const MailProfile& profile, const std::stop_token& stop = {});

}  // namespace mailer
