#include "platform/mail/spool_file.h"

#include <fcntl.h>
#include <stdlib.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <string>

#include "platform/mail/mail_errors.h"
#include "platform/runtime.h"

namespace mailer {

UniqueFd SpoolMessage(const OutgoingMail& mail, LineEnds ends) {
    std::error_code ignored;
    std::string name = std::filesystem::temp_directory_path(ignored) / "oxc-mail-XXXXXX";
    UniqueFd file(mkostemp(name.data(), O_CLOEXEC));
    int code = errno;
    if (file.Get() >= 0) {
        unlink(name.c_str());
        code = WriteMessage(mail, file.Get(), ends);
        if (code == 0 && lseek(file.Get(), 0, SEEK_SET) == 0) {
            return file;
        }
    }
    throw RuntimeError(code == ENOSPC || code == EDQUOT ? ErrDiskFull : err::PathFileAccess,
                       "The message cannot be built in \"" +
                           std::filesystem::path(name).parent_path().string() + "\": " + std::strerror(code));
}

}  // namespace mailer
