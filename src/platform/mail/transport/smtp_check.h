// Whether a mail server would take mail, without giving it any.
#pragma once

#include <stop_token>

#include "platform/mail/profile/mail_profile.h"

namespace mailer {

// Connects, encrypts and logs on as the profile says, names the sender and leaves before anybody is named who
// would get something. Naming the sender finds what a mere login does not: a server that wants a login from a
// profile without one, and a sender that this login may not use. Raises as told in smtp_failure.h, and
// err::MailUserCancel when it was stopped.
void CheckSmtp(const MailProfile& profile, const std::stop_token& stop = {});

}  // namespace mailer
