// A mail server.
#pragma once

#include "platform/mail/transport.h"

namespace mailer {

// Hands each message to the profile's server in a connection of its own. Every recipient is accepted before
// the first byte of the message is sent. Raises as told in smtp_failure.h, and as SpoolMessage.
class SmtpTransport : public Transport {
 public:
    explicit SmtpTransport(MailProfile profile) : m_profile(std::move(profile)) {}
    void Deliver(const OutgoingMail& mail) override;

 private:
    MailProfile m_profile;
};

}  // namespace mailer
