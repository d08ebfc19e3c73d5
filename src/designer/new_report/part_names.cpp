// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/new_report/part_names.h"

#include "platform/base/ascii.h"
#include "platform/base/text.h"
#include "rdl/api/identifier.h"

namespace designer {
namespace {

constexpr std::size_t LongestName = 60;  // in characters

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

}  // namespace designer
