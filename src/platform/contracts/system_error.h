// Error codes of the machine (errno) as errors of the run time.
#pragma once

#include <cstdint>
#include <string>

namespace err {
inline constexpr std::int32_t TooManyFiles = 67;
}

// No room on the disk, none left of the user's share, or a file that may not grow any further.
bool IsDiskFull(int code);

// 61 when IsDiskFull, 67 for too many open files, 7 when there is no memory; these say nothing about the file
// that was asked for. Any other code is `otherwise`.
std::int32_t NumberOfSystemError(int code, std::int32_t otherwise);

// The machine's own words, for example "No space left on device".
std::string SystemErrorText(int code);
