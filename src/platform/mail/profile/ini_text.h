// SPDX-License-Identifier: GPL-3.0-or-later
// Reads texts with sections of `key = value` lines.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace mailer {

// Sections and keys are found without regard to case; the last of several lines with a key counts. A `;` at
// the start of a line or after a blank begins a comment, and so does a `#` at the start of a line. A value in
// double quotes is taken unchanged. Other lines are skipped. Values never hold control characters except the
// tab.
class IniText {
 public:
    explicit IniText(std::string_view text);  // UTF-8, with or without byte order mark, any line ends

    // Returns nullopt if the key is missing, and an empty text if it has no value.
    std::optional<std::string> Find(std::string_view section, std::string_view key) const;

 private:
    void ReadLine(std::string_view line, std::string& section);

    std::map<std::string, std::string, std::less<>> m_values;  // by "section\nkey" in lower case
};

}  // namespace mailer
