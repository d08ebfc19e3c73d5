// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/sqlite/dialect.h"

#include <cstddef>
#include <vector>

#include "platform/data_provider/statement_words.h"

namespace {

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

    const Token* Next(std::size_t index) const { return NextToken(m_tokens, index); }

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
        } else if (m_levels.back().orders && HoldsMoments(token) && EndsOrderTerm(next)) {
            m_result += " collate moment";
        }
    }

    bool IsCompared(const Token* next) const {
        return IsMark(m_previous, {"=", "==", "<>", "!=", "<", ">", "<=", ">="}) ||
               IsWord(m_previous, {"between", "and", "when"}) ||
               IsMark(next, {"=", "==", "<>", "!=", "<", ">", "<=", ">="}) ||
               IsWord(next, {"in", "not", "between"});
    }

    // Keeps `top` and the number after it for the end of its select. A column named top stays.
    void SkipTop() {
        const std::size_t number = NumberOfTop(m_tokens, m_index);
        if (number < m_tokens.size()) {
            m_levels.back().limit = m_tokens[number].text;
            m_index = number;
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
