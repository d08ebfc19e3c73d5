// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/window/typed_change.h"

#include <algorithm>
#include <cstddef>

#include "designer/document/xml_text.h"

namespace designer {
namespace {

bool IsWithinCharacter(std::string_view text, std::size_t at) {
    return at < text.size() && (static_cast<unsigned char>(text[at]) & 0xC0) == 0x80;
}

}  // namespace

std::size_t OffsetIn(std::string_view text, std::size_t plainOffset) {
    std::size_t at = 0;
    for (std::size_t plain = 0; plain < plainOffset && at < text.size(); ++plain, ++at) {
        at += text.substr(at, 2) == "\r\n" ? 1 : 0;
    }
    return at;
}

std::string WithLineFeeds(std::string_view text) {
    std::string plain;
    plain.reserve(text.size());
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] == '\r') {
            at += text.substr(at, 2) == "\r\n" ? 1 : 0;
            plain += '\n';
        } else {
            plain += text[at];
        }
    }
    return plain;
}

TypedChange ChangeOf(std::string_view old, std::string_view typed, std::string_view lineEnd) {
    const std::string plain = WithLineFeeds(old);
    const std::size_t most = std::min(plain.size(), typed.size());
    auto begin = static_cast<std::size_t>(
        std::mismatch(plain.begin(), plain.begin() + static_cast<std::ptrdiff_t>(most), typed.begin()).first -
        plain.begin());
    while (begin > 0 && (IsWithinCharacter(plain, begin) || IsWithinCharacter(typed, begin))) {
        --begin;
    }
    std::size_t same = 0;  // at the end
    while (same < most - begin && plain[plain.size() - same - 1] == typed[typed.size() - same - 1]) {
        ++same;
    }
    while (same > 0 && IsWithinCharacter(plain, plain.size() - same)) {
        --same;
    }
    std::size_t end = plain.size() - same;
    std::string inserted(typed.substr(begin, typed.size() - same - begin));
    // A new element before another one: the < that both begin with is the first one's.
    if (begin == end && begin > 0 && plain[begin - 1] == '<' && inserted.ends_with('<')) {
        --begin;
        --end;
        inserted = "<" + inserted.substr(0, inserted.size() - 1);
    }
    const std::size_t offset = OffsetIn(old, begin);
    return {offset, OffsetIn(old, end) - offset, WithLineEnds(inserted, lineEnd)};
}

}  // namespace designer
