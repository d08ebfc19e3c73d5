// How a message leaves.
#pragma once

#include <memory>

#include "platform/mail/mail_profile.h"
#include "platform/mail/outgoing_mail.h"

namespace mailer {

class Transport {
 public:
    virtual ~Transport() = default;
    // Returns when the whole message is taken for every recipient. Otherwise raises, and nobody has got it.
    virtual void Deliver(const OutgoingMail& mail) = 0;
};

std::unique_ptr<Transport> MakeTransport(const MailProfile& profile);

}  // namespace mailer
