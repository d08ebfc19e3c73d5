// Programs that start with the user's desktop.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

// The Exec line of a desktop entry for a command line of the system: a program (in double quotes if its path
// holds blanks) and its arguments. The system's own program, oxc.exe, becomes `ownProgram`; any other path is
// translated. A program with % or = in its path is started through sh, as desktops find it by no other way.
std::string DesktopExec(std::string_view commandLine, const std::filesystem::path& ownProgram);

// "env OXC_HOME=<folder> " when the command line names oxc.exe in a folder that `ownProgram` would not take
// for the application's by itself; else empty.
std::string HomeForExec(std::string_view commandLine, const std::filesystem::path& ownProgram);

// "env LANG=<region> " and the like: what names the region of this process, for a command line of oxc.exe.
// Dates of stored values are read in it, whatever region the desktop starts programs in. Empty for other
// programs.
std::string RegionForExec(std::string_view commandLine);

// Makes <folder>/<name>.desktop, which starts the command line at login. Raises as AtomicFile. A path that no
// entry can hold, as a control character or a byte that is no UTF-8 is in it, is a line on standard error,
// and no entry is made.
void WriteAutostart(const std::filesystem::path& folder, const std::string& name,
                    std::string_view commandLine);
