// SPDX-License-Identifier: GPL-3.0-or-later
// Splits a formula into tokens.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "rdl/values/value.h"

namespace rdl::formula {

enum class TokenKind : std::uint8_t { End, Word, Constant, Field, Parameter, Mark };

struct Token {
    TokenKind kind = TokenKind::End;
    std::string text;          // a Word in lower case; the name inside braces; a mark: <= ( ...
    Value value;               // for a Constant: text, number or date
    std::size_t position = 0;  // of its first character, in characters from 0
    bool Is(std::string_view what) const {
        return (kind == TokenKind::Word || kind == TokenKind::Mark) && text == what;
    }
};

// Raises rdl::Error with `what` and the position, which counts from 0.
[[noreturn]] void FailAt(std::size_t position, const std::string& what);

class Lexer {
 public:
    explicit Lexer(std::string_view text) : m_text(text) {}
    // Returns the next token, End after the last. Raises rdl::Error for a character that starts no token and
    // for unterminated texts, dates and braces.
    Token Next();

 private:
    void SkipBlanks();
    std::size_t Position();
    Token TextConstant();
    Token DateConstant();
    Token Number();
    Token Braces();
    Token Mark();

    std::string_view m_text;
    std::size_t m_at = 0;
    std::size_t m_counted = 0, m_characters = 0;  // a byte offset and the number of characters before it
};

}  // namespace rdl::formula
