// How a message leaves.
#pragma once

#include <memory>
#include <stop_token>

#include "platform/mail/mail_profile.h"
#include "platform/mail/outgoing_mail.h"

namespace mailer {

class Transport {
 public:
    virtual ~Transport() = default;
    // Returns when the whole message is taken for every recipient. Otherwise raises, and nobody has got it.
    virtual void Deliver(const OutgoingMail& mail) = 0;
};

// A stop that is asked for ends a delivery that waits for a server or a program: err::MailUserCancel.
std::unique_ptr<Transport> MakeTransport(const MailProfile& profile, const std::stop_token& stop = {});

}  // namespace mailer
