// SPDX-License-Identifier: GPL-3.0-or-later
// Programs that start with the user's desktop.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

// Returns the Exec line of a desktop entry for a command line of the system: a program, in double quotes if
// its path holds blanks, and its arguments. The system's own program, oxc.exe, becomes `ownProgram`; any
// other path is translated. A program with % or = in its path is started through sh, because desktops cannot
// start it directly.
std::string DesktopExec(std::string_view commandLine, const std::filesystem::path& ownProgram);

// Returns "env OXC_HOME=<folder> " if the command line names oxc.exe in a folder that `ownProgram` would not
// use as the application's folder. Returns an empty text otherwise.
std::string HomeForExec(std::string_view commandLine, const std::filesystem::path& ownProgram);

// Returns "env LANG=<region> " or the like, with the region of this process, for a command line of oxc.exe.
// Stored dates are read in this region, whatever region the desktop gives its programs. Returns an empty text
// for other programs.
std::string RegionForExec(std::string_view commandLine);

// Makes autostart/<name>.desktop in a configuration folder (the XDG Base Directory specification's
// $XDG_CONFIG_HOME), which starts the command line at login. Raises as AtomicFile. Makes no entry for a
// service: in a process of a service manager, and in the machine's configuration. A path that no entry can
// hold, as a control character or a byte that is no UTF-8 is in it, is a line on standard error, and no entry
// is made.
void WriteAutostart(const std::filesystem::path& configuration, const std::string& name,
                    std::string_view commandLine);
