// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/postgresql/dialect.h"

#include <vector>

#include "platform/base/ascii.h"
#include "platform/contracts/regional.h"
#include "platform/data_provider/statement_text.h"
#include "platform/data_provider/statement_words.h"
#include "platform/postgresql/select_order.h"

namespace {

const char* RegionWord() {
    switch (Regional().order) {
        case DateOrder::DayMonthYear:
            return "'dmy'";
        case DateOrder::MonthDayYear:
            return "'mdy'";
        default:
            return "'ymd'";
    }
}

// Raises an error for what PostgreSQL would read in another way than the tokens say.
void RefuseOwnForms(const std::vector<Token>& tokens) {
    const Token* before = nullptr;
    for (const Token& token : tokens) {
        if (token.kind == TokenKind::Text &&
            (IsWord(before, {"e", "b", "n", "x"}) || IsMark(before, {"&"}))) {
            RaiseSyntaxError("there is a text directly after \"" + std::string(before->text) + "\"");
        }
        if (IsMark(&token, {"$"})) {
            RaiseSyntaxError("there is a \"$\" in it");
        }
        before = &token;
    }
}

class Translator {
 public:
    Translator(std::string_view statement, InsertedKey key) : m_tokens(Tokenize(statement)) {
        RefuseOwnForms(m_tokens);
        m_returnsKey = key == InsertedKey::IsReturned && IsWord(Next(0), {"insert"});
    }

    std::string Translate() {
        if (Next(0) == nullptr || IsMark(Next(0), {";"})) {
            RaiseSyntaxError("it is empty");
        }
        for (; m_index < m_tokens.size() && !m_ended; ++m_index) {
            const Token& token = m_tokens[m_index];
            if (token.kind == TokenKind::Blank) {
                m_result += ' ';
            } else {
                Take(token);
            }
        }
        const Token* rest = Next(m_index);
        if (rest != nullptr && !IsMark(rest, {";"})) {
            RaiseSyntaxError("there is more after its end");
        }
        m_levels.back().End(m_result, SelectOrder::Level::Outermost);
        return m_returnsKey ? m_result + " returning rowid" : m_result;
    }

 private:
    const Token* Next(std::size_t index) const { return NextToken(m_tokens, index); }

    void Take(const Token& token) {
        const Token* next = Next(m_index + 1);
        if (IsMark(&token, {";"})) {
            m_ended = true;
            return;
        }
        if (IsMark(&token, {")"}) && m_levels.size() > 1) {
            m_levels.back().End(m_result, SelectOrder::Level::InParentheses);
            m_levels.pop_back();
        }
        m_levels.back().Before(token, m_result);
        Write(token, next);
        if (IsMark(&token, {"("})) {
            m_levels.emplace_back();
        } else {
            m_levels.back().After(token, next, m_result);
        }
        m_previous = &token;
    }

    void Write(const Token& token, const Token* next) {
        const bool isCall = IsMark(next, {"("});
        if (token.kind == TokenKind::Name) {
            WriteName(token);
        } else if (IsWord(&token, {"left"}) && isCall) {
            m_result += "store_left";
        } else if (IsWord(&token, {"datediff"}) && isCall) {
            m_index = SkipBlankTokens(m_tokens, m_index + 1);
            m_levels.emplace_back();
            m_result += std::string("store_datediff(") + RegionWord() + ",";
        } else if (IsWord(&token, {"now"}) && isCall) {
            SkipCall();
            m_result += "'" + NowText() + "'";
        } else if (IsWord(&token, {"not"}) && IsWord(next, {"like"})) {
            // A column sorts by its bytes, and the case of characters beyond A to Z is not known to those.
            m_result += "collate \"default\" not";
        } else if (IsWord(&token, {"like"})) {
            m_result += IsWord(m_previous, {"not"}) ? "like" : "collate \"default\" like";
        } else if (IsWord(&token, {"collate"}) && IsWord(next, {"nocase"})) {
            m_index = SkipBlankTokens(m_tokens, m_index + 1);
        } else if (token.text == "==") {
            m_result += "=";
        } else if (IsWord(&token, {"select", "distinct", "all"}) && IsWord(next, {"top"})) {
            m_result += token.text;
            SkipTop();
        } else {
            m_result += token.text;
            if (token.kind == TokenKind::Text && IsWord(m_previous, {"like"}) && !IsWord(next, {"escape"})) {
                m_result += " escape ''";
            }
        }
    }

    void WriteName(const Token& token) {
        m_result += '"';
        for (const char c : NameOf(token)) {
            m_result +=
                c == '"' && token.text.front() == '[' ? std::string("\"\"") : std::string(1, ToLower(c));
        }
        m_result += '"';
    }

    // Skips the parentheses of a call without arguments.
    void SkipCall() {
        const std::size_t open = SkipBlankTokens(m_tokens, m_index + 1);
        const std::size_t close = SkipBlankTokens(m_tokens, open + 1);
        if (close >= m_tokens.size() || !IsMark(&m_tokens[close], {")"})) {
            RaiseSyntaxError("the function Now takes no values");
        }
        m_index = close;
    }

    // Keeps `top` and the number after it for the end of its select. A column named top stays.
    void SkipTop() {
        const std::size_t number = NumberOfTop(m_tokens, m_index);
        if (number < m_tokens.size()) {
            m_levels.back().SetLimit(m_tokens[number].text);
            m_index = number;
        }
    }

    std::vector<Token> m_tokens;
    std::vector<SelectOrder> m_levels = std::vector<SelectOrder>(1);  // and one of each open parenthesis
    std::string m_result;
    std::size_t m_index = 0;
    const Token* m_previous = nullptr;
    bool m_returnsKey = false;
    bool m_ended = false;
};

// Returns the tokens of a statement that are not blank, without a semicolon at the end.
std::vector<Token> FullTokens(std::string_view statement) {
    std::vector<Token> tokens = Tokenize(statement);
    std::erase_if(tokens, [](const Token& token) { return token.kind == TokenKind::Blank; });
    while (!tokens.empty() && IsMark(&tokens.back(), {";"})) {
        tokens.pop_back();
    }
    return tokens;
}

}  // namespace

std::string MomentTerm(std::string_view term) {
    return std::string("store_moment(") + RegionWord() + "," + std::string(term) + ")";
}

std::string TranslateForServer(std::string_view statement, InsertedKey key) {
    RefuseZeroCharacter(statement);
    return Translator(statement, key).Translate();
}

bool MentionsRowOrder(std::string_view statement) {
    const std::vector<Token> tokens = Tokenize(statement);
    return std::any_of(tokens.begin(), tokens.end(),
                       [](const Token& token) { return SameText(NameOf(token), "rowid"); });
}

std::string TableOfNewestKey(std::string_view statement) {
    // select max ( key ) [as alias] from table
    std::vector<Token> tokens = FullTokens(statement);
    if (tokens.size() == 9 && IsWord(&tokens[5], {"as"})) {
        tokens.erase(tokens.begin() + 5, tokens.begin() + 7);
    }
    const bool is = tokens.size() == 7 && IsWord(&tokens[0], {"select"}) && IsWord(&tokens[1], {"max"}) &&
                    IsMark(&tokens[2], {"("}) && IsMark(&tokens[4], {")"}) && IsWord(&tokens[5], {"from"});
    return is ? ToLower(NameOf(tokens[6])) : std::string();
}

std::string TableOfInsert(std::string_view statement) {
    const std::vector<Token> tokens = FullTokens(statement);
    const bool is = tokens.size() > 2 && IsWord(&tokens[0], {"insert"}) && IsWord(&tokens[1], {"into"});
    return is ? ToLower(NameOf(tokens[2])) : std::string();
}
