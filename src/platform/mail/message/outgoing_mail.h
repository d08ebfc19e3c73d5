// A message that is ready to go: everything resolved, every attachment open.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/mail/base/mail_address.h"
#include "platform/mail/base/unique_fd.h"

namespace mailer {

struct OutgoingAttachment {
    std::string path;  // for errors: as the system writes it
    std::string name;  // of the file, without its folder
    UniqueFd file;
    std::int64_t size = 0;  // in bytes, as it was opened
};

struct OutgoingMail {
    Mailbox from;
    std::vector<Mailbox> recipients;  // at least one, no address twice
    std::string subject;
    std::string text;  // any line ends
    bool highImportance = false;
    std::string identity;  // as MAPI::Message::Identity
    std::vector<OutgoingAttachment> attachments;
};

}  // namespace mailer
