// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/formula/lexer.h"

#include <charconv>
#include <cmath>

#include "rdl/format/format.h"
#include "rdl/values/ascii.h"
#include "rdl/values/error.h"
#include "rdl/values/utf8.h"

namespace rdl::formula {
void FailAt(std::size_t position, const std::string& what) {
    std::string text = "Record selection formula: " + what + ", at character " + std::to_string(position + 1);
    for (char& c : text) {
        if (c == '\'') {
            c = '"';
        } else if (static_cast<unsigned char>(c) < ' ') {
            c = ' ';
        }
    }
    throw Error(text);
}

// Counts on from the word before, so that a long formula is read once.
std::size_t Lexer::Position() {
    m_characters += CharacterCount(m_text.substr(m_counted, m_at - m_counted));
    m_counted = m_at;
    return m_characters;
}

void Lexer::SkipBlanks() {
    while (m_at < m_text.size()) {
        if (IsAsciiSpace(m_text[m_at])) {
            ++m_at;
        } else if (m_text.substr(m_at).starts_with("//")) {
            m_at = std::min(m_text.find('\n', m_at), m_text.size());
        } else {
            return;
        }
    }
}

Token Lexer::Next() {
    SkipBlanks();
    if (m_at >= m_text.size()) {
        return {TokenKind::End, "", {}, Position()};
    }
    const char c = m_text[m_at];
    if (c == '"' || c == '\'') {
        return TextConstant();
    }
    if (c == '#') {
        return DateConstant();
    }
    if (c == '{') {
        return Braces();
    }
    if (IsAsciiDigit(c) || (c == '.' && m_at + 1 < m_text.size() && IsAsciiDigit(m_text[m_at + 1]))) {
        return Number();
    }
    if (!IsNameByte(c)) {
        return Mark();
    }
    Token token{TokenKind::Word, "", {}, Position()};
    while (m_at < m_text.size() && IsNameByte(m_text[m_at])) {
        token.text.push_back(AsciiLower(m_text[m_at++]));
    }
    return token;
}

Token Lexer::TextConstant() {
    Token token{TokenKind::Constant, "", {}, Position()};
    const char close = m_text[m_at++];
    std::string text;
    for (; m_at < m_text.size(); ++m_at) {
        if (m_text[m_at] != close) {
            text.push_back(m_text[m_at]);
        } else if (m_at + 1 < m_text.size() && m_text[m_at + 1] == close) {
            text.push_back(m_text[m_at++]);
        } else {
            ++m_at;
            token.value = Value::Text(text);
            token.text = text;
            return token;
        }
    }
    FailAt(token.position, "a text has no closing mark");
}

Token Lexer::DateConstant() {
    Token token{TokenKind::Constant, "", {}, Position()};
    const std::size_t end = m_text.find('#', m_at + 1);
    if (end == std::string_view::npos) {
        FailAt(token.position, "a date has no closing #");
    }
    token.text = Trimmed(m_text.substr(m_at + 1, end - m_at - 1));
    std::int64_t ticks = 0;
    if (!ParseDateTime(token.text, FindCulture("en-US"), ticks)) {
        FailAt(token.position, "\"" + token.text + "\" is no date");
    }
    token.value = Value::DateTime(ticks);
    m_at = end + 1;
    return token;
}

Token Lexer::Number() {
    Token token{TokenKind::Constant, "", {}, Position()};
    const char* begin = m_text.data() + m_at;
    const char* end = m_text.data() + m_text.size();
    std::int64_t whole = 0;
    const auto integer = std::from_chars(begin, end, whole);
    double real = 0;
    const auto number = std::from_chars(begin, end, real, std::chars_format::general);
    if (number.ec != std::errc() || !std::isfinite(real)) {
        FailAt(token.position, "a number is too large");
    }
    const bool isWhole = integer.ec == std::errc() && integer.ptr == number.ptr;
    token.value = isWhole ? Value::Integer(whole) : Value::Real(real);
    token.text.assign(begin, number.ptr);
    m_at += token.text.size();
    if (m_at < m_text.size() && IsNameByte(m_text[m_at])) {
        FailAt(token.position,
               "\"" + token.text + std::string(Slice(m_text.substr(m_at), 0, 1)) + "\" is no number");
    }
    return token;
}

Token Lexer::Braces() {
    Token token{TokenKind::Field, "", {}, Position()};
    const std::size_t end = m_text.find('}', m_at);
    if (end == std::string_view::npos) {
        FailAt(token.position, "a field has no closing }");
    }
    std::string_view name = Trimmed(m_text.substr(m_at + 1, end - m_at - 1));
    if (name.starts_with('?')) {
        token.kind = TokenKind::Parameter;
        name = Trimmed(name.substr(1));
    }
    if (name.empty()) {
        FailAt(token.position, "the braces hold no name");
    }
    if (name.front() == '@' || name.front() == '#' || name.front() == '%') {
        FailAt(token.position, "{" + std::string(name) + "} is neither a field nor a parameter");
    }
    token.text = name;
    m_at = end + 1;
    return token;
}

Token Lexer::Mark() {
    Token token{TokenKind::Mark, "", {}, Position()};
    for (const std::string_view mark :
         {"<>", "<=", ">=", "<", ">", "=", "+", "-", "*", "/", "\\", "^", "&", "(", ")", "[", "]", ","}) {
        if (m_text.substr(m_at).starts_with(mark)) {
            token.text = mark;
            m_at += mark.size();
            return token;
        }
    }
    FailAt(token.position, "the character \"" + std::string(1, m_text[m_at]) + "\" has no meaning");
}

}  // namespace rdl::formula
