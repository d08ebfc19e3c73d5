// SPDX-License-Identifier: GPL-3.0-or-later
// File names made of texts from reports. Such a text is not trusted: it may name a file, but never another
// folder.
#pragma once

#include <string>
#include <string_view>

// The longest name of a file or folder, in bytes.
inline constexpr std::size_t LongestFileName = 255;

// Returns the text as a file name. Separators, characters that other systems refuse and control characters
// become _; blanks and dots at both ends are removed; the length leaves space for an extension. Returns
// `nameless` if no character is left.
std::string SafeFileName(std::string_view text, std::string_view nameless = "Report");

// Checks a name that is used unchanged. Raises 76 "Path not found" unless each part between / and \ names an
// entry of the folder before it: it is not empty, not only dots, not a drive, has no control character and at
// most LongestFileName bytes.
void RequireFileName(std::string_view name);
