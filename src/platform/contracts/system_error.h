// SPDX-License-Identifier: GPL-3.0-or-later
// Converts error codes of the machine (errno) to run-time errors.
#pragma once

#include <cstdint>
#include <string>

namespace err {
inline constexpr std::int32_t TooManyFiles = 67;
}

// Returns true for a full disk, an exhausted quota and a file that has reached its size limit.
bool IsDiskFull(int code);

// Returns 61 if IsDiskFull, 67 for too many open files, 7 for out of memory: these do not depend on the file
// that was used. Returns `otherwise` for any other code.
std::int32_t NumberOfSystemError(int code, std::int32_t otherwise);

// Returns the machine's text, for example "No space left on device".
std::string SystemErrorText(int code);
