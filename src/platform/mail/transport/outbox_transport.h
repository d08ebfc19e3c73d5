// Messages as files in a folder, for another program to take from there.
#pragma once

#include <filesystem>

#include "platform/mail/transport/transport.h"

namespace mailer {

// One .eml for each message, readable by its owner only, its name sortable by time. A message appears whole
// or not at all, and stays through a power cut once Deliver has returned. What a killed process left
// unfinished (hidden names) is removed on the way.
//
// Raises err::MailboxFull when the disk is full, 75 when the folder cannot be made or written.
class OutboxTransport : public Transport {
 public:
    explicit OutboxTransport(std::filesystem::path folder) : m_folder(std::move(folder)) {}
    // Makes the folder when it is missing, as the first message would, and tries to write there.
    void CheckWritable() const;
    Refusals Deliver(const OutgoingMail& mail) override;

 private:
    std::filesystem::path m_folder;
};

}  // namespace mailer
