// SPDX-License-Identifier: GPL-3.0-or-later
// Sends mail with the machine's mail program.
#pragma once

#include <stop_token>
#include <string>

#include "platform/mail/transport/transport.h"

namespace mailer {

// Runs PROGRAM -i -f SENDER -- RECIPIENTS with the message as its input. Raises ErrBadProfile if the program
// is missing, err::MailboxOrServer if it exceeds its time limit or asks to try later, ErrMessageRefused with
// the program's own text otherwise.
class SendmailTransport : public Transport {
 public:
    SendmailTransport(std::string program, int seconds, std::stop_token stop = {})
        : m_program(std::move(program)), m_seconds(seconds), m_stop(std::move(stop)) {}
    // Raises ErrBadProfile if the program is missing or cannot be run.
    void CheckProgram() const;
    Refusals Deliver(const OutgoingMail& mail) override;

 private:
    std::string m_program;
    int m_seconds;
    std::stop_token m_stop;
};

}  // namespace mailer
