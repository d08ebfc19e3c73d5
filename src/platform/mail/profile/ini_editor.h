// SPDX-License-Identifier: GPL-3.0-or-later
// Changes values in a text of sections and keys and keeps everything else as the user wrote it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace mailer {

// Reads and writes the form of IniText: IniText finds exactly the value that is set here. Comments, order,
// unknown keys and line ends stay.
class IniEditor {
 public:
    explicit IniEditor(std::string_view text);

    // Writes the value on the line that counts, or on a new line at the end of the section, which is added if
    // it is missing. Removes further lines of the same key. An empty value removes the key. Raises 5 for a
    // value with a control character (a line feed, a tab), which a line cannot hold; the text names the key
    // and not the value.
    void Set(std::string_view section, std::string_view key, std::string_view value);

    const std::string& Text() const { return m_text; }

 private:
    struct Line {
        // offsets in the text: start of the line, its line end, start of the next line
        std::size_t begin, end, next;
        std::string section;  // in lower case
        std::string key;      // in lower case; empty for a header, a comment or an empty line
        bool isHeader;
    };

    std::vector<Line> Lines() const;
    void Append(const std::string& section, const std::string& assignment);
    std::string LineEnd() const;

    std::string m_text;
};

}  // namespace mailer
