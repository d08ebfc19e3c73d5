// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/regfile/registry_file.h"

#include <algorithm>
#include <cerrno>
#include <optional>
#include <utility>

#include "platform/base/journal.h"
#include "platform/base/paths.h"
#include "platform/base/text.h"
#include "platform/contracts/runtime.h"
#include "platform/contracts/system_error.h"
#include "platform/posix/atomic_file.h"
#include "platform/posix/small_file.h"
#include "platform/regfile/autostart.h"
#include "platform/regfile/file_lock.h"
#include "platform/regfile/reg_document.h"

namespace {

namespace fs = std::filesystem;

constexpr long Success = 0;
constexpr long NotFound = 2;
constexpr long AccessDenied = 5;

constexpr const char* SettingsName = "settings.reg";
// bytes; settings have a few lines, so a larger file is not one
constexpr std::size_t LargestFile = 16U << 20U;
constexpr std::string_view AutostartKey =
    "HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows\\CurrentVersion\\Run";
constexpr std::string_view AutostartName = "OXC";

bool IsOneLine(std::string_view text) {
    return std::none_of(text.begin(), text.end(), [](unsigned char character) { return character < ' '; });
}

// Returns the key with its root and without a backslash at its end. Returns an empty text for an unknown root
// and for a key that would break its line.
std::string WholeKey(std::uint32_t root, std::string_view key) {
    if (root != HKEY_LOCAL_MACHINE || !IsOneLine(key)) {
        return {};
    }
    std::string whole = "HKEY_LOCAL_MACHINE\\" + std::string(key);
    while (whole.back() == '\\') {
        whole.pop_back();
    }
    return whole;
}

}  // namespace

RegistryFile::RegistryFile(fs::path folder) : m_folder(std::move(folder)) {}

fs::path RegistryFile::Folder() const {
    return m_folder.empty() ? ConfigFolder() : m_folder;
}

// A missing file holds nothing. Any other that is not read whole is an error: what is taken for empty would
// be replaced at the next write.
std::string RegistryFile::ReadFile() const {
    const fs::path path = (m_folder.empty() ? ConfigPlace() : m_folder) / SettingsName;
    std::optional<std::string> text = ReadSmallFile(path, LargestFile);
    const int code = errno;
    if (!text && code != ENOENT) {
        throw RuntimeError(NumberOfSystemError(code, err::PathFileAccess),
                           "The settings file \"" + path.string() + "\" cannot be read: " +
                               (code == EOVERFLOW ? "it is too large" : SystemErrorText(code)));
    }
    return std::move(text).value_or("");
}

template <typename Change>
void RegistryFile::Rewrite(Change change) const {
    const fs::path path = Folder() / SettingsName;
    const FileLock lock(path.string() + ".lock");
    const std::string former = ReadFile();
    RegDocument document(former);
    if (document.IsDamaged()) {
        CopyFileWhole(path, path.string() + ".bad");
    }
    change(document);
    const std::string text = document.Text();
    if (text != former) {
        AtomicFile file(path);
        file.Write(text);
        file.Commit();
    }
}

// The operations have codes and no texts: why one failed is a line on standard error, once for all that fail
// alike in a row.
long RegistryFile::Denied(const RuntimeError& error) {
    if (m_complaint != error.Description()) {
        m_complaint = error.Description();
        Journal(m_complaint);
    }
    return AccessDenied;
}

Registry::Handle RegistryFile::NewHandle(std::string key) {
    m_keys.emplace(++m_lastHandle, std::move(key));
    return m_lastHandle;
}

long RegistryFile::RegOpenKeyA(std::uint32_t root, const std::string& key, Handle& handle) {
    try {
        std::string whole = WholeKey(root, key);
        if (whole.empty() || !RegDocument(ReadFile()).HasKey(whole)) {
            return NotFound;
        }
        handle = NewHandle(std::move(whole));
        return Success;
    } catch (const RuntimeError& error) {
        return Denied(error);
    }
}

long RegistryFile::RegQueryValueExA(Handle handle, const std::string& name, std::uint32_t& type,
                                    std::string& bytes) {
    const auto key = m_keys.find(handle);
    if (key == m_keys.end()) {
        return NotFound;
    }
    try {
        auto value = RegDocument(ReadFile()).Value(key->second, name);
        if (!value) {
            return NotFound;
        }
        type = value->type;
        bytes = std::move(value->bytes);
        return Success;
    } catch (const RuntimeError& error) {
        return Denied(error);
    }
}

long RegistryFile::RegCreateKeyA(std::uint32_t root, const std::string& key, Handle& handle) {
    try {
        std::string whole = WholeKey(root, key);
        if (whole.empty()) {
            return NotFound;
        }
        Rewrite([&whole](RegDocument& document) { document.AddKey(whole); });
        handle = NewHandle(std::move(whole));
        return Success;
    } catch (const RuntimeError& error) {
        return Denied(error);
    }
}

long RegistryFile::RegSetValueExA(Handle handle, const std::string& name, std::uint32_t type,
                                  const std::string& bytes) {
    const auto key = m_keys.find(handle);
    if (key == m_keys.end() || !IsOneLine(name)) {
        return key == m_keys.end() ? NotFound : AccessDenied;
    }
    try {
        Rewrite([&](RegDocument& document) { document.SetValue(key->second, name, {type, bytes}); });
        if (type == REG_SZ && SameText(key->second, AutostartKey) && SameText(name, AutostartName)) {
            WriteAutostart(Folder().parent_path(), std::string(AutostartName),
                           std::string_view(bytes).substr(0, bytes.find('\0')));
        }
        return Success;
    } catch (const RuntimeError& error) {
        return Denied(error);
    }
}

long RegistryFile::RegCloseKey(Handle handle) {
    return m_keys.erase(handle) == 1 ? Success : NotFound;
}

void RegistryFile::RequireWhole() const {
    const fs::path path = (m_folder.empty() ? ConfigPlace() : m_folder) / SettingsName;
    const std::string text = ReadFile();
    if (text.empty() || RegDocument(text).IsDamaged()) {
        throw RuntimeError(err::PathFileAccess,
                           "The settings file \"" + path.string() +
                               (text.empty() ? "\" is missing or empty" : "\" is damaged"));
    }
}

Registry& SettingsFile() {
    static RegistryFile settings;
    return settings;
}
