// The machine's own mail program.
#pragma once

#include <stop_token>
#include <string>

#include "platform/mail/transport/transport.h"

namespace mailer {

// Runs PROGRAM -i -f SENDER -- RECIPIENTS with the message as its input. Raises ErrBadProfile when the
// program is missing, err::MailboxOrServer when it does not end in time or asks to try later,
// ErrMessageRefused with its own words otherwise.
class SendmailTransport : public Transport {
 public:
    SendmailTransport(std::string program, int seconds, std::stop_token stop = {})
        : m_program(std::move(program)), m_seconds(seconds), m_stop(std::move(stop)) {}
    // Raises ErrBadProfile when the program is missing or may not be run.
    void CheckProgram() const;
    Refusals Deliver(const OutgoingMail& mail) override;

 private:
    std::string m_program;
    int m_seconds;
    std::stop_token m_stop;
};

}  // namespace mailer
