// SPDX-License-Identifier: GPL-3.0-or-later
// Mail addresses and the names before them.
#pragma once

#include <string>
#include <string_view>

namespace mailer {

struct Mailbox {
    std::string name;     // UTF-8, may be empty
    std::string address;  // local@domain, ASCII
    bool operator==(const Mailbox&) const = default;
};

// Returns true if the text is meant to be an address. Names of the address book have no @.
inline bool LooksLikeAddress(std::string_view text) {
    return text.find('@') != std::string_view::npos;
}

// Returns true for local@domain (RFC 5322, section 3.4.1) without comments and obsolete forms. The local part
// is atoms and dots or a quoted text without @ < > " and \, at most 64 bytes. The domain is labels of
// letters, digits and hyphens, or an address literal (RFC 5321, sections 4.1.2 and 4.1.3). An address has at
// most 254 bytes.
bool IsAddress(std::string_view text);

// Returns the address with its domain in ASCII (AsciiDomain). The local part, and a text that is no address,
// stay unchanged. ReadableAddress is the reverse.
std::string MachineAddress(const std::string& address);
std::string ReadableAddress(const std::string& address);

// Reads one "address", "Name <address>" or "\"Name\" <address>". Raises ErrUnknownRecipient with the text for
// anything else, such as two addresses, control characters or characters outside ASCII before the @. The
// domain may be in UTF-8 and becomes ASCII.
Mailbox ParseMailbox(std::string_view text);

// Returns true for the same address: domains compare without regard to case, local parts with it (RFC 5321,
// section 2.4).
bool SameAddress(std::string_view left, std::string_view right);

// Returns the text for an error message: without control characters, and cut off after 200 bytes.
std::string Shown(std::string_view text);

}  // namespace mailer
