// SPDX-License-Identifier: GPL-3.0-or-later
// What was typed into a text, as one change of the text that it was made from.
#pragma once

#include <string>
#include <string_view>

namespace designer {

struct TypedChange {
    std::size_t offset = 0;  // in the old text, as `removed`
    std::size_t removed = 0;
    std::string inserted;
    bool IsNone() const { return removed == 0 && inserted.empty(); }
    bool operator==(const TypedChange&) const = default;
};

// Returns the smallest change that makes `typed` of `old`, both UTF-8. An editor has line feeds only: line
// ends of `old` that the change does not touch stay as they are, and new ones are `lineEnd`. A change that
// can be described in several ways begins at a tag.
TypedChange ChangeOf(std::string_view old, std::string_view typed, std::string_view lineEnd);

// Returns where the byte of WithLineFeeds(text) is in the text itself.
std::size_t OffsetIn(std::string_view text, std::size_t plainOffset);

// Returns the text with line feeds for all its line ends.
std::string WithLineFeeds(std::string_view text);

}  // namespace designer
