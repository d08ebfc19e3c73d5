// The lines of a vCard file: unfolded, decoded, taken apart.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace mailer {

// One content line: [group.]NAME;PARAM=a,b;PARAM2=c:value
struct CardLine {
    struct Parameter {
        std::string name;   // upper case; TYPE for a bare word, as version 2.1 writes them
        std::string value;  // without quotes
    };
    std::string name;  // upper case, without its group
    std::vector<Parameter> parameters;
    std::string value;  // UTF-8, transfer encoding undone, backslashes as they stand
};

// Every content line of the text in order; what is none is passed over. Bounded by `longestLine` bytes for a
// line: a longer one is dropped.
std::vector<CardLine> ReadCardLines(std::string_view text, std::size_t longestLine = 65536);

// Splits at unescaped separators and undoes the backslashes of each piece.
std::vector<std::string> SplitCardValue(std::string_view value, char separator);
std::string UnescapedCardValue(std::string_view value);

}  // namespace mailer
