// The three mails of the system: a package's files, one file, an alert.
//
// Each joins the mail session first; a failure there passes to the caller as a run-time error. After that an
// error is dealt with here and the result is false: the two numbers of a lost server and a full mailbox bring
// up one box and nothing else, since no alert could go out; any other error of a package's or a file's mail
// sends an alert. Nothing is retried. A mail or an alert that did not go out is a dated line on standard
// error.
#pragma once

#include <string>
#include <vector>

#include "platform/contracts/mapi.h"
#include "platform/contracts/runtime.h"

namespace Global {

inline constexpr const char* AlertSubject = "Pressroom Error";

// One mail to RecipientList(1..recipients) with AttachmentList(1..files); an empty slot is handed over as it
// is.
bool SendMailBatch(const Variant& body, const Variant& subject, int recipients, int files, int unused);

// One mail to the names of a ";"-separated list, with one file. A list of n ";" gives n names, so that the
// last name of a list that does not end in ";" is lost; a list without any gives its one name.
bool SendMailSingle(const Variant& body, const Variant& subject, const std::string& recipients,
                    const std::string& file, int unused);

// One plain mail to one name, unsplit. A marker other than the empty text asks for high importance.
bool SendAlertMail(const std::string& body, const std::string& recipient, const std::string& subject,
                   const Variant& marker);

// While one stands, alerts about refused recipients wait; they go out when the outermost one ends. A poll's
// run has to be recorded first: a process that ends during a slow alert must not cost the others a second
// mail.
class AlertsWait {
 public:
    AlertsWait();
    ~AlertsWait();
    AlertsWait(const AlertsWait&) = delete;
    AlertsWait& operator=(const AlertsWait&) = delete;
};

// Tells AlertWho, and standard error, whom the server does not take mail for, of a mail that the others have
// got. Raises nothing: that mail is sent. The mail system's refusal handler.
void ReportRefusals(const std::string& subject, const std::vector<MAPI::Refusal>& refusals);

}  // namespace Global
