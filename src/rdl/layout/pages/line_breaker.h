// Where a line of text may end.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace rdl::layout {

// A piece of text that is never broken, unless it is wider than a line. `end` includes the spaces behind it;
// `visibleEnd` does not, as they hang over the line's end.
struct BreakUnit {
    std::size_t begin = 0, visibleEnd = 0, end = 0;
    bool hardBreak = false;  // the line ends behind it
};

// Bytes of the UTF-8 character at `at`, at least 1; never past the end. `code` is 0xFFFD where it is
// malformed.
std::size_t DecodeCharacter(std::string_view text, std::size_t at, char32_t& code);

// A line that ends so shows a hyphen there; within a line it shows nothing.
bool EndsWithSoftHyphen(std::string_view text);

// Units in order; line feeds and carriage returns belong to no unit. After spaces and hyphens, soft ones too,
// and around ideographs, but not before closing punctuation.
void FindBreaks(std::string_view text, std::vector<BreakUnit>& units);

}  // namespace rdl::layout
