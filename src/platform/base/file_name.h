// Names of files that are made of texts out of reports. Such a text is not trusted: it names a file, never a
// place.
#pragma once

#include <string>
#include <string_view>

// The longest name of a file or folder, in bytes.
inline constexpr std::size_t LongestFileName = 255;

// The text as the name of a file: separators, marks that other systems refuse and control characters become
// _, blanks and dots go from both ends, and its length leaves room for an extension. `nameless` when nothing
// is left.
std::string SafeFileName(std::string_view text, std::string_view nameless = "Report");

// For a name that is taken as it stands. Raises 76 "Path not found" unless each of its pieces, between / and
// \, names something in the folder before it: no dots alone, no drive, no control character, nothing empty or
// too long.
void RequireFileName(std::string_view name);
