// SPDX-License-Identifier: GPL-3.0-or-later
// Header lines of a message: ASCII, folded at 78 characters (RFC 5322, sections 2.1.1 and 2.2.3).
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/mail/base/mail_address.h"

namespace mailer {

// Each function returns "Name: value" with a line feed at its end. A folded line has a line feed before a
// blank. A single word that is longer than a line, such as an address, gets a line of its own.
//
// Texts are UTF-8 without control characters. What is not ASCII becomes encoded words (RFC 2047, sections 2
// and 5), each of which holds whole characters.
std::string TextHeader(std::string_view name, std::string_view text);
// For one ASCII word, which is not changed.
std::string WordHeader(std::string_view name, std::string_view word);
// For addresses with or without a name: "Name <address>" (RFC 5322, section 3.4).
std::string MailboxHeader(std::string_view name, const std::vector<Mailbox>& mailboxes);
// For `value` and one parameter. A parameter that is not ASCII or too long for a line is encoded and split
// (RFC 2231, sections 3 and 4); no part ends inside a character.
std::string ParameterHeader(std::string_view name, std::string_view value, std::string_view parameter,
                            std::string_view text);

}  // namespace mailer
