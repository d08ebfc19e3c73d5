// SPDX-License-Identifier: GPL-3.0-or-later
#include "shared/ShellMod.h"

#include "platform/base/convert.h"
#include "platform/base/journal.h"
#include "platform/base/resume_next.h"
#include "platform/base/text.h"
#include "platform/contracts/registry.h"
#include "platform/contracts/runtime.h"

namespace ShellMod {

std::string ShellErrorText;

namespace {

constexpr long AccessDenied = 5;  // of the registry
constexpr int HighestFailure = 32;
constexpr std::size_t PathBuffer = 260;  // characters, with the closing zero character

const char* FailureText(int code) {
    switch (code) {
        case 0:
        case 8:
            return "Out of memory";
        case 2:
            return "File not found";
        case 3:
            return "Path not found";
        case 5:
            return "Path/file access error";
        case 11:
            return "The executable is invalid or corrupt";
        case 26:
            return "A sharing violation occured";  // sic
        case 27:
            return "This file does not have a valid association";
        case 28:
            return "The file could not be opened due to a time out. Please try again in a moment";
        case 29:
            return "The file could not be opened because the DDE transaction failed. Please try again in a "
                   "moment.";
        case 30:
            return "The file could not be opened because the target application is busy. Please try again in "
                   "a moment.";
        case 31:
            return "No application is associated with this file type.";
        case 32:
            return "The specified dynamic-link library was not found.";
        default:
            return "An error occurred occurred whilst trying to open or print the selected file.";  // sic
    }
}

// The registry's result code; `result` stays as it is unless there is a text.
long Query(std::uint32_t root, const std::string& key, const std::string& name, std::string& result) {
    Registry& registry = TheRegistry();
    Registry::Handle handle = 0;
    long code = registry.RegOpenKeyA(root, key, handle);
    if (code == 0) {
        std::uint32_t type = 0;
        std::string bytes;
        code = registry.RegQueryValueExA(handle, name, type, bytes);
        if (code == 0 && type == REG_SZ) {
            result = bytes.substr(0, bytes.find('\0'));
        }
    }
    registry.RegCloseKey(handle);
    return code;
}

}  // namespace

std::string ReadSetting(std::uint32_t root, const std::string& key, const std::string& name,
                        const std::string& defaultText) {
    std::string result = defaultText;
    Query(root, key, name, result);
    return result;
}

std::string RequireSetting(std::uint32_t root, const std::string& key, const std::string& name,
                           const std::string& defaultText) {
    std::string result = defaultText;
    if (Query(root, key, name, result) == AccessDenied) {
        throw RuntimeError(err::PathFileAccess, "The settings are there and cannot be read");
    }
    return result;
}

void WriteSetting(std::uint32_t root, const std::string& key, const std::string& name,
                  const std::string& value) {
    Registry& registry = TheRegistry();
    Registry::Handle handle = 0;
    long code = registry.RegCreateKeyA(root, key, handle);
    if (code == 0) {
        code = registry.RegSetValueExA(handle, name, REG_SZ, value);
        registry.RegCloseKey(handle);
    }
    if (code != 0) {
        Journal("The setting \"" + name + "\" is not stored: error " + std::to_string(code));
    }
}

void WriteSetting(const std::string& name, const std::string& value) {
    WriteSetting(HKEY_LOCAL_MACHINE, SettingsKey, name, value);
}

void CreateSettingsKey(std::uint32_t root, const std::string& key) {
    Registry& registry = TheRegistry();
    Registry::Handle handle = 0;
    if (registry.RegCreateKeyA(root, key, handle) == 0) {
        registry.RegCloseKey(handle);
    }
}

bool OpenDocument(const std::string& file, int showMode, const std::string& parameters,
                  const std::string& directory, std::string& verb, WindowHandle /*owner*/) {
    if (UCase(file).find(".EXE") != std::string::npos) {
        showMode = 0;
    }
    int code = 0;  // 0 if the call itself fails
    ResumeNext([&] { code = TheShell().ShellExecuteA(verb, file, parameters, directory, showMode); });
    if (code > HighestFailure) {
        return true;
    }
    ShellErrorText = FailureText(code);
    return false;
}

std::string BrowseForFolderDialog(WindowHandle owner, const std::string& title, const std::string& start) {
    std::string path;
    ResumeNext([&] { path = TheShell().BrowseForFolder(owner, title, start); });
    const std::string chosen = path.substr(0, path.find('\0'));
    // A path that does not fit in the buffer is not returned: a part of it would be another folder.
    return CountCharacters(chosen) < PathBuffer ? chosen : std::string();
}

}  // namespace ShellMod
