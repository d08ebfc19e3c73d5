// SPDX-License-Identifier: GPL-3.0-or-later
// The settings store in a text file of REGEDIT's form.
#pragma once

#include <filesystem>
#include <map>
#include <string>

#include "platform/contracts/registry.h"
#include "platform/contracts/runtime.h"

// The file settings.reg in a folder. A write reads the file again under a lock between processes and replaces
// it as a whole, so that two programs that write different values lose none. A damaged file is read as far as
// possible; the first write keeps it as settings.reg.bad. The value OXC of the key ...\CurrentVersion\Run
// also makes an entry in the folder `autostart` beside the settings' folder. A file that exists and cannot be
// read denies access and stays as it is. Not thread-safe.
class RegistryFile : public Registry {
 public:
    // An empty folder means ConfigFolder(), which is asked at each use.
    explicit RegistryFile(std::filesystem::path folder = {});

    long RegOpenKeyA(std::uint32_t root, const std::string& key, Handle& handle) override;
    long RegQueryValueExA(Handle handle, const std::string& name, std::uint32_t& type,
                          std::string& bytes) override;
    long RegCreateKeyA(std::uint32_t root, const std::string& key, Handle& handle) override;
    long RegSetValueExA(Handle handle, const std::string& name, std::uint32_t type,
                        const std::string& bytes) override;
    long RegCloseKey(Handle handle) override;
    void RequireWhole() const override;

 private:
    std::filesystem::path Folder() const;
    std::string ReadFile() const;
    template <typename Change>
    void Rewrite(Change change) const;
    long Denied(const RuntimeError& error);
    Handle NewHandle(std::string key);

    std::filesystem::path m_folder;
    std::map<Handle, std::string> m_keys;  // open handles, and their keys with the root
    Handle m_lastHandle = 0;
    std::string m_complaint;  // the last that standard error has
};

// Returns the user's settings.
Registry& SettingsFile();
