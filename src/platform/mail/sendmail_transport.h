// The machine's own mail program.
#pragma once

#include <string>

#include "platform/mail/transport.h"

namespace mailer {

// Runs PROGRAM -i -f SENDER -- RECIPIENTS with the message as its input. Raises ErrBadProfile when the
// program is missing, err::MailboxOrServer when it does not end in time or asks to try later,
// ErrMessageRefused with its own words otherwise.
class SendmailTransport : public Transport {
 public:
    SendmailTransport(std::string program, int seconds) : m_program(std::move(program)), m_seconds(seconds) {}
    void Deliver(const OutgoingMail& mail) override;

 private:
    std::string m_program;
    int m_seconds;
};

}  // namespace mailer
