// Settings access, and the two services of the desktop: opening a document and browsing for a folder.
#pragma once

#include <cstdint>
#include <string>

#include "platform/shell.h"

namespace ShellMod {

// The settings key, under HKEY_LOCAL_MACHINE.
inline constexpr const char* SettingsKey = "Software\\Norvale\\Oxbow Courier";
// Programs that the desktop starts by itself.
inline constexpr const char* AutostartKey = "Software\\Microsoft\\Windows\\CurrentVersion\\Run";

// The value's text; the default when the key or value is missing or is no string. Reports nothing.
std::string ReadSetting(std::uint32_t root, const std::string& key, const std::string& name,
                        const std::string& defaultText);
// Makes the key if need be. A failure is a line on standard error and nothing else.
void WriteSetting(std::uint32_t root, const std::string& key, const std::string& name,
                  const std::string& value);
void CreateSettingsKey(std::uint32_t root, const std::string& key);

// What the last failure of OpenDocument was. A success leaves it as it is.
extern std::string ShellErrorText;

// How the first window of what is opened shows itself.
inline constexpr int ShowNormal = 1;
inline constexpr int ShowMaximized = 3;
inline constexpr int ShowDefault = 10;

// Opens a file with the program that the machine associates with it. A file with ".exe" anywhere in its path,
// in any case, is opened with show mode 0. Shows nothing and raises nothing: false says that it failed, and
// ShellErrorText why.
bool OpenDocument(const std::string& file, int showMode, const std::string& parameters,
                  const std::string& directory, std::string& verb, WindowHandle owner);

// The folder that the user picks; empty when there is none: cancelled, or a path of 260 letters and more. The
// dialog begins in the folder `start` if there is one.
std::string BrowseForFolderDialog(WindowHandle owner, const std::string& title,
                                  const std::string& start = {});

}  // namespace ShellMod
