// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/contracts/system_error.h"

#include <cerrno>
#include <system_error>

#include "platform/contracts/runtime.h"

bool IsDiskFull(int code) {
    return code == ENOSPC || code == EDQUOT || code == EFBIG;
}

std::int32_t NumberOfSystemError(int code, std::int32_t otherwise) {
    if (IsDiskFull(code)) {
        return err::DiskFull;
    }
    switch (code) {
        case EMFILE:
        case ENFILE:
            return err::TooManyFiles;
        case ENOMEM:
            return err::OutOfMemory;
        default:
            return otherwise;
    }
}

std::string SystemErrorText(int code) {
    return std::generic_category().message(code);
}
