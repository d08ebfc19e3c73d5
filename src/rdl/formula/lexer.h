// The words of a formula.
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
    std::string text;          // Word in small letters; what stands in the braces; the mark: <= ( ...
    Value value;               // Constant: text, number, date
    std::size_t position = 0;  // of its first character, from 0, in characters
    bool Is(std::string_view what) const {
        return (kind == TokenKind::Word || kind == TokenKind::Mark) && text == what;
    }
};

[[noreturn]] void FailAt(std::size_t position, const std::string& what);

class Lexer {
 public:
    explicit Lexer(std::string_view text) : m_text(text) {}
    // Raises rdl::Error for a character that begins nothing and for texts, dates and braces without an end.
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
    std::size_t m_counted = 0, m_characters = 0;  // up to this byte there are so many
};

}  // namespace rdl::formula
