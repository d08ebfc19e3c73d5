// The pieces of a statement. They follow SQLite's own rules, so that what is a text or a comment here is one
// there.
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

// Every byte of the statement lies in exactly one token. A text, name or comment without an end runs to the
// end.
std::vector<Token> Tokenize(std::string_view statement);
