// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/base/file_name.h"

#include <algorithm>

#include "platform/base/ascii.h"
#include "platform/base/text.h"
#include "platform/contracts/runtime.h"

namespace {

constexpr std::size_t LongestTitle = 120;  // bytes; every file system leaves space for the extension
constexpr std::size_t LongestShown = 80;

bool StaysInFolder(std::string_view piece) {
    const bool isDrive = piece.size() == 2 && IsAsciiLetter(piece[0]) && piece[1] == ':';
    return !isDrive && piece.size() <= LongestFileName &&
           piece.find_first_not_of('.') != std::string_view::npos &&
           std::none_of(piece.begin(), piece.end(), IsControl);
}

[[noreturn]] void Refuse(std::string_view name) {
    std::string shown(CutText(name, LongestShown));
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
    name = CutText(name, LongestTitle);
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
