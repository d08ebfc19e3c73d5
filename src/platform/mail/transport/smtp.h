// SPDX-License-Identifier: GPL-3.0-or-later
// Sends mail through a mail server.
#pragma once

#include <stop_token>

#include "platform/mail/transport/transport.h"

namespace mailer {

// Sends each message over a connection of its own. Names every recipient before the first byte of the message
// (RFC 5321, section 3.3). Returns the recipients that the server refused permanently; the message goes to
// the others. Raises the errors of smtp_failure.h, and as SpoolMessage.
class SmtpTransport : public Transport {
 public:
    explicit SmtpTransport(MailProfile profile, std::stop_token stop = {})
        : m_profile(std::move(profile)), m_stop(std::move(stop)) {}
    Refusals Deliver(const OutgoingMail& mail) override;

 private:
    MailProfile m_profile;
    std::stop_token m_stop;
};

}  // namespace mailer
