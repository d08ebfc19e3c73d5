// SPDX-License-Identifier: GPL-3.0-or-later
// The bytes of a report file as a text in UTF-8, and back to the same bytes (XML 1.0, section 4.3.3 and
// appendix F).
#pragma once

#include <string>
#include <string_view>

namespace designer {

// The byte order mark of UTF-8.
inline constexpr std::string_view Utf8Mark = "\xEF\xBB\xBF";

// How a file writes its characters.
struct FileEncoding {
    std::string name = "UTF-8";  // as Qt or the declaration of the file has it
    std::string mark;            // bytes of the byte order mark; empty: the file has none
    bool isUtf8 = true;
};

struct FileText {
    std::string text;  // UTF-8 without a byte order mark
    FileEncoding encoding;
};

// Reads the bytes of a file. The encoding comes from the byte order mark, the first bytes or the declaration.
// Raises SourceFlaw for an encoding that is not known, for bytes that are no text in it, and if the text
// would not be written with the same bytes again.
FileText ReadFileText(std::string_view bytes);

// Returns the bytes of a text in this encoding. Raises SourceFlaw with the place of a character that the
// encoding does not have.
std::string WriteFileText(std::string_view text, const FileEncoding& encoding);

}  // namespace designer
