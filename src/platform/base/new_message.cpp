// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/base/new_message.h"

#include <chrono>

#include "platform/base/due_run.h"
#include "platform/base/journal.h"
#include "platform/base/send_check.h"
#include "platform/base/text.h"
#include "platform/contracts/runtime.h"

namespace MAPI {

std::unique_ptr<Message> NewMessage(Session& session, const std::string& subject, const std::string& text) {
    std::unique_ptr<Message> message = session.Outbox().AddMessage();
    message->Subject = subject;
    message->Text = text;
    return message;
}

std::unique_ptr<Message> NewRunMessage(Session& session, const std::string& subject,
                                       const std::string& text) {
    std::unique_ptr<Message> message = NewMessage(session, subject, text);
    message->Identity = DueRun::Identity();
    message->Date = DueRun::Date();
    return message;
}

void SendRunMessage(Message& message) {
    SendCheck::Call();
    const auto begin = std::chrono::steady_clock::now();
    try {
        message.Send();
    } catch (const RuntimeError& error) {
        // The connection may have been lost after the server took the message. All other errors are refusals.
        if (error.Number() == err::MailboxOrServer) {
            DueRun::SetMayBeOut();
        }
        throw;
    }
    DueRun::SetMayBeOut();
    const auto time =
        std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - begin);
    journal::Write(
        {journal::Level::Info,
         "mail-sent",
         {journal::Text("subject", message.Subject),
          journal::Number("recipients", message.Recipients().Count()), journal::Seconds("seconds", time)}});
}

void Attach(Message& message, int number, const std::string& source) {
    Attachment& attachment = message.Attachments().Add();
    attachment.Position = static_cast<int>(CountCharacters(message.Text)) + number;
    attachment.Source = source;
}

}  // namespace MAPI
