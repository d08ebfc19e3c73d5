// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/new_report/names.h"

#include "platform/base/ascii.h"
#include "platform/base/text.h"
#include "rdl/api/identifier.h"

namespace designer {
namespace {

constexpr std::size_t LongestName = 60;  // in characters

bool IsLower(char c) {
    return c >= 'a' && c <= 'z';
}

bool IsUpper(char c) {
    return c >= 'A' && c <= 'Z';
}

std::string AsIdentifier(std::string_view wanted) {
    std::string name;
    bool isGap = false;
    for (std::size_t at = 0; at < wanted.size();) {
        const std::string_view character = wanted.substr(at, CharacterAt(wanted, at).length);
        at += character.length();
        if (!rdl::IsIdentifier("_" + std::string(character))) {
            isGap = !name.empty();
            continue;
        }
        name += isGap ? "_" : "";
        name += character;
        isGap = false;
    }
    name = FirstCharacters(name, LongestName);
    if (name.empty()) {
        return "Column";
    }
    return rdl::IsIdentifier(name) ? name : "_" + name;
}

}  // namespace

std::string Names::Add(std::string_view wanted) {
    const std::string base = AsIdentifier(wanted);
    std::string name = base;
    for (int number = 2; !m_taken.insert(ToLower(name)).second; ++number) {
        name = base + "_" + std::to_string(number);
    }
    return name;
}

std::string CaptionOf(std::string_view column) {
    std::string caption;
    for (std::size_t at = 0; at < column.size(); ++at) {
        const char c = column[at];
        if (IsUpper(c) && at > 0 && IsLower(column[at - 1])) {
            caption += ' ';
        }
        caption += c == '_' ? ' ' : c;
    }
    caption = Trim(caption);
    if (!caption.empty() && IsLower(caption.front())) {
        caption.front() = static_cast<char>(caption.front() - 'a' + 'A');
    }
    return caption.empty() ? std::string(column) : caption;
}

}  // namespace designer
