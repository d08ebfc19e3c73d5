// What a person wants to know once the mail profile is set up: does it work?
#pragma once

#include <stop_token>
#include <string>
#include <vector>

#include "platform/contracts/runtime.h"
#include "platform/mail/profile/mail_profile.h"

namespace mailer {

struct Finding {
    bool isFine;
    std::string
        text;  // whole sentences of one line; of a failure: the keys to look at, what it is, what to do
};

// Looks at everything that a mail leans on: who can read the profile, the address book, and the server, the
// folder or the program. Nothing is sent. Failures are findings; raises only err::MailUserCancel when it was
// stopped.
std::vector<Finding> CheckMail(const MailProfile& profile, const std::stop_token& stop = {});

// Whether alerts can reach somebody. `alertWho` is the setting as it is stored: one name or address.
Finding CheckAlertAddress(const MailProfile& profile, const std::string& alertWho);

// Sends a short message to an address or a name of the address book. Returns what happened, as a sentence.
// Raises as MAPI::Message::Send does.
std::string SendTestMessage(const MailProfile& profile, const std::string& recipient,
                            const std::stop_token& stop = {});

// The keys of the profile that the error is about, what it says, and what to do about it.
std::string Advise(const RuntimeError& error, const MailProfile& profile);

}  // namespace mailer
