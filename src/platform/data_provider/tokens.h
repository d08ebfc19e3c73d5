// SPDX-License-Identifier: GPL-3.0-or-later
// Splits a statement into tokens. It follows SQLite's own rules, so that both agree on what is a text or a
// comment.
#pragma once

#include <string_view>
#include <vector>

enum class TokenKind {
    Blank,  // blanks and comments
    Word,   // keyword or plain name
    Name,   // name in double quotes, backticks or square brackets
    Text,   // text in single quotes
    Number,
    Mark  // one operator, comma, parenthesis ...
};

struct Token {
    TokenKind kind;
    std::string_view text;  // of the statement, quotes included
};

// Returns tokens that cover every byte of the statement. A text, name or comment without an end extends to
// the end of the statement.
std::vector<Token> Tokenize(std::string_view statement);
