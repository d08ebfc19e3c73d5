// SPDX-License-Identifier: GPL-3.0-or-later
// The text of a settings file, line by line. Lines that are not changed stay as they were written: comments,
// keys of other programs, the order.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/regfile/reg_value.h"

class RegDocument {
 public:
    // Reads UTF-8, or UTF-16LE with a byte order mark, with any line ends. A line that cannot be read is left
    // out and marks the document as damaged.
    explicit RegDocument(std::string_view bytes);

    bool IsDamaged() const { return m_damaged; }
    // Keys include their root: HKEY_LOCAL_MACHINE\Software\X. A key above another key exists as well. Keys
    // and names are compared without regard to case.
    bool HasKey(std::string_view key) const;
    std::optional<RegValue> Value(std::string_view key, std::string_view name) const;
    void AddKey(std::string_view key);
    void SetValue(std::string_view key, std::string_view name, const RegValue& value);
    // Returns UTF-8 with the file's first line.
    std::string Text() const;

 private:
    struct Line {
        std::string text;
        std::size_t key;                  // index of the key that the line belongs to
        std::optional<std::string> name;  // of a line with a value
    };

    void ReadLine(const std::string& line);
    bool ReadKeyLine(std::string_view line);
    bool ReadValueLine(const std::string& line);
    std::optional<std::size_t> KeyNumber(std::string_view key) const;

    std::vector<std::string> m_keys{""};  // the first entry stands for the lines before the first key
    std::vector<Line> m_lines;
    bool m_damaged = false;
};
