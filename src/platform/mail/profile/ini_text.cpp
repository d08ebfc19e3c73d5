// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/mail/profile/ini_text.h"

#include "platform/base/ascii.h"

namespace mailer {
namespace {

std::string Name(std::string_view section, std::string_view key) {
    return ToLower(section) + "\n" + ToLower(key);
}

bool IsBlank(char c) {
    return c == ' ' || c == '\t';
}

std::string_view WithoutComment(std::string_view line) {
    for (std::size_t at = 0; at < line.size(); ++at) {
        if (line[at] == ';' && (at == 0 || IsBlank(line[at - 1]))) {
            return line.substr(0, at);
        }
    }
    return line;
}

std::string Value(std::string_view raw) {
    const std::string_view start = Trim(raw);
    if (start.size() > 1 && start.front() == '"') {
        const std::size_t close = start.rfind('"');
        // Only a comment may follow the closing quote; otherwise the quote is part of the text.
        if (close > 0 && Trim(WithoutComment(Trim(start.substr(close + 1)))).empty()) {
            return WithoutControls(start.substr(1, close - 1));
        }
    }
    return WithoutControls(Trim(WithoutComment(raw)));
}

}  // namespace

IniText::IniText(std::string_view text) {
    constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";
    if (text.starts_with(ByteOrderMark)) {
        text.remove_prefix(ByteOrderMark.size());
    }
    std::string section;
    while (!text.empty()) {
        const std::size_t end = text.find_first_of("\r\n");
        ReadLine(text.substr(0, end), section);
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
}

void IniText::ReadLine(std::string_view line, std::string& section) {
    const std::string_view trimmed = Trim(line);
    if (trimmed.empty() || trimmed.front() == ';' || trimmed.front() == '#') {
        return;
    }
    if (trimmed.front() == '[') {
        const std::size_t close = trimmed.find(']');
        section = close == std::string_view::npos ? "" : std::string(Trim(trimmed.substr(1, close - 1)));
        return;
    }
    const std::size_t equals = line.find('=');
    if (equals != std::string_view::npos) {
        m_values[Name(section, Trim(line.substr(0, equals)))] = Value(line.substr(equals + 1));
    }
}

std::optional<std::string> IniText::Find(std::string_view section, std::string_view key) const {
    const auto found = m_values.find(Name(section, key));
    return found == m_values.end() ? std::nullopt : std::optional(found->second);
}

}  // namespace mailer
