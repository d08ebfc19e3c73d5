// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/mail/book/vcard.h"

#include <algorithm>
#include <charconv>

#include "platform/base/ascii.h"
#include "platform/mail/base/mail_address.h"
#include "platform/mail/book/vcard_lines.h"

namespace mailer {
namespace {

constexpr int NotPreferred = 101;  // after 1 to 100, the range of PREF (RFC 6350, section 5.3)

// Returns the preference of an address: a lower number is preferred.
int Preference(const CardLine& line) {
    int preference = NotPreferred;
    for (const CardLine::Parameter& parameter : line.parameters) {
        if (parameter.name == "PREF") {
            int value = NotPreferred;
            std::from_chars(parameter.value.data(), parameter.value.data() + parameter.value.size(), value);
            preference = value >= 1 ? std::min(preference, value) : preference;
        } else if (parameter.name == "TYPE") {
            for (const std::string& type : SplitCardValue(parameter.value, ',')) {
                preference = ToLower(Trim(type)) == "pref" ? 1 : preference;
            }
        }
    }
    return preference;
}

std::string CleanText(std::string_view value) {
    return std::string(Trim(WithoutControls(value)));
}

std::string NameOfParts(std::string_view value) {
    const std::vector<std::string> parts = SplitCardValue(value, ';');
    const std::string family = CleanText(parts[0]);
    const std::string given = parts.size() > 1 ? CleanText(parts[1]) : "";
    return given.empty() || family.empty() ? given + family : given + " " + family;
}

class CardReader {
 public:
    void Read(const CardLine& line) {
        if (line.name == "FN") {
            m_entry.name = m_entry.name.empty() ? CleanText(UnescapedCardValue(line.value)) : m_entry.name;
        } else if (line.name == "N") {
            m_parts = NameOfParts(line.value);
        } else if (line.name == "NICKNAME") {
            ReadNicknames(line.value);
        } else if (line.name == "EMAIL") {
            ReadAddress(line);
        }
    }

    void FinishInto(std::vector<AddressEntry>& entries) {
        if (m_entry.name.empty()) {
            m_entry.name = m_parts;
        }
        if (m_entry.name.empty() && !m_entry.nicknames.empty()) {
            m_entry.name = m_entry.nicknames.front();
        }
        if (!m_entry.name.empty() && !m_entry.address.empty()) {
            entries.push_back(std::move(m_entry));
        }
    }

 private:
    void ReadNicknames(std::string_view value) {
        for (const std::string& nickname : SplitCardValue(value, ',')) {
            if (std::string clean = CleanText(nickname); !clean.empty()) {
                m_entry.nicknames.push_back(std::move(clean));
            }
        }
    }

    void ReadAddress(const CardLine& line) {
        std::string address = CleanText(UnescapedCardValue(line.value));
        if (ToLower(address).starts_with("mailto:")) {
            address.erase(0, std::string_view("mailto:").size());
        }
        address = MachineAddress(address);
        const int preference = Preference(line);
        if (IsAddress(address) && preference < m_preference) {
            m_entry.address = address;
            m_preference = preference;
        }
    }

    AddressEntry m_entry;
    std::string m_parts;
    int m_preference = NotPreferred + 1;
};

}  // namespace

std::vector<AddressEntry> ReadCards(std::string_view text) {
    std::vector<AddressEntry> entries;
    CardReader card;
    bool inside = false;
    for (const CardLine& line : ReadCardLines(text)) {
        const bool isCard = ToLower(Trim(line.value)) == "vcard";
        if (line.name == "BEGIN" && isCard) {
            card = CardReader();
            inside = true;
        } else if (line.name == "END" && isCard) {
            if (inside) {
                card.FinishInto(entries);
            }
            inside = false;
        } else if (inside) {
            card.Read(line);
        }
    }
    return entries;
}

}  // namespace mailer
