// Texts in sections of `key = value` lines.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace mailer {

// Sections and keys are found without regard to case; of a key that stands twice the last one counts. A `;`
// at the start of a line or behind a blank begins a comment, a `#` at the start of a line too. A value
// between double quotes is taken as it stands. Lines that are neither section nor key are passed over, and
// control characters (but the tab) never reach a value.
class IniText {
 public:
    explicit IniText(std::string_view text);  // UTF-8, with or without byte order mark, any line ends

    // Nothing when the key is missing; an empty text when it has no value.
    std::optional<std::string> Find(std::string_view section, std::string_view key) const;

 private:
    void ReadLine(std::string_view line, std::string& section);

    std::map<std::string, std::string, std::less<>> m_values;  // by "section\nkey" in lower case
};

}  // namespace mailer
