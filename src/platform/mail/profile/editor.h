// SPDX-License-Identifier: GPL-3.0-or-later
// The mail profile as the user edits it: values by the names of their keys, and the file that holds them.
#pragma once

#include <string>
#include <string_view>

#include "platform/mail/profile/ini_editor.h"
#include "platform/mail/profile/mail_profile.h"

namespace mailer {

class ProfileEditor {
 public:
    // Reads the user's profile (MailProfilePath) from the disk. A missing file is an empty profile. Raises 75
    // if the file cannot be read.
    ProfileEditor();

    bool IsNew() const { return m_isNew; }
    // Returns an empty text if the key is missing.
    std::string Value(KnownKey key) const;
    // Sets the value as IniEditor::Set does, in the section of the key.
    void Set(KnownKey key, std::string_view value);

    // Returns the profile with these values. Raises ErrBadProfile as ReadMailProfile does.
    MailProfile Profile() const;
    // Checks the values as Profile does and replaces the file as a whole. File and folder are for their owner
    // only. Raises as AtomicFile.
    void Save();

 private:
    std::filesystem::path m_file;
    bool m_isNew;
    IniEditor m_text;
};

}  // namespace mailer
