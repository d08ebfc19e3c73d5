// SPDX-License-Identifier: GPL-3.0-or-later
// What every message of a mail profile needs: its sender, its address book and its transport.
#pragma once

#include <memory>
#include <string>

#include "platform/mail/book/address_book.h"
#include "platform/mail/profile/mail_profile.h"
#include "platform/mail/transport/transport.h"

namespace mailer {

struct MailContext {
    // A stop request ends a delivery, as with MakeTransport.
    explicit MailContext(const MailProfile& read, const std::stop_token& stop = {})
        : profile(read), book(read.addressBook), transport(MakeTransport(read, stop)) {}

    // Returns a message from the sender of the profile, without recipients. Without a date and an identity
    // both are set when it is written.
    OutgoingMail NewMail(const std::string& subject, const std::string& text) const {
        OutgoingMail mail;
        mail.from = profile.from;
        mail.subject = subject;
        mail.text = text;
        return mail;
    }

    MailProfile profile;
    AddressBook book;
    std::unique_ptr<Transport> transport;
};

}  // namespace mailer
