// SPDX-License-Identifier: GPL-3.0-or-later
// Tests a mail profile after it is set up.
#pragma once

#include <stop_token>
#include <string>
#include <vector>

#include "platform/contracts/runtime.h"
#include "platform/mail/profile/mail_profile.h"

namespace mailer {

struct Finding {
    bool isFine;
    // Whole sentences on one line. For a failure: the keys to check, the cause, and what to do.
    std::string text;
};

// Checks everything that mail depends on: who can read the profile, the address book, and the server, the
// folder or the program. Sends no mail. Failures are findings; raises only err::MailUserCancel, after a stop.
std::vector<Finding> CheckMail(const MailProfile& profile, const std::stop_token& stop = {});

// Checks whether alerts can reach a recipient. `alertWho` is the stored setting: one name or address.
Finding CheckAlertAddress(const MailProfile& profile, const std::string& alertWho);

// Sends a short message to an address or a name of the address book. Returns the outcome as a sentence.
// Raises as MAPI::Message::Send.
std::string SendTestMessage(const MailProfile& profile, const std::string& recipient,
                            const std::stop_token& stop = {});

// Returns the keys of the profile that the error concerns, its text, and what to do.
std::string Advise(const RuntimeError& error, const MailProfile& profile);

}  // namespace mailer
