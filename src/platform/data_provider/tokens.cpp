// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/data_provider/tokens.h"

#include <cstddef>

#include "platform/base/ascii.h"

namespace {

bool IsBlank(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f';
}
bool IsWordStart(char c) {
    return IsAsciiLetter(c) || c == '_' || static_cast<unsigned char>(c) >= 0x80;
}
bool IsWordCharacter(char c) {
    return IsWordStart(c) || IsAsciiDigit(c) || c == '$';
}

// Returns the offset after the first `end` at or after `from`, or the end of the text.
std::size_t After(std::string_view text, std::string_view end, std::size_t from) {
    const std::size_t at = text.find(end, from);
    return at == std::string_view::npos ? text.size() : at + end.size();
}

// Returns the length of the quoted text at the front, where a doubled mark is the mark itself.
std::size_t QuotedLength(std::string_view text) {
    const char mark = text.front();
    for (std::size_t at = 1; at < text.size(); ++at) {
        if (text[at] != mark) {
            continue;
        }
        if (at + 1 >= text.size() || text[at + 1] != mark) {
            return at + 1;
        }
        ++at;
    }
    return text.size();
}

template <typename Test>
std::size_t LengthWhile(std::string_view text, Test test) {
    std::size_t length = 0;
    while (length < text.size() && test(text[length])) {
        ++length;
    }
    return length;
}

std::size_t MarkLength(std::string_view text) {
    for (const std::string_view two : {"<=", ">=", "<>", "!=", "==", "||"}) {
        if (text.substr(0, 2) == two) {
            return 2;
        }
    }
    return 1;
}

Token FirstToken(std::string_view text) {
    const auto piece = [text](TokenKind kind, std::size_t length) {
        return Token{kind, text.substr(0, length)};
    };
    const char first = text.front();
    if (IsBlank(first)) {
        return piece(TokenKind::Blank, LengthWhile(text, IsBlank));
    }
    if (text.substr(0, 2) == "--") {
        return piece(TokenKind::Blank, After(text, "\n", 2));
    }
    if (text.substr(0, 2) == "/*") {
        return piece(TokenKind::Blank, After(text, "*/", 2));
    }
    switch (first) {
        case '\'':
            return piece(TokenKind::Text, QuotedLength(text));
        case '"':
        case '`':
            return piece(TokenKind::Name, QuotedLength(text));
        case '[':
            return piece(TokenKind::Name, After(text, "]", 1));
        default:
            break;
    }
    if (IsWordStart(first)) {
        return piece(TokenKind::Word, LengthWhile(text, IsWordCharacter));
    }
    if (IsAsciiDigit(first)) {
        return piece(TokenKind::Number,
                     LengthWhile(text, [](char c) { return IsWordCharacter(c) || c == '.'; }));
    }
    return piece(TokenKind::Mark, MarkLength(text));
}

}  // namespace

std::vector<Token> Tokenize(std::string_view statement) {
    std::vector<Token> tokens;
    while (!statement.empty()) {
        tokens.push_back(FirstToken(statement));
        statement.remove_prefix(tokens.back().text.size());
    }
    return tokens;
}
