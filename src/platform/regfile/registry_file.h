// The settings store in a text file of REGEDIT's form.
#pragma once

#include <filesystem>
#include <map>
#include <string>

#include "platform/regfile/reg_document.h"
#include "platform/registry.h"
#include "platform/runtime.h"

// settings.reg in a folder. A write reads the file anew under a lock between processes and replaces it whole,
// so that two programs that write different values lose none. A damaged file is read as far as it can be; the
// first write keeps it as settings.reg.bad. The value OXC of the key ...\CurrentVersion\Run also makes an
// entry in the folder `autostart` beside the settings' folder. A file that is there and cannot be read denies
// access and stays as it is. Not for several threads.
class RegistryFile : public Registry {
 public:
    // An empty folder means ConfigFolder(), asked at each use.
    explicit RegistryFile(std::filesystem::path folder = {});

    long RegOpenKeyA(std::uint32_t root, const std::string& key, Handle& handle) override;
    long RegQueryValueExA(Handle handle, const std::string& name, std::uint32_t& type,
                          std::string& bytes) override;
    long RegCreateKeyA(std::uint32_t root, const std::string& key, Handle& handle) override;
    long RegSetValueExA(Handle handle, const std::string& name, std::uint32_t type,
                        const std::string& bytes) override;
    long RegCloseKey(Handle handle) override;

 private:
    std::filesystem::path Folder() const;
    std::string ReadFile() const;
    template <typename Change>
    void Rewrite(Change change) const;
    long Denied(const RuntimeError& error);
    Handle NewHandle(std::string key);

    std::filesystem::path m_folder;
    std::map<Handle, std::string> m_keys;  // open handles and their keys with the root
    Handle m_lastHandle = 0;
    std::string m_complaint;  // the last that standard error has
};

// The user's settings.
Registry& SettingsFile();
