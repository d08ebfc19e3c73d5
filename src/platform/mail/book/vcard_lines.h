// SPDX-License-Identifier: GPL-3.0-or-later
// The lines of a vCard file, unfolded, decoded and split into their parts (RFC 6350, sections 3.2 and 3.3).
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace mailer {

// One content line: [group.]NAME;PARAM=a,b;PARAM2=c:value
struct CardLine {
    struct Parameter {
        std::string name;   // upper case; TYPE for a bare word as in version 2.1
        std::string value;  // without quotes
    };
    std::string name;  // upper case, without its group
    std::vector<Parameter> parameters;
    std::string value;  // UTF-8, transfer encoding decoded, backslashes kept
};

// Returns every content line of the text in order. Other lines, and lines longer than `longestLine` bytes,
// are skipped.
std::vector<CardLine> ReadCardLines(std::string_view text, std::size_t longestLine = 65536);

// Splits a value at unescaped separators and resolves the backslashes of each part (RFC 6350, section 3.4).
std::vector<std::string> SplitCardValue(std::string_view value, char separator);
std::string UnescapedCardValue(std::string_view value);

}  // namespace mailer
