// SPDX-License-Identifier: GPL-3.0-or-later
// The interface for sending a message.
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
    // Returns after the whole message is accepted, with the recipients that were refused permanently. Raises
    // an error if every recipient is refused, or one of them temporarily; then no recipient gets the message.
    // The other errors depend on the transport.
    virtual Refusals Deliver(const OutgoingMail& mail) = 0;
};

// Makes the transport of the profile. A stop request ends a delivery that waits for a server or a program: it
// raises err::MailUserCancel.
std::unique_ptr<Transport> MakeTransport(const MailProfile& profile, const std::stop_token& stop = {});

}  // namespace mailer
