// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/mail/message/spool_file.h"

#include <unistd.h>

#include <cerrno>

#include "platform/contracts/runtime.h"
#include "platform/contracts/system_error.h"
#include "platform/mail/base/mail_errors.h"
#include "platform/posix/atomic_file.h"

namespace mailer {

UniqueFd SpoolMessage(const OutgoingMail& mail, LineEnds ends) {
    UniqueFd file(OpenTemporaryFile());
    int code = WriteMessage(mail, file.Get(), ends);
    if (code == 0 && lseek(file.Get(), 0, SEEK_SET) == 0) {
        return file;
    }
    code = code != 0 ? code : errno;
    throw RuntimeError(
        IsDiskFull(code) ? ErrDiskFull : err::PathFileAccess,
        "The message cannot be built in \"" + TemporaryPlace().string() + "\": " + SystemErrorText(code));
}

}  // namespace mailer
