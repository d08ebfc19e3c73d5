// SPDX-License-Identifier: GPL-3.0-or-later
// A message that is ready to be sent: all names are resolved and all attachments are open.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/contracts/clock.h"
#include "platform/mail/base/mail_address.h"
#include "platform/posix/unique_fd.h"

namespace mailer {

struct OutgoingAttachment {
    std::string path;  // a path of the system, for errors
    std::string name;  // file name without its folder
    UniqueFd file;
    std::int64_t size = 0;  // in bytes, when it was opened
};

struct OutgoingMail {
    Mailbox from;
    std::vector<Mailbox> recipients;  // at least one, no address twice
    std::string subject;
    std::string text;  // with any line ends
    bool highImportance = false;
    std::string identity;             // as MAPI::Message::Identity
    std::optional<ZonedMoment> date;  // as MAPI::Message::Date
    std::vector<OutgoingAttachment> attachments;
};

}  // namespace mailer
