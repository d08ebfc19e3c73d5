// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/base/file_name.h"

#include <algorithm>

#include "platform/contracts/runtime.h"

namespace {

constexpr std::size_t LongestTitle = 120;  // bytes; every file system leaves space for the extension
constexpr std::size_t LongestShown = 80;

bool IsControl(char c) {
    return static_cast<unsigned char>(c) < 0x20 || c == 0x7F;
}

bool IsLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

// Never cuts inside a character.
std::string_view Cut(std::string_view text, std::size_t length) {
    if (text.size() <= length) {
        return text;
    }
    while (length > 0 && (static_cast<unsigned char>(text[length]) & 0xC0) == 0x80) {
        --length;
    }
    return text.substr(0, length);
}

bool StaysInFolder(std::string_view piece) {
    const bool isDrive = piece.size() == 2 && IsLetter(piece[0]) && piece[1] == ':';
    return !isDrive && piece.size() <= LongestFileName &&
           piece.find_first_not_of('.') != std::string_view::npos &&
           std::none_of(piece.begin(), piece.end(), IsControl);
}

[[noreturn]] void Refuse(std::string_view name) {
    std::string shown(Cut(name, LongestShown));
    std::replace_if(shown.begin(), shown.end(), IsControl, '?');
    throw RuntimeError(err::PathNotFound, RuntimeError(err::PathNotFound).Description() + ": \"" + shown +
                                              (shown.size() < name.size() ? "..." : "") +
                                              "\" is not a file name");
}

}  // namespace

std::string SafeFileName(std::string_view text, std::string_view nameless) {
    constexpr std::string_view RefusedElsewhere = "/\\:*?\"<>|";
    std::string name(text);
    std::replace_if(
        name.begin(), name.end(),
        [&](char c) { return IsControl(c) || RefusedElsewhere.find(c) != std::string_view::npos; }, '_');
    name = Cut(name, LongestTitle);
    const std::size_t first = name.find_first_not_of(" .");
    if (first == std::string::npos) {
        return std::string(nameless);
    }
    return name.substr(first, name.find_last_not_of(" .") - first + 1);
}

void RequireFileName(std::string_view name) {
    for (std::size_t begin = 0; begin <= name.size();) {
        const std::size_t end = std::min(name.find_first_of("/\\", begin), name.size());
        if (!StaysInFolder(name.substr(begin, end - begin))) {
            Refuse(name);
        }
        begin = end + 1;
    }
}
