// SPDX-License-Identifier: GPL-3.0-or-later
#include "mail/Delivery.h"

#include <algorithm>
#include <memory>
#include <string>
#include <utility>

#include "platform/base/journal.h"
#include "platform/base/new_message.h"
#include "platform/base/text.h"
#include "platform/contracts/adodb.h"
#include "platform/contracts/mapi.h"
#include "platform/contracts/prompts.h"
#include "shared/Global.h"
#include "store/TextConventions.h"

namespace Global {

namespace {

bool IsMailboxError(const RuntimeError& error) {
    return error.Number() == err::MailboxOrServer || error.Number() == err::MailboxFull;
}

void ShowMailboxError() {
    MsgBox("Your mailbox is over the limit or the Exchange Server is down! Sending mail failed");
}

// Handles an error after the logon in a mail with reports. No history row records it.
bool FailReportMail(const std::string& subject, const RuntimeError& error) {
    journal::Write({journal::Level::Error,
                    "mail-failed",
                    {journal::Text("subject", subject), journal::Number("number", error.Number())},
                    ErrorText("The mail \"" + subject + "\" did not go out: ", error)});
    if (IsMailboxError(error)) {
        ShowMailboxError();
    } else {
        // Sic: "occured", and "SendMailBatch" also for SendMailSingle.
        SendAlertMail(ErrorText("An error occured in SendMailBatch. ", error), AlertWho, AlertSubject, 1);
    }
    return false;
}

void TellLostAlert(const std::string& recipient, const std::string& body, const RuntimeError& error) {
    const std::string to = recipient.empty() ? "as no alert address is set" : "to \"" + recipient + "\"";
    journal::Write({journal::Level::Error,
                    "alert-lost",
                    {journal::Text("to", recipient), journal::Number("number", error.Number())},
                    ErrorText("An alert did not go out " + to + ": ", error) + " It says: " + body});
}

std::unique_ptr<MAPI::Session> LoggedOnSession() {
    std::unique_ptr<MAPI::Session> session = MAPI::CreateSession();
    if (session) {
        session->Logon();
    }
    return session;
}

}  // namespace

bool SendMailBatch(const Variant& body, const Variant& subject, int recipients, int files, int /*unused*/) {
    const std::unique_ptr<MAPI::Session> session = LoggedOnSession();
    try {
        if (!session) {
            return false;
        }
        const std::unique_ptr<MAPI::Message> message =
            MAPI::NewRunMessage(*session, subject.Text(), body.Text());
        for (int i = 1; i <= recipients; ++i) {
            message->Recipients().Add(RecipientSlot(i));
        }
        message->Recipients().Resolve(MAPI::Dialog::Allowed);
        for (int i = 1; i <= files; ++i) {
            MAPI::Attach(*message, i, AttachmentSlot(i));
        }
        MAPI::SendRunMessage(*message);
        return true;
    } catch (const ADODB::ClaimLost&) {
        throw;  // nothing has gone out, and another scheduler may mail it
    } catch (...) {
        return FailReportMail(subject.Text(), CurrentError());
    }
}

bool SendMailSingle(const Variant& body, const Variant& subject, const std::string& recipients,
                    const std::string& file, int /*unused*/) {
    const std::unique_ptr<MAPI::Session> session = LoggedOnSession();
    try {
        if (!session) {
            return false;
        }
        const std::unique_ptr<MAPI::Message> message =
            MAPI::NewRunMessage(*session, subject.Text(), body.Text());
        for (const std::string& name : cmFunc::RecipientsOf(recipients)) {
            message->Recipients().Add(name);
        }
        message->Recipients().Resolve(MAPI::Dialog::Allowed);
        MAPI::Attach(*message, 1, file);
        MAPI::SendRunMessage(*message);
        return true;
    } catch (const ADODB::ClaimLost&) {
        throw;  // nothing has gone out, and another scheduler may mail it
    } catch (...) {
        return FailReportMail(subject.Text(), CurrentError());
    }
}

bool SendAlertMail(const std::string& body, const std::string& recipient, const std::string& subject,
                   const Variant& marker) {
    const std::unique_ptr<MAPI::Session> session = LoggedOnSession();
    try {
        if (!session) {
            return false;
        }
        const std::unique_ptr<MAPI::Message> message = MAPI::NewMessage(*session, subject, body);
        message->Recipients().Add(recipient);
        if (!marker.Text().empty()) {
            message->Importance = MAPI::ImportanceHigh;
        }
        message->Recipients().Resolve(MAPI::Dialog::Allowed);
        message->Send();
        journal::Write({journal::Level::Notice, "alert-sent", {journal::Text("to", recipient)}});
        return true;
    } catch (...) {
        // A failed alert sends no alert.
        const RuntimeError error = CurrentError();
        TellLostAlert(recipient, body, error);
        if (IsMailboxError(error)) {
            ShowMailboxError();
        }
        return false;
    }
}

namespace {

// Alerts that wait until their run is recorded.
struct WaitingAlerts {
    int holders = 0;
    std::vector<std::string> alerts;
};

WaitingAlerts& Waiting() {
    static WaitingAlerts waiting;
    return waiting;
}

// Answers are the server's to make, of any length and number; the alert and the line must stay readable.
constexpr std::size_t MostRefusals = 10;

std::string Cut(const std::string& answer) {
    constexpr std::size_t Longest = 200;  // characters
    const std::string_view first = FirstCharacters(answer, Longest);
    return std::string(first) + (first.size() < answer.size() ? "..." : "");
}

void AlertRefusals(const std::string& text) {
    try {
        SendAlertMail(text, AlertWho, AlertSubject, 1);
    } catch (...) {
        TellLostAlert(AlertWho, text, CurrentError());
    }
}

}  // namespace

void ReportRefusals(const std::string& subject, const std::vector<MAPI::Refusal>& refusals) {
    std::string text = "The mail \"" + subject + "\" has gone out, but not to everybody: the server refuses ";
    const std::size_t named = std::min(refusals.size(), MostRefusals);
    for (std::size_t i = 0; i < named; ++i) {
        text += (i == 0 ? "" : ", ") + refusals[i].Address + " (" + Cut(refusals[i].Answer) + ")";
    }
    if (named < refusals.size()) {
        text += " and " + std::to_string(refusals.size() - named) + " more";
    }
    Journal(text);
    if (Waiting().holders > 0) {
        Waiting().alerts.push_back(text);
    } else {
        AlertRefusals(text);
    }
}

AlertsWait::AlertsWait() {
    ++Waiting().holders;
}

AlertsWait::~AlertsWait() {
    if (--Waiting().holders == 0) {
        for (const std::string& text : std::exchange(Waiting().alerts, {})) {
            AlertRefusals(text);
        }
    }
}

}  // namespace Global
