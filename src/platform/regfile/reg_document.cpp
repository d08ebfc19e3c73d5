// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/regfile/reg_document.h"

#include <algorithm>

#include "platform/base/ascii.h"
#include "platform/base/text.h"
#include "platform/regfile/utf16.h"

namespace {

constexpr std::string_view FirstLine = "Windows Registry Editor Version 5.00";
constexpr std::string_view OldFirstLine = "REGEDIT4";
constexpr std::string_view Blanks = " \t\r";  // a line that goes on holds line feeds

std::string PlainText(std::string_view bytes) {
    if (bytes.substr(0, 2) == "\xff\xfe") {
        return Utf8OfUtf16(bytes.substr(2));
    }
    return std::string(bytes.substr(0, 3) == "\xef\xbb\xbf" ? bytes.substr(3) : bytes);
}

// Removes and returns the first line, with the lines that continue a long value after a backslash.
std::string TakeLine(std::string_view& rest) {
    std::string line;
    bool isBytes = false;
    do {
        const std::string_view piece = rest.substr(0, rest.find('\n'));
        rest.remove_prefix(std::min(rest.size(), piece.size() + 1));
        const std::string_view trimmed = Trim(piece, Blanks);
        isBytes = isBytes || trimmed.find("=hex") != std::string_view::npos;
        line.append(line.empty() ? "" : "\n  ").append(trimmed);
    } while (isBytes && line.back() == '\\' && !rest.empty());
    return line;
}

// Removes and returns the name of a value line, with its equals sign. The default value has the name @.
std::optional<std::string> TakeName(std::string_view& line) {
    std::optional<std::string> name;
    if (!line.empty() && line.front() == '@') {
        line.remove_prefix(1);
        name = "";
    } else {
        name = TakeQuotedReg(line);
    }
    line = Trim(line, Blanks);
    if (!name || line.empty() || line.front() != '=') {
        return std::nullopt;
    }
    line = Trim(line.substr(1), Blanks);
    return name;
}

}  // namespace

RegDocument::RegDocument(std::string_view bytes) {
    const std::string text = PlainText(bytes);
    std::string_view rest = text;
    bool isFirst = true;
    while (!rest.empty()) {
        const std::string line = TakeLine(rest);
        const bool isHeader = isFirst && (line == FirstLine || line == OldFirstLine);
        m_damaged = m_damaged || (isFirst && !isHeader);
        if (!isHeader) {
            ReadLine(line);
        }
        isFirst = false;
    }
    while (!m_lines.empty() && m_lines.front().text.empty()) {
        m_lines.erase(m_lines.begin());
    }
}

void RegDocument::ReadLine(const std::string& line) {
    const std::size_t current = m_lines.empty() ? 0 : m_lines.back().key;
    const bool isComment = line.empty() || line.front() == ';';
    if (isComment) {
        m_lines.push_back({line, current, std::nullopt});
    } else if (!ReadKeyLine(line) && !ReadValueLine(line)) {
        m_damaged = true;
    }
}

bool RegDocument::ReadKeyLine(std::string_view line) {
    if (line.size() < 3 || line.front() != '[' || line.back() != ']' ||
        line.find('\0') != std::string_view::npos) {
        return false;
    }
    m_keys.emplace_back(line.substr(1, line.size() - 2));
    m_lines.push_back({std::string(line), m_keys.size() - 1, std::nullopt});
    return true;
}

bool RegDocument::ReadValueLine(const std::string& line) {
    std::string_view rest = line;
    auto name = TakeName(rest);
    const std::size_t current = m_lines.empty() ? 0 : m_lines.back().key;
    if (!name || current == 0 || (rest != "-" && !ReadRegValue(rest))) {
        return false;
    }
    m_lines.push_back({line, current, std::move(name)});
    return true;
}

// A key may occur twice in a file; the last occurrence counts, as in an import of the file.
std::optional<std::size_t> RegDocument::KeyNumber(std::string_view key) const {
    for (std::size_t number = m_keys.size(); number-- > 1;) {
        if (SameText(m_keys[number], key)) {
            return number;
        }
    }
    return std::nullopt;
}

bool RegDocument::HasKey(std::string_view key) const {
    return std::any_of(m_keys.begin() + 1, m_keys.end(), [key](std::string_view known) {
        return SameText(known, key) || (known.size() > key.size() && known[key.size()] == '\\' &&
                                        SameText(known.substr(0, key.size()), key));
    });
}

std::optional<RegValue> RegDocument::Value(std::string_view key, std::string_view name) const {
    for (auto line = m_lines.rbegin(); line != m_lines.rend(); ++line) {
        if (line->name && SameText(*line->name, name) && SameText(m_keys[line->key], key)) {
            std::string_view rest = line->text;
            TakeName(rest);
            return ReadRegValue(rest);
        }
    }
    return std::nullopt;
}

void RegDocument::AddKey(std::string_view key) {
    if (KeyNumber(key)) {
        return;
    }
    m_keys.emplace_back(key);
    if (!m_lines.empty() && !m_lines.back().text.empty()) {
        m_lines.push_back({"", m_lines.back().key, std::nullopt});
    }
    m_lines.push_back({"[" + std::string(key) + "]", m_keys.size() - 1, std::nullopt});
}

void RegDocument::SetValue(std::string_view key, std::string_view name, const RegValue& value) {
    AddKey(key);
    const std::string text = WriteRegValue(value);
    for (auto line = m_lines.rbegin(); line != m_lines.rend(); ++line) {
        if (line->name && SameText(*line->name, name) && SameText(m_keys[line->key], key)) {
            line->text = (line->name->empty() ? "@" : QuoteReg(*line->name)) + "=" + text;
            return;
        }
    }
    const std::size_t number = *KeyNumber(key);
    const auto last = std::find_if(m_lines.rbegin(), m_lines.rend(), [number](const Line& line) {
        return line.key == number && !line.text.empty();
    });
    m_lines.insert(last.base(),
                   {(name.empty() ? "@" : QuoteReg(name)) + "=" + text, number, std::string(name)});
}

std::string RegDocument::Text() const {
    std::string text(FirstLine);
    text += "\n\n";
    for (const Line& line : m_lines) {
        text += line.text + "\n";
    }
    return text;
}
