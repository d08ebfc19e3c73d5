// SPDX-License-Identifier: GPL-3.0-or-later
// Tokens of an expression or of report-level code.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "rdl/values/value.h"

namespace rdl::expr {

struct Token {
    enum class Type { End, NewLine, Word, Literal, Symbol } type = Type::End;
    std::string text;   // a word as written; a symbol in its canonical form (<> for != and ><)
    std::string lower;  // a word in lower case, for comparing names
    Value literal;
    bool escaped = false;      // [a word in brackets] is not a keyword
    bool spaceBefore = false;  // white space precedes it
    std::size_t position = 0;  // characters before it in the source
    int line = 1;

    bool Is(std::string_view symbol) const { return type == Type::Symbol && text == symbol; }
    bool IsWord(std::string_view word) const { return type == Type::Word && !escaped && lower == word; }
};

// In code, line ends are tokens and ' starts a comment. In an expression ' may also enclose a text where a
// value is expected: some report designers write it that way.
enum class LexMode { Expression, Code };

struct LexError {
    std::string what;
    std::size_t position;
    int line;
};

// Returns the tokens of `source`, the last one End. Raises LexError.
std::vector<Token> Lex(std::string_view source, LexMode mode);

}  // namespace rdl::expr
