// SPDX-License-Identifier: GPL-3.0-or-later
// Writes outgoing mails as Internet messages (RFC 5322, with MIME of RFC 2045 and RFC 2046).
#pragma once

#include "platform/mail/message/outgoing_mail.h"

namespace mailer {

// Line ends: CR LF on the wire and in files, LF for programs of the machine.
enum class LineEnds { CrLf, Lf };

// Writes the whole message to the open file: ASCII only, with lines no longer than RFC 5322, section 2.1.1,
// allows. A text cannot end its header early. Memory does not grow with the size of the attachments. Returns
// 0, or the machine's error code if the file cannot be written. Raises 75 with an attachment's path if the
// attachment cannot be read. The caller owns `file`.
int WriteMessage(const OutgoingMail& mail, int file, LineEnds ends);

}  // namespace mailer
