// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/data/sql/reading_statement.h"

#include <algorithm>
#include <initializer_list>
#include <string>
#include <vector>

#include "rdl/data/common/message.h"
#include "rdl/data/sql/scanner.h"
#include "rdl/values/ascii.h"
#include "rdl/values/error.h"

namespace rdl::data {
namespace {

enum class TokenKind { Word, Name, Text, Mark };

struct Token {
    TokenKind kind = TokenKind::Mark;
    std::string text;  // words in lower case, names without their quotes, one mark
};

[[noreturn]] void Refuse(const std::string& why) {
    throw Error("a report only reads: " + why);
}

// A statement without its comments. Raises for what a server could read otherwise than it is read here.
class Tokens {
 public:
    Tokens(std::string_view text, ProviderKind dialect)
        : m_text(text), m_dialect(dialect), m_scanner(text, dialect) {
        if (text.find('\0') != std::string_view::npos) {
            Refuse("the query has a NUL in it");
        }
        while (m_at < m_text.size()) {
            const std::size_t end = m_scanner.QuotedEnd(m_at);
            if (end > m_at) {
                TakeQuoted(end);
            } else if (IsWordBegin()) {
                TakeWord();
            } else {
                TakeMark();
            }
        }
    }
    std::vector<Token> Take() { return std::move(m_tokens); }

 private:
    // SQL Server's own variables and tables of the session are words with their first mark.
    bool IsWordBegin() const {
        const char c = m_text[m_at];
        return IsNameByte(c) || (m_dialect == ProviderKind::SqlServer && (c == '@' || c == '#'));
    }

    void TakeWord() {
        std::size_t end = m_at + 1;
        while (end < m_text.size() &&
               (IsNameByte(m_text[end]) || m_text[end] == '$' ||
                (m_dialect == ProviderKind::SqlServer && (m_text[end] == '@' || m_text[end] == '#')))) {
            ++end;
        }
        m_tokens.push_back({TokenKind::Word, LowerAscii(m_text.substr(m_at, end - m_at))});
        m_at = end;
    }

    void TakeMark() {
        if (static_cast<unsigned char>(m_text[m_at]) > ' ') {
            m_tokens.push_back({TokenKind::Mark, std::string(1, m_text[m_at])});
        }
        ++m_at;
    }

    void TakeQuoted(std::size_t end) {
        const std::string_view quoted = m_text.substr(m_at, end - m_at);
        if (quoted.starts_with("/*!") || quoted.starts_with("/*M!")) {
            if (m_dialect == ProviderKind::MySql || m_dialect == ProviderKind::Odbc) {
                Refuse("the query has a comment that the server runs (/*!)");
            }
        } else if (quoted.starts_with("/*")) {
            if (m_dialect == ProviderKind::Odbc && quoted.find("/*", 2) != std::string_view::npos) {
                Refuse("the query has a comment within a comment");
            }
        } else if (m_scanner.IsComment(m_at)) {
            const std::size_t line = quoted.find('\r');
            if (m_dialect != ProviderKind::PostgreSql && line != std::string_view::npos &&
                line + 2 != quoted.size()) {
                Refuse("the query has a comment with a carriage return in it");
            }
        } else if (quoted == "::" || quoted == "@@") {
            m_tokens.push_back({TokenKind::Mark, std::string(quoted)});
        } else {
            TakeText(quoted);
        }
        m_at = end;
    }

    void TakeText(std::string_view quoted) {
        const char open = quoted.front();
        if (m_dialect == ProviderKind::PostgreSql && open == '\'' && !m_scanner.HasEscapeMark(m_at) &&
            m_at > 0 && IsNameByte(m_text[m_at - 1]) && quoted.find('\\') != std::string_view::npos) {
            Refuse("the query has a text whose beginning is not clear");
        }
        const bool isName = open == '"' || open == '[' || open == '`';
        const std::string inner(quoted.substr(1, quoted.size() < 2 ? 0 : quoted.size() - 2));
        m_tokens.push_back({isName ? TokenKind::Name : TokenKind::Text, isName ? LowerAscii(inner) : inner});
    }

    std::string_view m_text;
    ProviderKind m_dialect;
    SqlScanner m_scanner;
    std::size_t m_at = 0;
    std::vector<Token> m_tokens;
};

class Statement {
 public:
    explicit Statement(std::vector<Token> tokens) : m_tokens(std::move(tokens)) {}

    // Brackets, and the {?= of a procedure's call, may stand before it.
    const Token& First() const {
        static const Token Nothing;
        for (const Token& token : m_tokens) {
            if (token.kind != TokenKind::Mark || !IsOneOf(token.text, {"(", "{", "?", "="})) {
                return token;
            }
        }
        return Nothing;
    }

    void CheckFirst(std::initializer_list<std::string_view> allowed) const {
        const Token& first = First();
        if (first.kind == TokenKind::Mark && first.text.empty()) {
            throw Error("the query is empty");
        }
        if (first.kind != TokenKind::Word || !IsOneOf(first.text, allowed)) {
            Refuse("the query begins with \"" + CleanText(first.text) + "\"");
        }
    }

    // For servers that enforce read-only themselves, this check may miss a write.
    void CheckStatement() const {
        for (std::size_t i = 0; i < m_tokens.size(); ++i) {
            CheckFunction(i);
            if (IsWord(i, {"into"})) {
                Refuse("the query has the word INTO");
            }
            const bool mayBegin =
                i > 0 && m_tokens[i - 1].kind == TokenKind::Mark && IsOneOf(m_tokens[i - 1].text, {"(", ")"});
            const bool goesOn = i + 1 < m_tokens.size() && (m_tokens[i + 1].kind == TokenKind::Word ||
                                                            m_tokens[i + 1].kind == TokenKind::Name);
            if (mayBegin && goesOn && IsWord(i, {"insert", "update", "delete", "merge", "replace"})) {
                RefuseWord(i);
            }
        }
    }

    void CheckBatch() const {
        for (std::size_t i = 0; i < m_tokens.size(); ++i) {
            if (IsWord(i, {"grant",          "revoke",     "deny",
                           "backup",         "restore",    "bulk",
                           "dbcc",           "shutdown",   "kill",
                           "reconfigure",    "openrowset", "openquery",
                           "opendatasource", "writetext",  "updatetext",
                           "commit",         "rollback",   "implicit_transactions",
                           "save",           "checkpoint", "setuser",
                           "trigger",        "dump",       "load",
                           "receive"})) {
                RefuseWord(i);
            } else if (IsWord(i, {"insert", "update", "delete", "merge", "into", "truncate", "create", "drop",
                                  "alter"})) {
                CheckTarget(i);
            } else if (IsWord(i, {"exec", "execute", "call"})) {
                CheckCall(i);
            }
        }
    }

 private:
    bool IsWord(std::size_t at, std::initializer_list<std::string_view> words) const {
        return at < m_tokens.size() && m_tokens[at].kind == TokenKind::Word &&
               IsOneOf(m_tokens[at].text, words);
    }
    bool IsMark(std::size_t at, std::string_view mark) const {
        return at < m_tokens.size() && m_tokens[at].kind == TokenKind::Mark && m_tokens[at].text == mark;
    }

    [[noreturn]] void RefuseWord(std::size_t at) const {
        Refuse("the query has the word " + UpperAscii(m_tokens[at].text));
    }

    // Functions that load a library into this process (SQLite by ODBC), or write in spite of a session that
    // reads (large objects of PostgreSQL). A quoted name is the same function.
    void CheckFunction(std::size_t at) const {
        const Token& token = m_tokens[at];
        if ((token.kind == TokenKind::Word || token.kind == TokenKind::Name) &&
            (IsOneOf(token.text, {"load_extension", "fts3_tokenizer", "readfile", "writefile", "load_file",
                                  "lowrite", "pg_read_file", "pg_read_binary_file"}) ||
             IsOneOf(token.text.substr(0, 6),
                     {"lo_cre", "lo_fro", "lo_imp", "lo_exp", "lo_put", "lo_unl", "lo_tru"}))) {
            RefuseWord(at);
        }
    }

    // Only what ends with the session is written to: #table and @table.
    void CheckTarget(std::size_t verb) const {
        std::size_t at = verb + 1;
        if (IsWord(verb, {"create"}) && IsWord(at, {"index", "unique", "clustered", "nonclustered"})) {
            while (at < m_tokens.size() && !IsWord(at, {"on"})) {
                ++at;
            }
            ++at;
        } else if (IsWord(verb, {"create", "drop", "alter", "truncate"})) {
            at += IsWord(at, {"table"}) ? 1 : m_tokens.size();
        }
        while (IsWord(at, {"into", "from", "if", "exists"})) {
            ++at;
        }
        if (at >= m_tokens.size() || IsMark(at + 1, ".") ||
            (m_tokens[at].kind != TokenKind::Word && m_tokens[at].kind != TokenKind::Name) ||
            m_tokens[at].text.starts_with("##") ||
            !(m_tokens[at].text.starts_with('#') ||
              (m_tokens[at].kind == TokenKind::Word && m_tokens[at].text.starts_with('@')))) {
            RefuseWord(verb);
        }
    }

    void CheckCall(std::size_t verb) const {
        std::size_t at = verb + 1;
        if (at < m_tokens.size() && m_tokens[at].text.starts_with('@') && IsMark(at + 1, "=")) {
            at += 2;
        }
        std::size_t last = m_tokens.size();
        for (; at < m_tokens.size(); at += 2) {
            while (IsMark(at, ".")) {
                ++at;
            }
            if (at >= m_tokens.size() ||
                (m_tokens[at].kind != TokenKind::Word && m_tokens[at].kind != TokenKind::Name)) {
                break;
            }
            last = at;
            if (!IsMark(at + 1, ".")) {
                break;
            }
        }
        if (last == m_tokens.size() || m_tokens[last].text.starts_with('@') || IsWord(last, {"as"})) {
            Refuse("the query calls something that is no procedure's name");
        }
        const std::string& name = m_tokens[last].text;
        if (name.starts_with("sp_") || name.starts_with("xp_")) {
            Refuse("the query calls \"" + CleanText(name) + "\", a procedure of the server's own");
        }
    }

    std::vector<Token> m_tokens;
};

}  // namespace

void CheckReads(std::string_view text, ProviderKind dialect) {
    const Statement statement(Tokens(text, dialect).Take());
    switch (dialect) {
        case ProviderKind::SqlServer:
            statement.CheckFirst({"select", "with", "declare", "set", "if", "while", "begin", "exec",
                                  "execute", "call", "create", "insert", "update", "delete", "drop",
                                  "truncate", "print", "use"});
            statement.CheckBatch();
            return;
        case ProviderKind::MySql:
            statement.CheckFirst({"select", "with", "values", "table", "show", "describe", "desc", "call"});
            break;
        case ProviderKind::PostgreSql:
            statement.CheckFirst({"select", "with", "values", "table", "show", "call"});
            break;
        default:
            statement.CheckFirst({"select", "with", "values", "table", "call"});
            break;
    }
    statement.CheckStatement();
}

}  // namespace rdl::data
