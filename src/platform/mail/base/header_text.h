// Header lines of a message: folded at 78 characters, all of them ASCII.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/mail/base/mail_address.h"

namespace mailer {

// Each returns "Name: value" with a line feed at its end, and a line feed in front of a blank wherever it is
// folded. A single word that is longer than a line, an address, say, stands on a line of its own.
//
// Texts are UTF-8 without control characters. What is not ASCII is written in encoded words (RFC 2047), each
// of which stands for whole characters.
std::string TextHeader(std::string_view name, std::string_view text);
// Of one ASCII word that stands as it is.
std::string WordHeader(std::string_view name, std::string_view word);
// Of "Name <address>" or plain addresses.
std::string MailboxHeader(std::string_view name, const std::vector<Mailbox>& mailboxes);
// `value` and one parameter behind it, in pieces if need be (RFC 2231), none of which ends inside a
// character.
std::string ParameterHeader(std::string_view name, std::string_view value, std::string_view parameter,
                            std::string_view text);

}  // namespace mailer
