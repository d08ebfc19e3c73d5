// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/data/sql/query_names.h"

#include <algorithm>

#include "rdl/data/sql/scanner.h"
#include "rdl/values/ascii.h"

namespace rdl::data {
namespace {

class NameFinder {
 public:
    NameFinder(std::string_view text, ProviderKind provider)
        : m_text(text), m_scanner(text, provider), m_provider(provider) {}

    std::vector<std::string> Run() {
        while (m_at < m_text.size()) {
            if (const std::size_t quoted = m_scanner.QuotedEnd(m_at); quoted > m_at) {
                m_last = m_scanner.IsComment(m_at) ? m_last : m_text[m_at];
                m_at = quoted;
            } else if (IsMark() && NameEnd(m_at + 1) > m_at + 1) {
                TakeName();
            } else if (IsNameByte(m_text[m_at])) {
                TakeWord();
            } else {
                TakeOther();
            }
        }
        std::erase_if(m_names, [&](const std::string& name) {
            return std::any_of(m_own.begin(), m_own.end(),
                               [&](const std::string& own) { return EqualNoCase(own, name); });
        });
        return m_names.empty() ? std::vector<std::string>(m_marks, "?") : m_names;
    }

 private:
    bool IsMark() const {
        const char c = m_text[m_at];
        return (c == '@' || c == ':' || (c == '$' && m_provider == ProviderKind::Sqlite)) &&
               (m_at == 0 || !IsNameByte(m_text[m_at - 1])) &&
               (m_at + 1 >= m_text.size() || !IsAsciiDigit(m_text[m_at + 1]));
    }

    std::size_t NameEnd(std::size_t at) const {
        while (at < m_text.size() && IsNameByte(m_text[at])) {
            ++at;
        }
        return at;
    }

    void TakeName() {
        const std::size_t end = NameEnd(m_at + 1);
        const std::string name(m_text.substr(m_at, end - m_at));
        const std::size_t next = std::min(m_text.find_first_not_of(" \t\r\n", end), m_text.size());
        const bool isDeclared = m_isDeclaring && (m_last == ',' || m_last == 'd');
        if (isDeclared || m_text.substr(next, 2) == ":=") {
            m_own.push_back(name);
        }
        if (std::none_of(m_names.begin(), m_names.end(),
                         [&](const std::string& known) { return EqualNoCase(known, name); })) {
            m_names.push_back(name);
        }
        m_last = '@';
        m_at = end;
    }

    // What DECLARE declares ends where another statement begins.
    void TakeWord() {
        const std::size_t end = NameEnd(m_at);
        const std::string word = LowerAscii(m_text.substr(m_at, end - m_at));
        const bool begins =
            IsOneOf(word, {"select", "with", "set", "insert", "update", "exec", "execute", "if"});
        m_isDeclaring = word == "declare" || (m_isDeclaring && !begins);
        m_last = word == "declare" ? 'd' : 'w';
        m_at = end;
    }

    void TakeOther() {
        const char c = m_text[m_at++];
        m_marks += c == '?' && m_provider != ProviderKind::PostgreSql ? 1 : 0;
        m_isDeclaring = m_isDeclaring && c != ';';
        m_last = IsAsciiSpace(c) ? m_last : c;
    }

    std::string_view m_text;
    SqlScanner m_scanner;
    ProviderKind m_provider;
    std::size_t m_at = 0, m_marks = 0;
    char m_last = ';';  // what stands before, without white space; d: the word DECLARE, w: another one
    bool m_isDeclaring = false;
    std::vector<std::string> m_names, m_own;
};

}  // namespace

std::vector<std::string> NamesInQuery(std::string_view text, ProviderKind provider) {
    return NameFinder(text, provider).Run();
}

}  // namespace rdl::data
