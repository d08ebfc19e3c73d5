// SPDX-License-Identifier: GPL-3.0-or-later
// A home for the settings of one test.
#pragma once

#include <stdlib.h>

#include "support/temporary_folder.h"

// The user's settings are in a folder of their own while an object of this class lives.
class ConfigHome {
 public:
    ConfigHome() { setenv("XDG_CONFIG_HOME", (m_folder / "config").c_str(), 1); }
    ~ConfigHome() { unsetenv("XDG_CONFIG_HOME"); }
    ConfigHome(const ConfigHome&) = delete;
    ConfigHome& operator=(const ConfigHome&) = delete;

    // A folder for the test's other files, and the files below it.
    const std::filesystem::path& Path() const { return m_folder.Path(); }
    std::filesystem::path operator/(const std::string& name) const { return m_folder / name; }
    // The folder of the settings and the mail profile. They need not exist.
    std::filesystem::path Folder() const { return m_folder / "config" / "oxbow-courier"; }
    std::filesystem::path MailProfile() const { return Folder() / "mail.ini"; }

 private:
    TemporaryFolder m_folder;
};
