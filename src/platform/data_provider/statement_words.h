// SPDX-License-Identifier: GPL-3.0-or-later
// Questions about the tokens of a statement, for the translators of the dialect.
#pragma once

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <string_view>
#include <vector>

#include "platform/base/text.h"
#include "platform/data_provider/tokens.h"

// Returns the index of the first token from `index` on that is not blank, or the number of tokens.
inline std::size_t SkipBlankTokens(const std::vector<Token>& tokens, std::size_t index) {
    while (index < tokens.size() && tokens[index].kind == TokenKind::Blank) {
        ++index;
    }
    return index;
}

// Returns the first token from `index` on that is not blank, or null.
inline const Token* NextToken(const std::vector<Token>& tokens, std::size_t index) {
    const std::size_t at = SkipBlankTokens(tokens, index);
    return at < tokens.size() ? &tokens[at] : nullptr;
}

// These return false for null.
inline bool IsWord(const Token* token, std::initializer_list<std::string_view> words) {
    return token != nullptr && token->kind == TokenKind::Word &&
           std::any_of(words.begin(), words.end(),
                       [token](std::string_view word) { return SameText(token->text, word); });
}

inline bool IsMark(const Token* token, std::initializer_list<std::string_view> marks) {
    return token != nullptr && token->kind == TokenKind::Mark &&
           std::find(marks.begin(), marks.end(), token->text) != marks.end();
}

inline bool IsWholeNumber(const Token* token) {
    return token != nullptr && token->kind == TokenKind::Number &&
           token->text.find_first_not_of("0123456789") == std::string_view::npos;
}

// Returns the index of the number in `top NUMBER` after the word at `index`, or the number of tokens: a
// column named top has no number after it.
inline std::size_t NumberOfTop(const std::vector<Token>& tokens, std::size_t index) {
    const std::size_t top = SkipBlankTokens(tokens, index + 1);
    const std::size_t number = SkipBlankTokens(tokens, top + 1);
    return number < tokens.size() && IsWholeNumber(&tokens[number]) ? number : tokens.size();
}

// Returns a plain or quoted name without its quotes, and an empty text for any other token.
inline std::string_view NameOf(const Token& token) {
    if (token.kind == TokenKind::Name && token.text.size() > 2) {
        return token.text.substr(1, token.text.size() - 2);
    }
    return token.kind == TokenKind::Word ? token.text : std::string_view();
}

// Returns true for the column that holds moments as texts in several forms.
inline bool HoldsMoments(const Token& token) {
    return SameText(NameOf(token), "lastrun");
}

// Returns true if a term of `order by` may end before this token.
inline bool EndsOrderTerm(const Token* next) {
    return next == nullptr || IsMark(next, {",", ")", ";"}) ||
           IsWord(next, {"asc", "desc", "nulls", "limit", "union", "except", "intersect"});
}
