// Path rules. Inside the system a path is backslash-separated text (Z:\srv\out\); the machine's paths are
// met only here and in what is built on it.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace paths {
// The machine's path for a path of the system: \ becomes /, a leading "Z:" or none is the root, pieces that
// do not exist as spelled are looked for without regard to case. A relative path is taken from the current
// folder. Raises 76 "Path not found" for another drive letter and for a path with a NUL in it.
std::filesystem::path ToMachine(std::string_view path);
// Z:\home\ann\sales.rpt for /home/ann/sales.rpt; relative paths are made absolute first.
std::string FromMachine(const std::filesystem::path& path);
// How people write a path of the system on this machine: /home/ann/sales.rpt for Z:\home\ann\sales.rpt. Any
// other text, such as one of another drive or one that FromUser would not give back, is returned unchanged.
std::string ForUser(std::string_view path);
// The same, with the names of what exists as the disk has them: /srv/output/ for Z:\srv\Output\.
std::string ForUserAsOnDisk(std::string_view path);
// The reverse of ForUser: Z:\home\ann\sales.rpt for /home/ann/sales.rpt; a text that does not begin with / is
// returned unchanged.
std::string FromUser(std::string_view text);
}  // namespace paths

// The application's folder as the system writes it, without a backslash at its end: $OXC_HOME; else the
// folder of the executable if it holds Pressroom.dat; else ${XDG_DATA_HOME:-~/.local/share}/oxbow-courier,
// made on first use from the installed share/oxbow-courier.
const std::string& AppPath();
// For tests: an empty text returns to the rule above.
void SetAppPath(const std::string& path);

// ${XDG_CONFIG_HOME:-~/.config}/oxbow-courier as a machine path; not made.
std::filesystem::path ConfigPlace();
// The same, made with mode 0700 when it is missing.
std::filesystem::path ConfigFolder();
// ${XDG_DATA_HOME:-~/.local/share} as a machine path; not made.
std::filesystem::path DataHome();
