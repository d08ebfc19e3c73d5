// Outgoing mails as Internet messages.
#pragma once

#include "platform/mail/message/outgoing_mail.h"

namespace mailer {

// On the wire and in files a line ends with CR LF; programs of the machine want its own form.
enum class LineEnds { CrLf, Lf };

// Writes the whole message to the file, no line longer than mail allows, all of it ASCII. Texts never break
// out of their header. Memory does not grow with the size of the attachments. Returns 0, or the machine's
// error code when the file cannot be written; raises 75 with the attachment's path when one cannot be read.
int WriteMessage(const OutgoingMail& mail, int file, LineEnds ends);

}  // namespace mailer
