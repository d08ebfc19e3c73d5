// A mail server.
#pragma once

#include <stop_token>

#include "platform/mail/transport/transport.h"

namespace mailer {

// Hands each message to the profile's server in a connection of its own. Every recipient is named before the
// first byte of the message is sent; those that the server refuses for good are returned, and the message
// goes to the others. Raises as told in smtp_failure.h, and as SpoolMessage.
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
