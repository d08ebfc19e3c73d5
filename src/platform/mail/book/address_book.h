// The address book of the mail profile, and who shows it to a person.
#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "platform/base/text.h"
#include "platform/mail/base/mail_address.h"
#include "platform/mail/book/vcard.h"

namespace mailer {

class AddressBook {
 public:
    // The vCard file; an empty path is an empty book. It is read when a name is first looked for, so that
    // mail to plain addresses goes out without it.
    explicit AddressBook(std::filesystem::path file) : m_file(std::move(file)) {}

    // All entries, sorted by name. Raises 53 when the file cannot be read or is too large.
    const std::vector<AddressEntry>& ListEntries();

    // The mailbox that a name or an address stands for. Raises ErrUnknownRecipient or ErrAmbiguousRecipient,
    // each with the name in its text. Names lose the mark ' where their list becomes part of a statement, so
    // that it does not tell two names apart.
    Mailbox Resolve(const std::string& nameOrAddress);

 private:
    struct LettersBefore {
        bool operator()(std::string_view left, std::string_view right) const {
            return CompareLetters(left, right) < 0;
        }
    };

    std::filesystem::path m_file;
    std::optional<std::vector<AddressEntry>> m_entries;
    // The places of the entries by their names and nicknames, without the mark '.
    std::multimap<std::string, std::size_t, LettersBefore> m_names;
};

// Shows the entries and returns those chosen, one at most when `oneAddress`; nothing when the user cancels.
using AddressChooser = std::function<std::optional<std::vector<AddressEntry>>(
    const std::vector<AddressEntry>& entries, bool oneAddress)>;

// Without a chooser (a server with nobody there) showing the address book is cancelled at once. Empty takes
// the chooser away.
void SetAddressChooser(AddressChooser chooser);
const AddressChooser& TheAddressChooser();

}  // namespace mailer
