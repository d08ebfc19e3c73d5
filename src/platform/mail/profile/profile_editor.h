// The mail profile as a person sets it up: values by the names of their keys, and the file they are kept in.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/mail/profile/ini_editor.h"
#include "platform/mail/profile/mail_profile.h"

namespace mailer {

// All keys that mean something, as docs write them, in the order in which people are asked for them.
const std::vector<std::string>& ProfileKeys();
// The key as docs write it, for any case of the letters; empty when there is none of that name.
std::string ProfileKey(std::string_view name);

class ProfileEditor {
 public:
    // The user's profile (MailProfilePath) as it is on the disk now. A missing file is an empty profile;
    // raises 75 when there is one that cannot be read.
    ProfileEditor();

    bool IsNew() const { return m_isNew; }
    // Empty when the key is missing. The name must be one of ProfileKeys.
    std::string Value(std::string_view key) const;
    // As IniEditor::Set; the section is known.
    void Set(std::string_view key, std::string_view value);

    // The profile that these values make. Raises ErrBadProfile as ReadMailProfile does.
    MailProfile Profile() const;
    // Checks the values as Profile does and then replaces the file, at once or not at all: readable by its
    // owner only, in a folder for its owner only. Raises as AtomicFile does when it cannot be written.
    void Save();

 private:
    std::filesystem::path m_file;
    bool m_isNew;
    IniEditor m_text;
};

}  // namespace mailer
