#include "platform/mail/address_book.h"

#include <algorithm>

#include "platform/letters.h"
#include "platform/mail/ascii.h"
#include "platform/mail/mail_errors.h"
#include "platform/mail/small_file.h"
#include "platform/runtime.h"

namespace mailer {
namespace {

constexpr std::size_t LargestBook = std::size_t{32} << 20;

bool IsCalled(const AddressEntry& entry, const std::string& name) {
    return SameLetters(entry.name, name) ||
           std::any_of(entry.nicknames.begin(), entry.nicknames.end(),
                       [&name](const std::string& nickname) { return SameLetters(nickname, name); });
}

AddressChooser& Chooser() {
    static AddressChooser chooser;
    return chooser;
}

}  // namespace

const std::vector<AddressEntry>& AddressBook::ListEntries() {
    if (m_entries) {
        return *m_entries;
    }
    std::vector<AddressEntry> entries;
    if (!m_file.empty()) {
        const std::optional<std::string> text = ReadSmallFile(m_file, LargestBook);
        if (!text) {
            throw RuntimeError(err::FileNotFound,
                               "The address book \"" + m_file.string() + "\" is missing or cannot be read");
        }
        entries = ReadCards(*text);
    }
    std::stable_sort(entries.begin(), entries.end(), [](const AddressEntry& left, const AddressEntry& right) {
        return CompareLetters(left.name, right.name) < 0;
    });
    return m_entries.emplace(std::move(entries));
}

Mailbox AddressBook::Resolve(const std::string& nameOrAddress) {
    std::string name(Trim(nameOrAddress));
    // A name that was picked ends with the separator of lists, even where it stands alone.
    while (!name.empty() && name.back() == ';') {
        name = std::string(Trim(name.substr(0, name.size() - 1)));
    }
    if (LooksLikeAddress(name)) {
        return ParseMailbox(name);
    }
    if (name.empty()) {
        throw RuntimeError(ErrUnknownRecipient, "A recipient has no name");
    }
    const AddressEntry* found = nullptr;
    for (const AddressEntry& entry : ListEntries()) {
        if (!IsCalled(entry, name)) {
            continue;
        }
        if (found != nullptr && !SameAddress(found->address, entry.address)) {
            throw RuntimeError(ErrAmbiguousRecipient,
                               "The recipient \"" + Shown(name) + "\" is in the address book more than once");
        }
        found = &entry;
    }
    if (found == nullptr) {
        throw RuntimeError(ErrUnknownRecipient, "The recipient \"" + Shown(name) +
                                                    "\" is no mail address and not in the address book");
    }
    return {found->name, found->address};
}

void SetAddressChooser(AddressChooser chooser) {
    Chooser() = std::move(chooser);
}

const AddressChooser& TheAddressChooser() {
    return Chooser();
}

}  // namespace mailer
