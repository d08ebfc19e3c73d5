// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/mail/profile/profile_editor.h"

#include <algorithm>

#include "platform/base/ascii.h"
#include "platform/contracts/runtime.h"
#include "platform/mail/profile/ini_text.h"
#include "platform/posix/atomic_file.h"
#include "platform/posix/small_file.h"

namespace mailer {
namespace {

namespace fs = std::filesystem;

std::string_view SectionOf(std::string_view key) {
    return ToLower(key) == "vcard" ? "AddressBook" : "Profile";
}

// Returns false if that cannot be determined, as inside a locked folder or for a link to itself.
bool IsMissing(const fs::path& file) {
    std::error_code ignored;
    return fs::status(file, ignored).type() == fs::file_type::not_found;
}

std::string TextOf(const fs::path& file) {
    std::optional<std::string> text = ReadSmallFile(file, LargestProfile);
    if (!text) {
        throw RuntimeError(err::PathFileAccess, "The mail profile \"" + file.string() + "\" cannot be read");
    }
    return std::move(*text);
}

}  // namespace

const std::vector<std::string>& ProfileKeys() {
    static const std::vector<std::string> keys{
        "Transport", "From",    "Host",         "Port",     "Security",
        "Verify",    "CAFile",  "User",         "Password", "PasswordCommand",
        "Hello",     "Timeout", "OutboxFolder", "Sendmail", "VCard"};
    return keys;
}

std::string ProfileKey(std::string_view name) {
    const std::string wanted = ToLower(name);
    for (const std::string& key : ProfileKeys()) {
        if (ToLower(key) == wanted) {
            return key;
        }
    }
    return {};
}

ProfileEditor::ProfileEditor()
    : m_file(MailProfilePath()), m_isNew(IsMissing(m_file)), m_text(m_isNew ? "" : TextOf(m_file)) {}

std::string ProfileEditor::Value(std::string_view key) const {
    return IniText(m_text.Text()).Find(SectionOf(key), key).value_or("");
}

void ProfileEditor::Set(std::string_view key, std::string_view value) {
    m_text.Set(SectionOf(key), key, value);
}

MailProfile ProfileEditor::Profile() const {
    MailProfile profile = ParseMailProfile(m_file, m_text.Text());
    profile.isExposed = IsExposed(m_file, m_text.Text());
    return profile;
}

void ProfileEditor::Save() {
    Profile();
    // A folder made by hand may be open to all users; one that is shared with a group on purpose stays
    // shared. If another user owns it, the mode of the file must be enough.
    std::error_code ignored;
    const fs::path folder = m_file.parent_path();
    if ((fs::status(folder, ignored).permissions() & fs::perms::others_all) != fs::perms::none) {
        fs::permissions(folder, fs::perms::owner_all, ignored);
    }
    AtomicFile file(m_file);
    file.Write(m_text.Text());
    file.Commit();
    m_isNew = false;
}

}  // namespace mailer
