// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/mail/message/id.h"

#include <sys/random.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <optional>
#include <string_view>

#include "platform/base/ascii.h"
#include "platform/base/digest.h"
#include "platform/contracts/runtime.h"
#include "platform/posix/small_file.h"

namespace mailer {
namespace {

constexpr std::size_t MarkLength = 32;

// Distinguishes two machines whose databases have the same path and schedules with the same number.
// Containers of one image share the machine's id, but have different host names.
std::string ThisMachine() {
    constexpr std::size_t LongestId = 128;
    std::array<char, 256> name{};
    gethostname(name.data(), name.size() - 1);
    return ReadSmallFile("/etc/machine-id", LongestId).value_or("") + name.data();
}

}  // namespace

std::string RandomMark() {
    std::array<unsigned char, MarkLength / 2> random{};
    // The kernel returns so few bytes as a whole: no signal can shorten the read.
    if (getrandom(random.data(), random.size(), 0) != static_cast<ssize_t>(random.size())) {
        throw RuntimeError(err::PathFileAccess, "The machine gives no random numbers for the message");
    }
    std::string mark;
    for (const unsigned char byte : random) {
        AppendHexByte(byte, mark, SmallHexDigits);
    }
    return mark;
}

std::string MarkOf(const std::string& identity) {
    const std::string whole = ThisMachine() + '\n' + identity;
    return Sha256(whole).substr(0, MarkLength);
}

}  // namespace mailer
