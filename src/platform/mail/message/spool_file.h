// SPDX-License-Identifier: GPL-3.0-or-later
// Keeps a message in an unnamed file on its way to a server or a program. Closing the file deletes it.
#pragma once

#include "platform/mail/message/message_writer.h"
#include "platform/mail/message/outgoing_mail.h"
#include "platform/posix/unique_fd.h"

namespace mailer {

// Returns a file with the whole message, positioned at its start. Raises ErrDiskFull or 75 if there is no
// space for it, and as WriteMessage. Nothing has been sent then.
UniqueFd SpoolMessage(const OutgoingMail& mail, LineEnds ends);

}  // namespace mailer
