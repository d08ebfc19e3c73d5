// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/expr/language/lexer.h"

#include <charconv>
#include <cmath>
#include <limits>

#include "rdl/format/format.h"
#include "rdl/values/ascii.h"
#include "rdl/values/characters.h"
#include "rdl/values/utf8.h"

namespace rdl::expr {
namespace {

bool IsWordStart(char c) {
    return IsNameByte(c) && !IsAsciiDigit(c);
}
bool IsDigitOf(int base, char c) {
    const int value = HexDigitValue(c);
    return value >= 0 && value < base;
}

class Lexer {
 public:
    Lexer(std::string_view source, LexMode mode) : m_source(source), m_mode(mode) {}

    std::vector<Token> Run() {
        while (SkipSpace()) {
            One();
        }
        Push(Token::Type::End, "", m_at);
        return std::move(m_tokens);
    }

 private:
    [[noreturn]] void Fail(std::string what, std::size_t position) const {
        throw LexError{std::move(what), CharacterCount(m_source.substr(0, position)), m_line};
    }

    char Peek(std::size_t ahead = 0) const {
        return m_at + ahead < m_source.size() ? m_source[m_at + ahead] : '\0';
    }
    bool StartsWith(std::string_view text) const { return m_source.substr(m_at, text.size()) == text; }

    Token& Push(Token::Type type, std::string text, std::size_t position) {
        Token& token = m_tokens.emplace_back();
        token.type = type;
        token.text = std::move(text);
        // Counts on from the token before, so that a long source is read once.
        if (position < m_counted) {
            m_counted = m_characters = 0;
        }
        m_characters += CharacterCount(m_source.substr(m_counted, position - m_counted));
        m_counted = position;
        token.position = m_characters;
        token.line = m_line;
        token.spaceBefore = m_space;
        m_space = false;
        return token;
    }
    void PushLiteral(Value value, std::size_t position) {
        Push(Token::Type::Literal, "", position).literal = std::move(value);
    }

    // Where a value is expected, some characters have another meaning than after a value.
    bool ValueDue() const {
        if (m_tokens.empty()) {
            return true;
        }
        const Token& last = m_tokens.back();
        if (last.type == Token::Type::Symbol) {
            return last.text != ")" && last.text != "}";
        }
        if (last.type == Token::Type::NewLine) {
            return true;
        }
        return last.type == Token::Type::Word && !last.escaped &&
               (last.lower == "and" || last.lower == "or" || last.lower == "not" || last.lower == "mod" ||
                last.lower == "like" || last.lower == "xor" || last.lower == "andalso" ||
                last.lower == "orelse" || last.lower == "is" || last.lower == "return" ||
                last.lower == "if" || last.lower == "case");
    }

    // Returns false at the end. In code, line ends become tokens unless the line is continued.
    bool SkipSpace() {
        while (m_at < m_source.size()) {
            const char c = m_source[m_at];
            if (c == '\n') {
                LineEnd();
            } else if (c == '\'' && (m_mode == LexMode::Code || !QuotedBySingle())) {
                SkipLine();
            } else if (c == ' ' || c == '\t' || c == '\r' || c == '\f' || c == '\v') {
                ++m_at;
            } else if (StartsWith("\xC2\xA0") || StartsWith("\xE3\x80\x80")) {
                m_at += c == '\xC2' ? 2 : 3;
            } else if (StartsWith("\xEF\xBB\xBF")) {
                m_at += 3;
            } else if (c == '_' && LineGoesOn()) {
                SkipLine();
                ++m_at;
                ++m_line;
            } else {
                return true;
            }
            m_space = true;
        }
        return false;
    }

    void SkipLine() {
        while (m_at < m_source.size() && m_source[m_at] != '\n') {
            ++m_at;
        }
    }

    void LineEnd() {
        const bool open = m_depth > 0 || (!m_tokens.empty() && m_tokens.back().type == Token::Type::Symbol &&
                                          m_tokens.back().text != ")" && m_tokens.back().text != "}" &&
                                          m_tokens.back().text != ":" && m_tokens.back().text != "?");
        if (m_mode == LexMode::Code && !open && !m_tokens.empty() &&
            m_tokens.back().type != Token::Type::NewLine) {
            Push(Token::Type::NewLine, "", m_at);
        }
        ++m_at;
        ++m_line;
    }

    // An underline alone at the end of a line.
    bool LineGoesOn() const {
        std::size_t at = m_at + 1;
        while (at < m_source.size() &&
               (m_source[at] == ' ' || m_source[at] == '\t' || m_source[at] == '\r')) {
            ++at;
        }
        return at < m_source.size() && m_source[at] == '\n';
    }

    bool QuotedBySingle() const {
        if (!ValueDue()) {
            return false;
        }
        const std::size_t close = m_source.find('\'', m_at + 1);
        return close != std::string_view::npos &&
               m_source.substr(m_at, close - m_at).find('\n') == std::string_view::npos;
    }

    void One() {
        const char c = Peek();
        if (c == '"') {
            Quoted("\"");
        } else if (StartsWith("\xE2\x80\x9C") || StartsWith("\xE2\x80\x9D")) {
            TypographicQuoted();
        } else if (c == '\'') {
            Quoted("'");
        } else if (IsAsciiDigit(c) || (c == '.' && IsAsciiDigit(Peek(1)))) {
            Number();
        } else if (c == '&' && ValueDue() && Based()) {
            return;
        } else if (c == '#' && StartsDirective()) {
            SkipLine();
        } else if (c == '#') {
            Date();
        } else if (c == '[') {
            Escaped();
        } else if (IsWordStart(c)) {
            Word();
        } else {
            Symbol();
        }
    }

    void Quoted(std::string_view mark) {
        const std::size_t start = m_at++;
        std::string text;
        for (;; ++m_at) {
            if (m_at >= m_source.size()) {
                Fail("a text has no closing quote", start);
            }
            if (m_source[m_at] == mark[0]) {
                if (Peek(1) != mark[0]) {
                    break;
                }
                ++m_at;
            }
            m_line += m_source[m_at] == '\n' ? 1 : 0;
            text += m_source[m_at];
        }
        ++m_at;
        if (mark == "\"" && AsciiLower(Peek()) == 'c' && !IsNameByte(Peek(1))) {
            if (CharacterCount(text) != 1) {
                Fail("a character literal must hold one character", start);
            }
            ++m_at;
        }
        PushLiteral(Value::Text(text), start);
    }

    // Quotation marks that a word processor put in.
    void TypographicQuoted() {
        const std::size_t start = m_at;
        m_at += 3;
        std::string text;
        while (!StartsWith("\xE2\x80\x9C") && !StartsWith("\xE2\x80\x9D")) {
            if (m_at >= m_source.size()) {
                Fail("a text has no closing quote", start);
            }
            text += m_source[m_at++];
        }
        m_at += 3;
        PushLiteral(Value::Text(text), start);
    }

    void Number() {
        const std::size_t start = m_at;
        bool real = false;
        while (IsAsciiDigit(Peek())) {
            ++m_at;
        }
        if (Peek() == '.' && IsAsciiDigit(Peek(1))) {
            real = true;
            for (++m_at; IsAsciiDigit(Peek()); ++m_at) {
            }
        }
        if (AsciiLower(Peek()) == 'e' &&
            (IsAsciiDigit(Peek(1)) || ((Peek(1) == '+' || Peek(1) == '-') && IsAsciiDigit(Peek(2))))) {
            real = true;
            for (m_at += 2; IsAsciiDigit(Peek()); ++m_at) {
            }
        }
        const std::string_view digits = m_source.substr(start, m_at - start);
        const NumberType type = Suffix();
        if (type == NumberType::Decimal) {
            const auto decimal = Decimal::OfText(digits);
            if (!decimal) {
                Fail("a number is too large", start);
            }
            PushLiteral(Value::Decimal(*decimal), start);
            return;
        }
        real = type == NumberType::Real || real;
        std::int64_t integer = 0;
        if (!real &&
            std::from_chars(digits.data(), digits.data() + digits.size(), integer).ec == std::errc()) {
            PushLiteral(Value::Integer(integer), start);
            return;
        }
        double number = 0;
        if (std::from_chars(digits.data(), digits.data() + digits.size(), number).ec != std::errc()) {
            Fail("a number is too large", start);
        }
        PushLiteral(Value::Real(number), start);
    }

    enum class NumberType { AsWritten, Real, Decimal };
    // Reads the type suffix of a number.
    NumberType Suffix() {
        const char c = AsciiLower(Peek());
        const char next = Peek(1);
        if (c == 'u' && (AsciiLower(next) == 'l' || AsciiLower(next) == 's' || AsciiLower(next) == 'i') &&
            !IsNameByte(Peek(2))) {
            m_at += 2;
            return NumberType::AsWritten;
        }
        // 5% and 5& are typed numbers where no operand follows.
        if (c == '%' || c == '&') {
            const std::size_t after = m_source.find_first_not_of(" \t\r\n", m_at + 1);
            const bool ends =
                after == std::string_view::npos ||
                std::string_view("),}*/\\^=<>&").find(m_source[after]) != std::string_view::npos ||
                (after > m_at + 1 && (m_source[after] == '+' || m_source[after] == '-'));
            m_at += ends ? 1 : 0;
            return NumberType::AsWritten;
        }
        const bool letter = c != '\0' && std::string_view("dfrils").find(c) != std::string_view::npos;
        const bool sign = c == '@' || c == '#' || (c == '!' && next != '=');
        if (!(letter && !IsNameByte(next)) && !sign) {
            return NumberType::AsWritten;
        }
        ++m_at;
        if (c == 'd' || c == '@') {
            return NumberType::Decimal;
        }
        return c == 'i' || c == 'l' || c == 's' ? NumberType::AsWritten : NumberType::Real;
    }

    // &H, &O and &B numbers.
    bool Based() {
        const char letter = AsciiLower(Peek(1));
        const int base = letter == 'h' ? 16 : letter == 'o' ? 8 : letter == 'b' ? 2 : 0;
        if (base == 0 || !IsDigitOf(base, Peek(2))) {
            return false;
        }
        const std::size_t start = m_at;
        std::uint64_t number = 0;
        for (m_at += 2; IsDigitOf(base, Peek()); ++m_at) {
            if (number > std::numeric_limits<std::uint64_t>::max() / static_cast<unsigned>(base)) {
                Fail("a number is too large", start);
            }
            number = number * static_cast<unsigned>(base) + static_cast<unsigned>(HexDigitValue(Peek()));
        }
        const char suffix = AsciiLower(Peek());
        const bool wide = suffix == 'l' || suffix == '&';
        if (wide || suffix == 'i' || suffix == 's') {
            ++m_at;
        }
        // Eight digits fill an Integer, whose first bit is its sign.
        const bool narrow = !wide && number <= std::numeric_limits<std::uint32_t>::max();
        PushLiteral(Value::Integer(narrow ? static_cast<std::int32_t>(static_cast<std::uint32_t>(number))
                                          : static_cast<std::int64_t>(number)),
                    start);
        return true;
    }

    // #Region and its like at the start of a line of code.
    bool StartsDirective() const {
        return m_mode == LexMode::Code && IsWordStart(Peek(1)) &&
               (m_tokens.empty() || m_tokens.back().type == Token::Type::NewLine);
    }

    void Date() {
        const std::size_t close = m_source.find('#', m_at + 1);
        if (close == std::string_view::npos) {
            Fail("a date has no closing #", m_at);
        }
        std::string_view text = m_source.substr(m_at + 1, close - m_at - 1);
        while (!text.empty() && text.front() == ' ') {
            text.remove_prefix(1);
        }
        while (!text.empty() && text.back() == ' ') {
            text.remove_suffix(1);
        }
        std::int64_t ticks = 0;
        if (text.size() > 40 || !ParseDateTime(text, FindCulture("en-US"), ticks)) {
            Fail("\"" + std::string(text.substr(0, 40)) + "\" is no date", m_at);
        }
        // A time alone is one of the first day, not of the day it is read on.
        if (text.find_first_of("/-") == std::string_view::npos) {
            ticks %= TicksPerDay;
        }
        PushLiteral(Value::DateTime(ticks), m_at);
        m_at = close + 1;
    }

    void Escaped() {
        const std::size_t close = m_source.find(']', m_at);
        if (close == std::string_view::npos) {
            Fail("a [ has no closing ]", m_at);
        }
        Token& token =
            Push(Token::Type::Word, std::string(m_source.substr(m_at + 1, close - m_at - 1)), m_at);
        token.lower = Lower(token.text);
        token.escaped = true;
        m_at = close + 1;
    }

    void Word() {
        const std::size_t start = m_at;
        while (IsNameByte(Peek())) {
            ++m_at;
        }
        std::string text(m_source.substr(start, m_at - start));
        std::string lower = Lower(text);
        if (lower == "rem" && m_mode == LexMode::Code) {
            SkipLine();
            return;
        }
        // Left$ is Left.
        if (Peek() == '$') {
            ++m_at;
        }
        Push(Token::Type::Word, std::move(text), start).lower = std::move(lower);
    }

    void Symbol() {
        static constexpr std::pair<std::string_view, std::string_view> pairs[] = {
            {"<>", "<>"},   {"><", "<>"}, {"!=", "<>"}, {"<=", "<="}, {"=<", "<="},
            {">=", ">="},   {"=>", ">="}, {"<<", "<<"}, {">>", ">>"}, {"==", "="},
            {":=", ":="},   {"+=", "+="}, {"-=", "-="}, {"*=", "*="}, {"/=", "/="},
            {"\\=", "\\="}, {"^=", "^="}, {"&=", "&="}, {"&&", "&&"}, {"||", "||"},
        };
        for (const auto& [written, meant] : pairs) {
            const bool assignment = written.size() == 2 && written[1] == '=' &&
                                    std::string_view("+-*/\\^&:").find(written[0]) != std::string_view::npos;
            if (StartsWith(written) && (!assignment || m_mode == LexMode::Code)) {
                Push(Token::Type::Symbol, std::string(meant), m_at);
                m_at += written.size();
                return;
            }
        }
        const char c = Peek();
        const bool isOfGlobal = c == '@' && !m_tokens.empty() && m_tokens.back().Is("{");
        if (!isOfGlobal &&
            (std::string_view("+-*/\\^&=<>(),.!{}:%?").find(c) == std::string_view::npos || c == '\0')) {
            Fail("the character \"" +
                     (c == '\0' ? std::string("0") : std::string(Slice(m_source.substr(m_at), 0, 1))) +
                     "\" has no meaning here",
                 m_at);
        }
        m_depth += c == '(' || c == '{' ? 1 : (c == ')' || c == '}') && m_depth > 0 ? -1 : 0;
        Push(Token::Type::Symbol, std::string(1, c), m_at);
        ++m_at;
    }

    std::string_view m_source;
    LexMode m_mode;
    std::size_t m_at = 0;
    std::size_t m_counted = 0, m_characters = 0;  // bytes before a token, and the characters in them
    int m_line = 1;
    int m_depth = 0;
    bool m_space = false;
    std::vector<Token> m_tokens;
};

}  // namespace

std::vector<Token> Lex(std::string_view source, LexMode mode) {
    return Lexer(source, mode).Run();
}

}  // namespace rdl::expr
