// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/mail/book/address_book.h"

#include <algorithm>

#include "platform/base/ascii.h"
#include "platform/contracts/runtime.h"
#include "platform/mail/base/mail_errors.h"
#include "platform/posix/small_file.h"

namespace mailer {
namespace {

constexpr std::size_t LargestBook = std::size_t{32} << 20;

std::string WithoutApostrophes(std::string name) {
    std::erase(name, '\'');
    return name;
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
        return CompareText(left.name, right.name) < 0;
    });
    for (std::size_t entry = 0; entry < entries.size(); ++entry) {
        m_names.emplace(WithoutApostrophes(entries[entry].name), entry);
        for (const std::string& nickname : entries[entry].nicknames) {
            m_names.emplace(WithoutApostrophes(nickname), entry);
        }
    }
    return m_entries.emplace(std::move(entries));
}

Mailbox AddressBook::Resolve(const std::string& nameOrAddress) {
    std::string name(Trim(nameOrAddress));
    // A chosen name ends with the separator of lists, even if it is the only one.
    while (!name.empty() && name.back() == ';') {
        name = std::string(Trim(name.substr(0, name.size() - 1)));
    }
    if (LooksLikeAddress(name)) {
        return ParseMailbox(name);
    }
    if (name.empty()) {
        throw RuntimeError(ErrUnknownRecipient, "A recipient has no name");
    }
    const std::vector<AddressEntry>& entries = ListEntries();
    const AddressEntry* found = nullptr;
    const auto [first, last] = m_names.equal_range(WithoutApostrophes(name));
    for (auto called = first; called != last; ++called) {
        const AddressEntry& entry = entries[called->second];
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
