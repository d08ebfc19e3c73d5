// SPDX-License-Identifier: GPL-3.0-or-later
// Address books in vCard files: versions 2.1 and 3.0 (RFC 2426), and 4.0 (RFC 6350).
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace mailer {

struct AddressEntry {
    std::string name;                    // FN (RFC 6350, section 6.2.1), else made of the parts of N (6.2.2)
    std::vector<std::string> nicknames;  // NICKNAME (6.2.3), in the order of the card
    std::string address;                 // the preferred EMAIL (6.4.2) by PREF (5.3)
};

// Returns the cards that have a name and a mail address, in the order of the text. A text that is damaged or
// hostile raises no error: what is not a card is skipped.
std::vector<AddressEntry> ReadCards(std::string_view text);

}  // namespace mailer
