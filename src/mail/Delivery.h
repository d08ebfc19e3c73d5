// SPDX-License-Identifier: GPL-3.0-or-later
// The three mails of the system: a package's files, one file, an alert.
//
// Each function joins the mail session first; a failure there passes to the caller as a run-time error. Any
// later error is handled here, and the function returns false. The numbers err::MailboxOrServer and
// err::MailboxFull show one box and nothing else, because no alert could go out. Any other error in a mail
// with reports sends an alert. Nothing is retried. A mail or an alert that did not go out is also a dated
// line on standard error.
#pragma once

#include <string>
#include <vector>

#include "platform/contracts/mapi.h"
#include "platform/contracts/runtime.h"

namespace Global {

inline constexpr const char* AlertSubject = "Pressroom Error";

// Sends one mail to RecipientList(1..recipients) with the files AttachmentList(1..files). An empty slot is
// handed over as an empty name. `unused` has no effect. Raises 9 outside the lists.
bool SendMailBatch(const Variant& body, const Variant& subject, int recipients, int files, int unused);

// Sends one mail with one file to the names of a ";"-separated list. A list with n ";" gives n names: the
// last name of a list that does not end in ";" is lost. A list without ";" gives its one name
// (cmFunc::CountRecipients). `unused` has no effect.
bool SendMailSingle(const Variant& body, const Variant& subject, const std::string& recipients,
                    const std::string& file, int unused);

// Sends one plain mail to one name, which is not split at ";". A `marker` other than the empty text sets high
// importance.
bool SendAlertMail(const std::string& body, const std::string& recipient, const std::string& subject,
                   const Variant& marker);

// While an object of this class lives, alerts about refused recipients wait. They go out when the last object
// is destroyed. A poll records its run first: if the process ends during a slow alert, the other recipients
// must not get a second mail.
class AlertsWait {
 public:
    AlertsWait();
    ~AlertsWait();
    AlertsWait(const AlertsWait&) = delete;
    AlertsWait& operator=(const AlertsWait&) = delete;
};

// Alerts AlertWho, and writes to standard error, which recipients the server refused although the mail went
// out to the others. Throws no error, because the mail is sent. Serves as the mail system's refusal handler.
void ReportRefusals(const std::string& subject, const std::vector<MAPI::Refusal>& refusals);

}  // namespace Global
