// The text of a settings file, line by line, so that what is not changed stays as it was written: comments,
// other programs' keys, the order.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/regfile/reg_value.h"

class RegDocument {
 public:
    // UTF-8, or UTF-16LE with its mark; any line ends. What cannot be read is left out and makes it damaged.
    explicit RegDocument(std::string_view bytes);

    bool IsDamaged() const { return m_damaged; }
    // Keys with their root: HKEY_LOCAL_MACHINE\Software\X. A key above another one is there, too. Keys and
    // names are looked for without regard to case.
    bool HasKey(std::string_view key) const;
    std::optional<RegValue> Value(std::string_view key, std::string_view name) const;
    void AddKey(std::string_view key);
    void SetValue(std::string_view key, std::string_view name, const RegValue& value);
    // UTF-8 with the file's first line.
    std::string Text() const;

 private:
    struct Line {
        std::string text;
        std::size_t key;                  // number of the key that it stands under
        std::optional<std::string> name;  // of a value
    };

    void ReadLine(const std::string& line);
    bool ReadKeyLine(std::string_view line);
    bool ReadValueLine(const std::string& line);
    std::optional<std::size_t> KeyNumber(std::string_view key) const;

    std::vector<std::string> m_keys{""};  // the first stands for what is above every key
    std::vector<Line> m_lines;
    bool m_damaged = false;
};
