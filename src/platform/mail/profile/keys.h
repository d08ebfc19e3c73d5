// SPDX-License-Identifier: GPL-3.0-or-later
// The keys of the mail profile. This table is the only list of them: the reader, the editor, oxc-mail and its
// form take names, sections, ranges and texts from here.
#pragma once

#include <array>
#include <compare>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include "platform/base/ascii.h"
#include "platform/base/named.h"

namespace mailer {

// In the order of TransportWords and SecurityWords.
enum class TransportKind { Outbox, Smtp, Sendmail };
enum class Security { None, StartTls, Tls };

inline constexpr std::array<std::string_view, 3> TransportWords{"outbox", "smtp", "sendmail"};
inline constexpr std::array<std::string_view, 3> SecurityWords{"none", "starttls", "tls"};
inline constexpr std::array<std::string_view, 3> YesWords{"yes", "true", "1"};
inline constexpr std::array<std::string_view, 3> NoWords{"no", "false", "0"};

enum class ValueType {
    Choice,  // one of `words`
    Number,  // a whole number from `least` to `most`
    Path,    // as ProfilePath reads it
    Secret,  // never shown, and not taken from a command line
    Sender,  // `address` or `Name <address>`
    Switch,  // one of YesWords or NoWords
    Text,
};

enum class UsedBy { AllTransports, Smtp, Outbox, Sendmail, SmtpAndSendmail };

struct ProfileKey {
    std::string_view name;  // in the guide's spelling; the file may have any case
    std::string_view section;
    ValueType type;
    UsedBy usedBy;
    std::string_view help;  // for the user, on one line: the tool tip of its field
    std::span<const std::string_view> words = {};
    int least = 0, most = 0;
};

// In the order in which `oxc-mail show` prints them.
inline constexpr auto ProfileKeys = std::to_array<ProfileKey>({
    {"Transport", "Profile", ValueType::Choice, UsedBy::AllTransports, "How messages leave this machine",
     TransportWords},
    {"From", "Profile", ValueType::Sender, UsedBy::AllTransports, "The mail address of the sender"},
    {"Host", "Profile", ValueType::Text, UsedBy::Smtp, "Name or address of the mail server"},
    {"Port",
     "Profile",
     ValueType::Number,
     UsedBy::Smtp,
     "Follows the encryption until another port is chosen",
     {},
     1,
     65535},
    {"Security", "Profile", ValueType::Choice, UsedBy::Smtp,
     "What the server must offer; without it nothing is sent", SecurityWords},
    {"Verify", "Profile", ValueType::Switch, UsedBy::Smtp,
     "Without it anybody between you and the server can read the mail and the password"},
    {"CAFile", "Profile", ValueType::Path, UsedBy::Smtp,
     "A PEM file with the authorities to trust instead of the machine's own; mostly empty"},
    {"User", "Profile", ValueType::Text, UsedBy::Smtp,
     "The user name at the server; empty when it needs no login"},
    {"Password", "Profile", ValueType::Secret, UsedBy::Smtp,
     "A new password; the stored one is kept when nothing is typed"},
    {"PasswordCommand", "Profile", ValueType::Text, UsedBy::Smtp,
     "A shell command that writes the password; used when none is stored"},
    {"Hello", "Profile", ValueType::Text, UsedBy::Smtp,
     "What this machine calls itself when it greets the server"},
    {"Timeout",
     "Profile",
     ValueType::Number,
     UsedBy::SmtpAndSendmail,
     "Seconds without a sign of life before server or program count as lost",
     {},
     1,
     3600},
    {"OutboxFolder", "Profile", ValueType::Path, UsedBy::Outbox,
     "Where messages are left for another program to take"},
    {"Sendmail", "Profile", ValueType::Text, UsedBy::Sendmail, "The mail program of this machine"},
    {"VCard", "AddressBook", ValueType::Path, UsedBy::AllTransports,
     "Contacts as most address books export them; may be empty"},
});

// Returns the key of this name in any case, or nullptr.
constexpr const ProfileKey* FindProfileKey(std::string_view name) {
    for (const ProfileKey& key : ProfileKeys) {
        if (SameAscii(key.name, name)) {
            return &key;
        }
    }
    return nullptr;
}

static_assert(NamesDiffer(ProfileKeys));

// A key of the table. A name in the source that is not in the table is an error of the compiler.
class KnownKey {
 public:
    consteval KnownKey(const char* name) : m_key(FindProfileKey(name)) {
        if (m_key == nullptr || m_key->name != name) {
            throw "not a key of the mail profile";
        }
    }
    KnownKey(const ProfileKey& key) : m_key(&key) {}

    const ProfileKey& operator*() const { return *m_key; }
    const ProfileKey* operator->() const { return m_key; }
    std::string Name() const { return std::string(m_key->name); }

    friend bool operator==(KnownKey left, KnownKey right) { return left.m_key == right.m_key; }
    // By name.
    friend auto operator<=>(KnownKey left, KnownKey right) { return left->name <=> right->name; }

 private:
    const ProfileKey* m_key;
};

// Returns the port that a server uses for this encryption unless the profile says otherwise.
constexpr int UsualPort(Security security) {
    return security == Security::Tls ? 465 : security == Security::StartTls ? 587 : 25;
}

// The time limit without Timeout, in seconds: of silence for a server, of the whole run for a mail program,
// which may wait for a server itself.
inline constexpr int UsualStallSeconds = 60;
inline constexpr int UsualSendmailSeconds = 600;

// Returns the transports as the guide names them: "all", or their words with commas.
constexpr std::string_view TransportsOf(UsedBy usedBy) {
    switch (usedBy) {
        case UsedBy::AllTransports:
            return "all";
        case UsedBy::Smtp:
            return "smtp";
        case UsedBy::Outbox:
            return "outbox";
        case UsedBy::Sendmail:
            return "sendmail";
        case UsedBy::SmtpAndSendmail:
            return "smtp, sendmail";
    }
    return {};
}

// Returns the words of a choice as a text: "outbox, smtp or sendmail".
std::string Alternatives(const ProfileKey& key);

}  // namespace mailer
