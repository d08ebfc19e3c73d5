// Changes to a text of sections and keys that leave everything else in it as a person wrote it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace mailer {

// Reads and writes the form of IniText: whatever is set here is found there, letter for letter. Comments,
// order, unknown keys and line ends stay.
class IniEditor {
 public:
    explicit IniEditor(std::string_view text);

    // Puts the value on the line that counts, or on a new one at the end of the section, which is made when
    // it is missing; further lines of the same key go. An empty value takes the key away. Raises 5 when the
    // value holds a control character (a line feed, a tab), which no line can carry; the text names the key
    // and not the value.
    void Set(std::string_view section, std::string_view key, std::string_view value);

    const std::string& Text() const { return m_text; }

 private:
    struct Line {
        std::size_t begin, end, next;  // places in the text: of the line, of its end mark, behind that
        std::string section;           // in lower case
        std::string key;               // in lower case; empty for a header, a comment or nothing
        bool isHeader;
    };

    std::vector<Line> Lines() const;
    void Append(const std::string& section, const std::string& assignment);
    std::string LineEnd() const;

    std::string m_text;
};

}  // namespace mailer
