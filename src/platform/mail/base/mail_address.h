// Mail addresses with the name that goes before them.
#pragma once

#include <string>
#include <string_view>

namespace mailer {

struct Mailbox {
    std::string name;     // UTF-8, may be empty
    std::string address;  // local@domain, ASCII
    bool operator==(const Mailbox&) const = default;
};

// Whether the text claims to be an address at all: a name of the address book has no @ in it.
inline bool LooksLikeAddress(std::string_view text) {
    return text.find('@') != std::string_view::npos;
}

// local@domain in the form of RFC 5322, without comments and the obsolete forms: the local part dots and
// atoms or a quoted text (without @ < > " and \ in it), the domain labels of letters, digits and hyphens, or
// an address literal.
bool IsAddress(std::string_view text);

// The address with its domain as the domain name system has it; the part before it stays, and so does what is
// no address. ReadableAddress is the other way.
std::string MachineAddress(const std::string& address);
std::string ReadableAddress(const std::string& address);

// Reads one "address", "Name <address>" or "\"Name\" <address>". Raises ErrUnknownRecipient with the text in
// it for anything else: two addresses, control characters, characters outside ASCII before the @. The domain
// may have any, and becomes ASCII.
Mailbox ParseMailbox(std::string_view text);

// The same address for delivery: the domain is read without regard to case, the part before it as it stands.
bool SameAddress(std::string_view left, std::string_view right);

// The text as it may stand in an error: without control characters, and not endless.
std::string Shown(std::string_view text);

}  // namespace mailer
