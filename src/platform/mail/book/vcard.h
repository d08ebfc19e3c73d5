// Address books as vCard files, versions 2.1, 3.0 and 4.0.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace mailer {

struct AddressEntry {
    std::string name;                    // the formatted name, else made of its parts
    std::vector<std::string> nicknames;  // in the order of the card
    std::string address;                 // the preferred one of the card
};

// The cards that have a name and a mail address, in the order of the text. Nothing in a damaged or hostile
// text raises: what is no card is passed over.
std::vector<AddressEntry> ReadCards(std::string_view text);

}  // namespace mailer
