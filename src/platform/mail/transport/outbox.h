// SPDX-License-Identifier: GPL-3.0-or-later
// Writes messages as files in a folder, where another program collects them.
#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>

#include "platform/mail/transport/transport.h"

namespace mailer {

// Writes one .eml file for each message, readable by its owner only, with a name that sorts by time. A file
// appears complete or not at all and survives a power failure once Deliver has returned. Unfinished files of
// killed processes (hidden names) are removed.
//
// Raises err::MailboxFull if the disk is full, 75 if the folder cannot be made or written.
class OutboxTransport : public Transport {
 public:
    explicit OutboxTransport(std::filesystem::path folder) : m_folder(std::move(folder)) {}
    // Makes the folder if it is missing, as the first message would, and tries to write in it.
    void CheckWritable() const;
    Refusals Deliver(const OutgoingMail& mail) override;

 private:
    std::filesystem::path m_folder;
};

// Returns how many messages lie in the outbox of the user's profile, or nullopt if mail does not go to an
// outbox or the profile cannot be read: oxc-mail check reports a broken one.
std::optional<std::size_t> CountOutbox();

}  // namespace mailer
