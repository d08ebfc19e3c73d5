// SPDX-License-Identifier: GPL-3.0-or-later
// The table of the keys, the guide and the reader say the same.
#include "platform/mail/profile/keys.h"

#include <map>
#include <set>
#include <sstream>

#include "mail_fixture.h"
#include "platform/mail/profile/mail_profile.h"
#include "support/source_dir.h"

namespace {

using mailer::ProfileKey;
using mailer::TransportKind;
using mailer::UsedBy;
using mailer::ValueType;

std::vector<std::string> QuotedIn(std::string_view text) {
    std::vector<std::string> names;
    for (std::size_t at = text.find('`'); at != std::string_view::npos; at = text.find('`', at)) {
        const std::size_t end = std::min(text.find('`', at + 1), text.size());
        names.emplace_back(text.substr(at + 1, end - at - 1));
        at = end + 1;
    }
    return names;
}

// Returns the keys of the guide's table with the transports that it gives for them.
std::map<std::string, std::string> KeysOfTheGuide() {
    std::istringstream guide(ReadBytes(SourceDir() + "/docs/mail.md"));
    std::map<std::string, std::string> keys;
    bool isInside = false;
    for (std::string line; std::getline(guide, line);) {
        isInside = line.starts_with("## ") ? line == "## Keys of [Profile]" : isInside;
        if (isInside && line.starts_with("| `")) {
            const std::size_t second = line.find('|', 1);
            const std::size_t third = line.find('|', second + 1);
            for (const std::string& name : QuotedIn(line.substr(0, second))) {
                keys[name] = Trim(line.substr(second + 1, third - second - 1));
            }
        }
    }
    return keys;
}

bool IsUsedBy(const ProfileKey& key, std::string_view transport) {
    const std::string_view users = TransportsOf(key.usedBy);
    return users == "all" ||
           (", " + std::string(users) + ",").find(", " + std::string(transport) + ",") != std::string::npos;
}

// Returns a value that the reader refuses, or an empty text for a key that takes any.
std::string BadValueOf(const ProfileKey& key) {
    switch (key.type) {
        case ValueType::Choice:
        case ValueType::Switch:
            return "perhaps";
        case ValueType::Number:
            return std::to_string(key.most + 1);
        case ValueType::Path:
            return "Q:\\nowhere";
        case ValueType::Sender:
            return "nobody";
        case ValueType::Secret:
        case ValueType::Text:
            break;
    }
    return {};
}

class ProfileKeyTable : public MailTest {};

}  // namespace

TEST_F(ProfileKeyTable, NamesAreFoundInAnyCase) {
    EXPECT_EQ(mailer::FindProfileKey("pASSWORDcommand")->name, "PasswordCommand");
    EXPECT_EQ(mailer::FindProfileKey("Pasword"), nullptr);
    EXPECT_EQ(Alternatives(*mailer::FindProfileKey("Transport")), "outbox, smtp or sendmail");
}

TEST_F(ProfileKeyTable, SecondEntryOfOneNameIsSeen) {
    const ProfileKey twice[] = {mailer::ProfileKeys[0],
                                {"tRANSPORT", "Profile", ValueType::Text, UsedBy::Smtp, ""}};
    EXPECT_FALSE(NamesDiffer(twice));
    EXPECT_TRUE(NamesDiffer(mailer::ProfileKeys));
}

TEST_F(ProfileKeyTable, GuideNamesEveryKeyWithItsTransports) {
    const auto guide = KeysOfTheGuide();
    const std::string text = ReadBytes(SourceDir() + "/docs/mail.md");
    for (const ProfileKey& key : mailer::ProfileKeys) {
        const std::string name(key.name);
        if (key.section != "Profile") {
            EXPECT_NE(text.find("\n[" + std::string(key.section) + "]\n" + name + "="), std::string::npos)
                << name;
            EXPECT_NE(text.find("\n`" + name + "` "), std::string::npos) << name;
            continue;
        }
        ASSERT_TRUE(guide.contains(name)) << name;
        EXPECT_EQ(guide.at(name), name == "Transport" ? "" : TransportsOf(key.usedBy)) << name;
    }
}

TEST_F(ProfileKeyTable, EveryKeyOfTheGuideAndTheHelpIsInTheTable) {
    EXPECT_GE(KeysOfTheGuide().size(), 14u);
    for (const auto& [name, transports] : KeysOfTheGuide()) {
        const ProfileKey* key = mailer::FindProfileKey(name);
        EXPECT_TRUE(key != nullptr && key->name == name) << name;
    }
    std::set<std::string> inHelp;
    std::istringstream help(ReadBytes(SourceDir() + "/help/pages/mail.html"));
    for (std::string line; std::getline(help, line);) {
        const std::size_t set = line.find("oxc-mail set ");
        std::istringstream words(set == std::string::npos ? "" : line.substr(set));
        for (std::string word; words >> word;) {
            if (const std::size_t sign = word.find('='); sign != std::string::npos) {
                inHelp.insert(word.substr(0, sign));
            }
        }
    }
    EXPECT_GE(inHelp.size(), 6u);
    for (const std::string& name : inHelp) {
        const ProfileKey* key = mailer::FindProfileKey(name);
        EXPECT_TRUE(key != nullptr && key->name == name) << name;
    }
}

// Timeout is read for the outbox, too: a profile that is wrong there is wrong with any transport.
TEST_F(ProfileKeyTable, BadValueIsRefusedByTheTransportsThatUseTheKey) {
    for (const std::string_view transport : mailer::TransportWords) {
        for (const ProfileKey& key : mailer::ProfileKeys) {
            const std::string bad = BadValueOf(key);
            if (bad.empty()) {
                continue;
            }
            const std::string text = "[Profile]\nTransport=" + std::string(transport) +
                                     "\nFrom=a@example.com\nHost=mail.example.com\n[" +
                                     std::string(key.section) + "]\n" + std::string(key.name) + "=" + bad +
                                     "\n";
            const bool isRefused =
                NumberRaisedBy([&] { mailer::ParseMailProfile(Profile(), text); }) == mailer::ErrBadProfile;
            EXPECT_EQ(isRefused, IsUsedBy(key, transport) || key.name == "Timeout") << text;
        }
    }
}
