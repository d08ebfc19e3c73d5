// SPDX-License-Identifier: GPL-3.0-or-later
// Access to the settings, and two services of the desktop: opening a document and browsing for a folder.
#pragma once

#include <cstdint>
#include <string>

#include "platform/contracts/shell.h"

namespace ShellMod {

// The key of the system's settings, under HKEY_LOCAL_MACHINE.
inline constexpr const char* SettingsKey = "Software\\Norvale\\Oxbow Courier";
// The key whose values name the programs that start with the desktop.
inline constexpr const char* AutostartKey = "Software\\Microsoft\\Windows\\CurrentVersion\\Run";

// Returns the text of a value, or the default if the key or value is missing or is not a string. Raises no
// error.
std::string ReadSetting(std::uint32_t root, const std::string& key, const std::string& name,
                        const std::string& defaultText);
// Returns the same, but raises 75 when there are settings that cannot be read: a caller that took the
// defaults for them would act on them, and store them.
std::string RequireSetting(std::uint32_t root, const std::string& key, const std::string& name,
                           const std::string& defaultText);
// Makes the key if it is missing. A failure is only a line on standard error.
void WriteSetting(std::uint32_t root, const std::string& key, const std::string& name,
                  const std::string& value);
// The same under SettingsKey.
void WriteSetting(const std::string& name, const std::string& value);
void CreateSettingsKey(std::uint32_t root, const std::string& key);

// The text of the last failure of OpenDocument. A success leaves it unchanged.
extern std::string ShellErrorText;

// Show modes: how the first window of the opened program appears.
inline constexpr int ShowNormal = 1;
inline constexpr int ShowMaximized = 3;
inline constexpr int ShowDefault = 10;

// Opens a file with the program that the desktop associates with it. A file with ".exe" anywhere in its path,
// in any case, is opened with show mode 0. Shows no box and raises no error. Returns false on a failure and
// sets ShellErrorText. `verb` is only read.
bool OpenDocument(const std::string& file, int showMode, const std::string& parameters,
                  const std::string& directory, std::string& verb, WindowHandle owner);

// Returns the folder that the user picks. Returns an empty text after a cancel and for a path of 260
// characters or more. The dialog starts in the folder `start` if that exists.
std::string BrowseForFolderDialog(WindowHandle owner, const std::string& title,
                                  const std::string& start = {});

}  // namespace ShellMod
