// Words of an expression, or of report-level code.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "rdl/values/value.h"

namespace rdl::expr {

struct Token {
    enum class Type { End, NewLine, Word, Literal, Symbol } type = Type::End;
    std::string text;   // of a word as written; of a symbol in its one form (<> also for != and ><)
    std::string lower;  // of a word: what names are compared by
    Value literal;
    bool escaped = false;      // [a word in brackets] is never a keyword
    bool spaceBefore = false;  // white space stands in front of it
    std::size_t position = 0;  // byte in the source, from 0
    int line = 1;

    bool Is(std::string_view symbol) const { return type == Type::Symbol && text == symbol; }
    bool IsWord(std::string_view word) const { return type == Type::Word && !escaped && lower == word; }
};

// Code keeps its line ends as words; ' begins a remark in it. In an expression ' may also enclose a text
// where a value is due: some report designers write it so.
enum class LexMode { Expression, Code };

struct LexError {
    std::string what;
    std::size_t position;
    int line;
};

// The last token is End. Raises LexError.
std::vector<Token> Lex(std::string_view source, LexMode mode);

}  // namespace rdl::expr
