// SPDX-License-Identifier: GPL-3.0-or-later
// The address book of the mail profile, and the function that shows it to the user.
#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "platform/base/text.h"
#include "platform/contracts/mapi.h"
#include "platform/mail/base/mail_address.h"
#include "platform/mail/book/vcard.h"

namespace mailer {

class AddressBook {
 public:
    // Uses the vCard file; an empty path is an empty book. The file is read when a name is first looked up,
    // so that mail to plain addresses does not need it.
    explicit AddressBook(std::filesystem::path file) : m_file(std::move(file)) {}

    // Returns all entries, sorted by name. Raises 53 if the file cannot be read or is larger than 32 MB.
    const std::vector<AddressEntry>& ListEntries();

    // Returns the mailbox for a name or an address. Raises ErrUnknownRecipient or ErrAmbiguousRecipient with
    // the name in its text. The mark ' does not distinguish names, because it is removed from names where
    // their list becomes part of a statement.
    Mailbox Resolve(const std::string& nameOrAddress);

 private:
    struct TextLess {
        bool operator()(std::string_view left, std::string_view right) const {
            return CompareText(left, right) < 0;
        }
    };

    std::filesystem::path m_file;
    std::optional<std::vector<AddressEntry>> m_entries;
    // The indexes of the entries by their names and nicknames, without the mark '.
    std::multimap<std::string, std::size_t, TextLess> m_names;
};

// Shows the entries and returns the chosen ones, at most one with MAPI::Choice::One. Returns nullopt if the
// user cancels.
using AddressChooser = std::function<std::optional<std::vector<AddressEntry>>(
    const std::vector<AddressEntry>& entries, MAPI::Choice choice)>;

// Sets the chooser; an empty function removes it. Without a chooser, as on a server without users, the
// address book is cancelled at once.
void SetAddressChooser(AddressChooser chooser);
const AddressChooser& TheAddressChooser();

}  // namespace mailer
