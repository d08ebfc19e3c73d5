#include "platform/sqlite/dialect.h"

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <vector>

#include "platform/letters.h"
#include "platform/sqlite/tokens.h"

namespace {

bool IsWord(const Token* token, std::initializer_list<std::string_view> words) {
    return token != nullptr && token->kind == TokenKind::Word &&
           std::any_of(words.begin(), words.end(),
                       [token](std::string_view word) { return SameLetters(token->text, word); });
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
    explicit Translator(std::string_view statement) : m_tokens(Tokenize(statement)), m_limits(1) {}

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
    // The first token from `index` on that is no blank.
    const Token* Next(std::size_t index) const {
        while (index < m_tokens.size() && m_tokens[index].kind == TokenKind::Blank) {
            ++index;
        }
        return index < m_tokens.size() ? &m_tokens[index] : nullptr;
    }

    void Take(const Token& token) {
        const Token* next = Next(m_index + 1);
        if (IsMark(&token, {"("})) {
            m_limits.emplace_back();
        } else if (IsMark(&token, {")", ";"})) {
            EndSelect();
            if (token.text == ")" && m_limits.size() > 1) {
                m_limits.pop_back();
            }
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
        }
    }

    bool IsCompared(const Token* next) const {
        return IsMark(m_previous, {"=", "==", "<>", "!=", "<", ">", "<=", ">="}) ||
               IsWord(m_previous, {"between", "and", "when"}) ||
               IsMark(next, {"=", "==", "<>", "!=", "<", ">", "<=", ">="}) ||
               IsWord(next, {"in", "not", "between"});
    }

    // `top` with a number behind it is kept for the end of its select; a column of that name stays.
    void SkipTop() {
        const Token* top = Next(m_index + 1);
        const Token* number = Next(static_cast<std::size_t>(top - m_tokens.data()) + 1);
        if (IsWholeNumber(number)) {
            m_limits.back() = number->text;
            m_index = static_cast<std::size_t>(number - m_tokens.data());
        }
    }

    // The limit belongs behind the last word of its select, in front of a comment that may follow.
    void EndSelect() {
        std::string_view& limit = m_limits.back();
        if (!limit.empty()) {
            m_result.insert(m_lastEnd, " limit " + std::string(limit));
            limit = {};
        }
    }

    std::vector<Token> m_tokens;
    std::vector<std::string_view> m_limits;  // one for each open parenthesis; empty: no `top` in it
    std::string m_result;
    std::size_t m_index = 0;
    std::size_t m_lastEnd = 0;  // behind the last token of the result that is no blank
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
