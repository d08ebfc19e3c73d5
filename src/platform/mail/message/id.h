// SPDX-License-Identifier: GPL-3.0-or-later
// The unique part of a Message-ID (RFC 5322, section 3.6.4).
#pragma once

#include <string>

namespace mailer {

// Returns thirty-two random hexadecimal digits. Raises 75 if the machine gives no random numbers.
std::string RandomMark();
// Returns thirty-two hexadecimal digits that are the same for every message of this identity and for no other
// one; another machine gives other digits. The text cannot be recovered from them.
std::string MarkOf(const std::string& identity);

}  // namespace mailer
