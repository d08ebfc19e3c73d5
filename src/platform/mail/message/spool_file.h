// A message on its way to a server or a program: a file without a name that is gone with its owner.
#pragma once

#include "platform/mail/base/unique_fd.h"
#include "platform/mail/message/message_writer.h"
#include "platform/mail/message/outgoing_mail.h"

namespace mailer {

// The whole message, to be read from its start. Raises ErrDiskFull or 75 when there is no room for it, and as
// WriteMessage. Nothing has been sent then.
UniqueFd SpoolMessage(const OutgoingMail& mail, LineEnds ends);

}  // namespace mailer
