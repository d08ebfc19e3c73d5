// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/mail/base/mail_address.h"

#include "platform/base/ascii.h"
#include "platform/base/text.h"
#include "platform/contracts/runtime.h"
#include "platform/mail/base/domain_name.h"
#include "platform/mail/base/mail_errors.h"

namespace mailer {
namespace {

constexpr std::size_t LongestLocalPart = 64;
constexpr std::size_t LongestAddress = 254;
constexpr std::size_t LongestLabel = 63;

// Returns true for runs of characters that `accepts` takes, with one dot between two runs.
template <typename Accepts>
bool IsDotted(std::string_view text, std::size_t longestRun, Accepts accepts) {
    std::size_t run = 0;
    for (const char character : text) {
        if (character == '.') {
            if (run == 0) {
                return false;
            }
            run = 0;
        } else if (!accepts(character) || ++run > longestRun) {
            return false;
        }
    }
    return run > 0;
}

bool IsQuotedLocalPart(std::string_view text) {
    if (text.size() < 3 || text.front() != '"' || text.back() != '"') {
        return false;
    }
    for (const char character : text.substr(1, text.size() - 2)) {
        if (character < ' ' || character > '~' ||
            std::string_view("@<>\"\\").find(character) != std::string_view::npos) {
            return false;
        }
    }
    return true;
}

bool IsDomain(std::string_view text) {
    if (text.size() > 2 && text.front() == '[' && text.back() == ']') {
        return IsDotted(text.substr(1, text.size() - 2), LongestAddress,
                        [](char character) { return IsAsciiLetterOrDigit(character) || character == ':'; });
    }
    if (text.find("-.") != std::string_view::npos || text.find(".-") != std::string_view::npos ||
        text.starts_with('-') || text.ends_with('-')) {
        return false;
    }
    return IsDotted(text, LongestLabel,
                    [](char character) { return IsAsciiLetterOrDigit(character) || character == '-'; });
}

std::string Unquoted(std::string_view name) {
    if (name.size() < 2 || name.front() != '"' || name.back() != '"') {
        return std::string(name);
    }
    std::string plain;
    const std::string_view inside = name.substr(1, name.size() - 2);
    for (std::size_t at = 0; at < inside.size(); ++at) {
        if (inside[at] == '\\' && at + 1 < inside.size()) {
            ++at;
        }
        plain += inside[at];
    }
    return plain;
}

// An unquoted name with a comma, an @ or a bracket would be a list of addresses.
bool IsName(std::string_view name) {
    const bool quoted = name.size() > 1 && name.front() == '"' && name.back() == '"';
    return quoted || name.find_first_of("@,;<>\"") == std::string_view::npos;
}

[[noreturn]] void Refuse(std::string_view text) {
    throw RuntimeError(ErrUnknownRecipient, "\"" + Shown(text) + "\" is not a mail address");
}

}  // namespace

bool IsAddress(std::string_view text) {
    const std::size_t at = text.rfind('@');
    if (at == std::string_view::npos || at > LongestLocalPart || text.size() > LongestAddress) {
        return false;
    }
    const std::string_view local = text.substr(0, at);
    return (IsDotted(local, LongestLocalPart, IsAtomCharacter) || IsQuotedLocalPart(local)) &&
           IsDomain(text.substr(at + 1));
}

Mailbox ParseMailbox(std::string_view text) {
    if (HasControls(text)) {
        Refuse(text);
    }
    const std::string_view trimmed = Trim(text);
    Mailbox mailbox;
    const std::size_t open = trimmed.rfind('<');
    if (open != std::string_view::npos && trimmed.ends_with('>')) {
        const std::string_view name = Trim(trimmed.substr(0, open));
        if (!IsName(name)) {
            Refuse(text);
        }
        mailbox.name = Unquoted(name);
        mailbox.address = Trim(trimmed.substr(open + 1, trimmed.size() - open - 2));
    } else {
        mailbox.address = trimmed;
    }
    mailbox.address = MachineAddress(mailbox.address);
    if (!IsAddress(mailbox.address)) {
        Refuse(text);
    }
    return mailbox;
}

std::string MachineAddress(const std::string& address) {
    const std::size_t domain = address.rfind('@') + 1;
    return address.substr(0, domain) + AsciiDomain(address.substr(domain));
}

std::string ReadableAddress(const std::string& address) {
    const std::size_t domain = address.rfind('@') + 1;
    return address.substr(0, domain) + ReadableDomain(address.substr(domain));
}

bool SameAddress(std::string_view left, std::string_view right) {
    const std::size_t at = left.rfind('@');
    return at == right.rfind('@') && left.substr(0, at) == right.substr(0, at) &&
           SameAscii(left.substr(at), right.substr(at));
}

std::string Shown(std::string_view text) {
    constexpr std::size_t Longest = 200;
    return WithoutControls(CutText(text, Longest)) + (text.size() > Longest ? "..." : "");
}

}  // namespace mailer
