// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/mail/profile/editor.h"

#include "platform/contracts/runtime.h"
#include "platform/mail/profile/ini_text.h"
#include "platform/posix/atomic_file.h"
#include "platform/posix/small_file.h"

namespace mailer {
namespace {

namespace fs = std::filesystem;

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

ProfileEditor::ProfileEditor()
    : m_file(MailProfilePath()), m_isNew(IsMissing(m_file)), m_text(m_isNew ? "" : TextOf(m_file)) {}

std::string ProfileEditor::Value(KnownKey key) const {
    return IniText(m_text.Text()).Find(key->section, key->name).value_or("");
}

void ProfileEditor::Set(KnownKey key, std::string_view value) {
    m_text.Set(key->section, key->name, value);
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
