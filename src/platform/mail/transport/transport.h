// How a message leaves.
#pragma once

#include <memory>
#include <stop_token>
#include <vector>

#include "platform/contracts/mapi.h"
#include "platform/mail/message/outgoing_mail.h"
#include "platform/mail/profile/mail_profile.h"

namespace mailer {

using Refusals = std::vector<MAPI::Refusal>;

class Transport {
 public:
    virtual ~Transport() = default;
    // Returns when the whole message is taken, with the recipients that the server does not take and never
    // will. Otherwise raises, and nobody has got it: when every recipient is refused, or one is put off.
    virtual Refusals Deliver(const OutgoingMail& mail) = 0;
};

// A stop that is asked for ends a delivery that waits for a server or a program: err::MailUserCancel.
std::unique_ptr<Transport> MakeTransport(const MailProfile& profile, const std::stop_token& stop = {});

}  // namespace mailer
