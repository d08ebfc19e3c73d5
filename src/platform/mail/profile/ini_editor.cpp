// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/mail/profile/ini_editor.h"

#include <algorithm>
#include <optional>

#include "platform/base/ascii.h"
#include "platform/contracts/runtime.h"
#include "platform/mail/profile/ini_text.h"

namespace mailer {
namespace {

constexpr std::int32_t InvalidValue = 5;

// Returns the value that IniText reads from the line.
std::optional<std::string> ReadBack(const std::string& line, std::string_view key) {
    return IniText(line).Find("", key);
}

// Returns the comment at the end of a line with the blanks before it, or an empty text.
std::string_view CommentOf(std::string_view value) {
    const std::string_view start = Trim(value);
    std::size_t from = 0;
    if (start.size() > 1 && start.front() == '"') {
        const std::size_t close = value.rfind('"');
        const std::string_view rest = Trim(value.substr(close + 1));
        from = rest.empty() || rest.front() == ';' ? close + 1 : 0;
    }
    for (std::size_t at = from; at < value.size(); ++at) {
        if (value[at] == ';' && at > 0 && (value[at - 1] == ' ' || value[at - 1] == '\t')) {
            const std::size_t last = value.substr(0, at).find_last_not_of(" \t");
            return value.substr(last == std::string_view::npos ? 0 : last + 1);
        }
    }
    return {};
}

// Writes the value without quotes if IniText reads it back correctly.
std::string Written(const std::string& before, std::string_view key, std::string_view value) {
    std::string plain = before + std::string(value);
    return ReadBack(plain, key) == value ? plain : before + "\"" + std::string(value) + "\"";
}

// Returns the line with another value; the text before the value and the comment after it stay.
std::string Rewritten(const std::string& old, std::string_view key, std::string_view value,
                      const std::string& lineEnd) {
    const std::size_t afterSign = old.find('=') + 1;
    const std::size_t start = old.find_first_not_of(" \t", afterSign);
    const bool hasValue = start != std::string::npos && old[start] != ';';
    const std::string comment(CommentOf(std::string_view(old).substr(afterSign)));
    std::string changed = Written(old.substr(0, hasValue ? start : afterSign), key, value);
    if (ReadBack(changed + comment, key) == value) {
        return changed.append(comment);
    }
    // After this value the comment would be read as part of it.
    return std::string(Trim(comment)).append(lineEnd).append(changed);
}

}  // namespace

IniEditor::IniEditor(std::string_view text) : m_text(text) {}

std::vector<IniEditor::Line> IniEditor::Lines() const {
    constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";
    std::vector<Line> lines;
    std::string section;
    std::size_t at = m_text.starts_with(ByteOrderMark) ? ByteOrderMark.size() : 0;
    while (at < m_text.size()) {
        const std::size_t end = std::min(m_text.find_first_of("\r\n", at), m_text.size());
        const bool two = m_text.compare(end, 2, "\r\n") == 0;
        Line line{at, end, std::min(end + (two ? 2 : 1), m_text.size()), {}, {}, false};
        const std::string_view text = std::string_view(m_text).substr(at, end - at);
        const std::string_view trimmed = Trim(text);
        const std::size_t equals = text.find('=');
        if (trimmed.starts_with('[')) {
            const std::size_t close = trimmed.find(']');
            section = close == std::string_view::npos ? "" : ToLower(Trim(trimmed.substr(1, close - 1)));
            line.isHeader = true;
        } else if (!trimmed.starts_with(';') && !trimmed.starts_with('#') &&
                   equals != std::string_view::npos) {
            line.key = ToLower(Trim(text.substr(0, equals)));
        }
        line.section = section;
        lines.push_back(line);
        at = line.next;
    }
    return lines;
}

std::string IniEditor::LineEnd() const {
    const std::size_t end = m_text.find_first_of("\r\n");
    if (end == std::string::npos) {
        return "\n";
    }
    return m_text.compare(end, 2, "\r\n") == 0 ? "\r\n" : m_text.substr(end, 1);
}

void IniEditor::Set(std::string_view section, std::string_view key, std::string_view value) {
    if (HasControls(value)) {
        throw RuntimeError(InvalidValue, std::string(key) + " cannot hold a line feed, a tab or another " +
                                             "control character");
    }
    const std::string lowSection = ToLower(section);
    const std::string lowKey = ToLower(key);
    std::vector<Line> lines = Lines();
    std::erase_if(lines, [&](const Line& line) { return line.section != lowSection || line.key != lowKey; });
    const bool isNew = lines.empty();
    // From the end, so that the offsets of earlier lines stay valid.
    for (auto line = lines.rbegin(); line != lines.rend(); ++line) {
        if (line != lines.rbegin() || value.empty()) {
            m_text.erase(line->begin, line->next - line->begin);
            continue;
        }
        const std::string old = m_text.substr(line->begin, line->end - line->begin);
        m_text.replace(line->begin, old.size(), Rewritten(old, key, value, LineEnd()));
    }
    if (isNew && !value.empty()) {
        Append(std::string(section), Written(std::string(key) + "=", key, value));
    }
}

void IniEditor::Append(const std::string& section, const std::string& assignment) {
    const std::string lineEnd = LineEnd();
    std::optional<std::size_t> place;
    for (const Line& line : Lines()) {
        if (line.section == ToLower(section) && (line.isHeader || !line.key.empty())) {
            place = line.next;
        }
    }
    const auto closeLine = [&](std::size_t at) {
        if (at > 0 && m_text[at - 1] != '\n' && m_text[at - 1] != '\r') {
            m_text.insert(at, lineEnd);
            return at + lineEnd.size();
        }
        return at;
    };
    if (place) {
        m_text.insert(closeLine(*place), assignment + lineEnd);
        return;
    }
    if (!Lines().empty()) {
        closeLine(m_text.size());
        m_text += lineEnd;
    }
    m_text += "[" + section + "]" + lineEnd + assignment + lineEnd;
}

}  // namespace mailer
