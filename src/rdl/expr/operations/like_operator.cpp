// SPDX-License-Identifier: GPL-3.0-or-later
#include <string>

#include "rdl/expr/operations/operators.h"
#include "rdl/values/utf8.h"

namespace rdl::expr {
namespace {

// Matches one character against the pattern element at `at`, which is not *; `next` is the position after the
// element.
bool MatchesElement(char32_t c, std::u32string_view pattern, std::size_t at, std::size_t& next, bool& valid) {
    next = at + 1;
    switch (pattern[at]) {
        case U'?':
            return true;
        case U'#':
            return c >= U'0' && c <= U'9';
        case U'[':
            break;
        default:
            return c == pattern[at];
    }
    const std::size_t close = pattern.find(U']', at + 1);
    if (close == std::u32string_view::npos) {
        valid = false;
        return false;
    }
    next = close + 1;
    std::u32string_view list = pattern.substr(at + 1, close - at - 1);
    const bool negated = list.size() > 1 && list[0] == U'!';
    list.remove_prefix(negated ? 1 : 0);
    bool found = false;
    for (std::size_t i = 0; i < list.size() && !found; ++i) {
        if (i + 2 < list.size() && list[i + 1] == U'-') {
            found = c >= list[i] && c <= list[i + 2];
            i += 2;
        } else {
            found = c == list[i];
        }
    }
    return found != negated;
}

}  // namespace

// One star is gone back to at most, which bounds the work by the product of both lengths.
bool MatchesVisualBasicLike(std::string_view textUtf8, std::string_view patternUtf8, bool& valid) {
    const std::u32string text = ToUtf32(textUtf8);
    const std::u32string pattern = ToUtf32(patternUtf8);
    valid = true;
    std::size_t t = 0;
    std::size_t p = 0;
    std::size_t star = std::u32string::npos;
    std::size_t starText = 0;
    while (valid && (t < text.size() || p < pattern.size())) {
        if (p < pattern.size() && pattern[p] == U'*') {
            star = ++p;
            starText = t;
            continue;
        }
        std::size_t next = 0;
        if (p + 1 < pattern.size() && pattern[p] == U'[' && pattern[p + 1] == U']') {
            p += 2;
            continue;
        }
        if (t < text.size() && p < pattern.size() && MatchesElement(text[t], pattern, p, next, valid)) {
            ++t;
            p = next;
            continue;
        }
        if (star == std::u32string::npos || starText >= text.size()) {
            return false;
        }
        t = ++starText;
        p = star;
    }
    return valid;
}

}  // namespace rdl::expr
