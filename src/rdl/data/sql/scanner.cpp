// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/data/sql/scanner.h"

#include "rdl/values/ascii.h"

namespace rdl::data {

bool SqlScanner::IsComment(std::size_t at) const {
    const std::string_view rest = m_text.substr(at);
    return rest.front() == '-' || rest.front() == '#' ||
           (rest.starts_with("/*") && !rest.starts_with("/*+") && !rest.starts_with("/*!") &&
            !rest.starts_with("/*M!"));
}

bool SqlScanner::HasEscapeMark(std::size_t at) const {
    return at > 0 && (m_text[at - 1] == 'e' || m_text[at - 1] == 'E') &&
           (at == 1 || !IsNameByte(m_text[at - 2]));
}

std::size_t SqlScanner::QuotedEnd(std::size_t at) const {
    const std::string_view rest = m_text.substr(at);
    const bool brackets = m_dialect != ProviderKind::PostgreSql && m_dialect != ProviderKind::MySql;
    switch (rest.front()) {
        case '\'':
        case '"':
        case '`':
            return StringEnd(at, rest.front());
        case '[':
            return brackets ? StringEnd(at, ']') : at;
        case '-':
            return rest.starts_with("--") && !IsDoubleMinus(rest) ? LineEnd(at) : at;
        case '#':
            return m_dialect == ProviderKind::MySql ? LineEnd(at) : at;
        case '/':
            return rest.starts_with("/*") ? BlockEnd(at) : at;
        case '$':
            return m_dialect == ProviderKind::PostgreSql ? DollarEnd(at) : at;
        case ':':
            return rest.starts_with("::") ? at + 2 : at;
        case '@':
            return rest.starts_with("@@") ? at + 2 : at;
        default:
            return at;
    }
}

std::size_t SqlScanner::After(std::string_view mark, std::size_t from) const {
    const std::size_t at = m_text.find(mark, from);
    return at == std::string_view::npos ? m_text.size() : at + mark.size();
}

std::size_t SqlScanner::LineEnd(std::size_t at) const {
    // PostgreSQL ends a comment at each of the two.
    const std::size_t end = m_text.find_first_of(m_dialect == ProviderKind::PostgreSql ? "\r\n" : "\n", at);
    return end == std::string_view::npos ? m_text.size() : end + 1;
}

// Comments stand within comments in PostgreSQL and SQL Server.
std::size_t SqlScanner::BlockEnd(std::size_t at) const {
    if (m_dialect != ProviderKind::PostgreSql && m_dialect != ProviderKind::SqlServer) {
        return After("*/", at + 2);
    }
    int depth = 1;
    for (at += 2; at < m_text.size() && depth > 0;) {
        const std::string_view two = m_text.substr(at, 2);
        depth += two == "/*" ? 1 : two == "*/" ? -1 : 0;
        at += two == "/*" || two == "*/" ? 2 : 1;
    }
    return at;
}

// The closing mark doubled is a part of the text.
std::size_t SqlScanner::StringEnd(std::size_t begin, char close) const {
    const bool escapes = (m_dialect == ProviderKind::MySql && close != '`') ||
                         (m_dialect == ProviderKind::PostgreSql && close == '\'' && HasEscapeMark(begin));
    for (std::size_t at = begin + 1; at < m_text.size(); ++at) {
        if (escapes && m_text[at] == '\\') {
            ++at;
        } else if (m_text[at] == close) {
            if (at + 1 >= m_text.size() || m_text[at + 1] != close) {
                return at + 1;
            }
            ++at;
        }
    }
    return m_text.size();
}

// MySQL's comment needs a blank after the marks: 5--1 is 6 there.
bool SqlScanner::IsDoubleMinus(std::string_view rest) const {
    return m_dialect == ProviderKind::MySql && rest.size() > 2 && static_cast<unsigned char>(rest[2]) > ' ';
}

// $$ ... $$ and $tag$ ... $tag$.
std::size_t SqlScanner::DollarEnd(std::size_t begin) const {
    // Within a name it is a character of it, and a tag is a name.
    if (begin > 0 && IsNameByte(m_text[begin - 1])) {
        return begin;
    }
    std::size_t at = begin + 1;
    if (at < m_text.size() && m_text[at] >= '0' && m_text[at] <= '9') {
        return begin;
    }
    while (at < m_text.size() && IsNameByte(m_text[at])) {
        ++at;
    }
    if (at >= m_text.size() || m_text[at] != '$') {
        return begin;
    }
    return After(m_text.substr(begin, at + 1 - begin), at + 1);
}

}  // namespace rdl::data
