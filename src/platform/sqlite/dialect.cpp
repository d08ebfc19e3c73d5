// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/sqlite/dialect.h"

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <vector>

#include "platform/base/text.h"
#include "platform/sqlite/tokens.h"

namespace {

// The column that holds moments as texts in several forms.
constexpr std::string_view MomentColumn = "lastrun";

bool IsWord(const Token* token, std::initializer_list<std::string_view> words) {
    return token != nullptr && token->kind == TokenKind::Word &&
           std::any_of(words.begin(), words.end(),
                       [token](std::string_view word) { return SameText(token->text, word); });
}

bool IsMark(const Token* token, std::initializer_list<std::string_view> marks) {
    return token != nullptr && token->kind == TokenKind::Mark &&
           std::find(marks.begin(), marks.end(), token->text) != marks.end();
}

bool IsWholeNumber(const Token* token) {
    return token != nullptr && token->kind == TokenKind::Number &&
           token->text.find_first_not_of("0123456789") == std::string_view::npos;
}

class Translator {
 public:
    explicit Translator(std::string_view statement) : m_tokens(Tokenize(statement)), m_levels(1) {}

    std::string Translate() {
        m_comparesTexts = IsWord(Next(0), {"select", "insert", "update", "delete", "replace", "with"});
        while (m_index < m_tokens.size()) {
            const Token& token = m_tokens[m_index];
            if (token.kind == TokenKind::Blank) {
                m_result += token.text;
            } else {
                Take(token);
                m_lastEnd = m_result.size();
                m_previous = &token;
            }
            ++m_index;
        }
        EndSelect();
        return m_result;
    }

 private:
    // The state of one pair of parentheses, or of the statement outside them.
    struct Level {
        std::string_view limit;  // empty: no `top`
        bool orders = false;     // after its `order by`
    };

    // Returns the first token from `index` on that is not blank, or null.
    const Token* Next(std::size_t index) const {
        while (index < m_tokens.size() && m_tokens[index].kind == TokenKind::Blank) {
            ++index;
        }
        return index < m_tokens.size() ? &m_tokens[index] : nullptr;
    }

    void Take(const Token& token) {
        const Token* next = Next(m_index + 1);
        if (IsMark(&token, {"("})) {
            m_levels.emplace_back();
        } else if (IsMark(&token, {")", ";"})) {
            EndSelect();
            if (token.text == ")" && m_levels.size() > 1) {
                m_levels.pop_back();
            }
        } else if (IsWord(&token, {"by"})) {
            m_levels.back().orders = IsWord(m_previous, {"order"});
        }
        if (IsWord(&token, {"left"}) && IsMark(next, {"("})) {
            m_result += "\"left\"";
            return;
        }
        m_result += token.text;
        if (token.kind == TokenKind::Text && m_comparesTexts && IsCompared(next)) {
            m_result += " collate nocase";
        } else if (IsWord(&token, {"select", "distinct", "all"}) && IsWord(next, {"top"})) {
            SkipTop();
        } else if (m_levels.back().orders && HoldsMoments(token) && EndsTerm(next)) {
            m_result += " collate moment";
        }
    }

    static bool HoldsMoments(const Token& token) {
        std::string_view name = token.text;
        if (token.kind == TokenKind::Name && name.size() > 2) {
            name = name.substr(1, name.size() - 2);
        } else if (token.kind != TokenKind::Word) {
            return false;
        }
        return SameText(name, MomentColumn);
    }

    static bool EndsTerm(const Token* next) {
        return next == nullptr || IsMark(next, {",", ")", ";"}) ||
               IsWord(next, {"asc", "desc", "nulls", "limit", "union", "except", "intersect"});
    }

    bool IsCompared(const Token* next) const {
        return IsMark(m_previous, {"=", "==", "<>", "!=", "<", ">", "<=", ">="}) ||
               IsWord(m_previous, {"between", "and", "when"}) ||
               IsMark(next, {"=", "==", "<>", "!=", "<", ">", "<=", ">="}) ||
               IsWord(next, {"in", "not", "between"});
    }

    // Keeps `top` and the number after it for the end of its select. A column named top stays.
    void SkipTop() {
        const Token* top = Next(m_index + 1);
        const Token* number = Next(static_cast<std::size_t>(top - m_tokens.data()) + 1);
        if (IsWholeNumber(number)) {
            m_levels.back().limit = number->text;
            m_index = static_cast<std::size_t>(number - m_tokens.data());
        }
    }

    // The limit goes after the last word of its select and before a comment that may follow.
    void EndSelect() {
        Level& level = m_levels.back();
        if (!level.limit.empty()) {
            m_result.insert(m_lastEnd, " limit " + std::string(level.limit));
        }
        level = {};
    }

    std::vector<Token> m_tokens;
    std::vector<Level> m_levels;  // of the statement and of each open parenthesis
    std::string m_result;
    std::size_t m_index = 0;
    std::size_t m_lastEnd = 0;  // after the last token of the result that is not blank
    const Token* m_previous = nullptr;
    bool m_comparesTexts = false;
};

}  // namespace

std::string TranslateDialect(std::string_view statement) {
    return Translator(statement).Translate();
}

bool IsBlankStatement(std::string_view rest) {
    const std::vector<Token> tokens = Tokenize(rest);
    return std::all_of(tokens.begin(), tokens.end(), [](const Token& token) {
        return token.kind == TokenKind::Blank || (token.kind == TokenKind::Mark && token.text == ";");
    });
}
