// SPDX-License-Identifier: GPL-3.0-or-later
// Path rules. Inside the system a path is text with backslashes (Z:\srv\out\). Only this header and what is
// built on it uses the machine's paths.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace paths {
// Returns the machine's path for a path of the system. \ becomes /; a leading "Z:", or no drive, is the root.
// Parts that do not exist in the given spelling are searched without regard to case. A relative path starts
// at the current folder. Raises 76 "Path not found" for another drive letter and for a path with a NUL.
std::filesystem::path ToMachine(std::string_view path);
// Returns the system's path: Z:\home\ann\sales.rpt for /home/ann/sales.rpt. A relative path is made absolute
// first.
std::string FromMachine(const std::filesystem::path& path);
// Returns true for a path that begins with a separator, \ or /, or with a drive.
bool IsAbsolute(std::string_view path);
// Returns a path of the system as users write it: /home/ann/sales.rpt for Z:\home\ann\sales.rpt. Any other
// text, such as a path on another drive or one that FromUser would not restore, is returned unchanged.
std::string ForUser(std::string_view path);
// The same, with the names of what exists as the disk has them: /srv/output/ for Z:\srv\Output\.
std::string ForUserAsOnDisk(std::string_view path);
// The reverse of ForUser: returns Z:\home\ann\sales.rpt for /home/ann/sales.rpt. A text that does not begin
// with / is returned unchanged.
std::string FromUser(std::string_view text);
}  // namespace paths

// Returns the application's folder as a path of the system, without a backslash at its end. It is $OXC_HOME;
// else the folder of the executable if it holds Pressroom.dat; else
// ${XDG_DATA_HOME:-~/.local/share}/oxbow-courier, made at the first use from the installed
// share/oxbow-courier.
const std::string& AppPath();
// For tests. An empty text restores the rule above.
void SetAppPath(const std::string& path);

// Returns the folder of the running program as a machine path.
std::filesystem::path ProgramFolder();

// Returns ${XDG_CONFIG_HOME:-~/.config}/oxbow-courier as a machine path. Does not make it.
std::filesystem::path ConfigPlace();
// Returns the same path and makes the folder with mode 0700 if it is missing.
std::filesystem::path ConfigFolder();
// Returns ${XDG_DATA_HOME:-~/.local/share} as a machine path. Does not make it.
std::filesystem::path DataHome();
