// SPDX-License-Identifier: GPL-3.0-or-later
// How every message of the system begins: the mails of src/mail and those that the engine sends itself.
#pragma once

#include <memory>
#include <string>

#include "platform/contracts/mapi.h"

namespace MAPI {

// Returns a new message of the session's outbox. It is unique: its Message-ID belongs to no run.
std::unique_ptr<Message> NewMessage(Session& session, const std::string& subject, const std::string& text);
// Returns a new message with the identity and the date of the run that is going on (DueRun).
std::unique_ptr<Message> NewRunMessage(Session& session, const std::string& subject, const std::string& text);
// Calls what must hold (SendCheck), sends a message of NewRunMessage as Message::Send does, and writes the
// event "mail-sent". Notes in the run that is going on whether somebody may have got it (DueRun::MayBeOut).
void SendRunMessage(Message& message);
// Attaches a file, a path of the system. Its position is `number` characters after the text.
void Attach(Message& message, int number, const std::string& source);

}  // namespace MAPI
