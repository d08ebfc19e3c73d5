// SPDX-License-Identifier: GPL-3.0-or-later
// Dates as people and databases write them. The text is cut into numbers, words and marks; what they mean
// depends on the order of day, month and year in the culture's short date.
#include <vector>

#include "rdl/format/format.h"
#include "rdl/values/ascii.h"

namespace rdl {
namespace {

constexpr std::size_t LongestDate = 100;

struct Token {
    enum Kind { Number, Word, Mark } kind;
    std::string_view text;
    int number = 0;
};

bool IsWordByte(char c) {
    return IsAsciiLetter(c) || static_cast<unsigned char>(c) >= 0x80;
}

// "janv." and "janv" are alike.
std::string NameKey(std::string_view text) {
    std::string lower = LowerAscii(text);
    while (!lower.empty() && lower.back() == '.') {
        lower.pop_back();
    }
    return lower;
}

// False on a number that is too long to be part of a date.
bool Cut(std::string_view text, std::vector<Token>& tokens) {
    std::size_t i = 0;
    while (i < text.size()) {
        const std::size_t begin = i;
        if (text.substr(i, 2) == "\xC2\xA0") {
            i += 2;
        } else if (IsAsciiSpace(text[i])) {
            ++i;
        } else if (IsAsciiDigit(text[i])) {
            int number = 0;
            for (; i < text.size() && IsAsciiDigit(text[i]); ++i) {
                if (i - begin >= 9) {
                    return false;
                }
                number = number * 10 + (text[i] - '0');
            }
            tokens.push_back({Token::Number, text.substr(begin, i - begin), number});
        } else if (IsWordByte(text[i])) {
            while (i < text.size() && (IsWordByte(text[i]) || text[i] == '.') &&
                   text.substr(i, 2) != "\xC2\xA0") {
                ++i;
            }
            tokens.push_back({Token::Word, text.substr(begin, i - begin)});
        } else {
            tokens.push_back({Token::Mark, text.substr(i++, 1)});
        }
    }
    return true;
}

// Returns the index of the name equal to the word, -1 if there is none.
int NameIndex(std::string_view word, const std::string* names, int count) {
    const std::string lower = NameKey(word);
    for (int i = 0; i < count; ++i) {
        if (!names[i].empty() && NameKey(names[i]) == lower) {
            return i;
        }
    }
    return -1;
}

class DateReader {
 public:
    DateReader(std::vector<Token> tokens, const Culture& culture)
        : m_tokens(std::move(tokens)), m_culture(culture) {}

    bool Read(std::int64_t& ticks) {
        while (m_at < m_tokens.size()) {
            if (!ReadNext()) {
                return false;
            }
        }
        if (!Finish()) {
            return false;
        }
        const bool dated = m_numberCount > 0 || m_month > 0;
        const std::int64_t day = dated ? MakeTicks(m_year, m_month, m_day) : 0;
        ticks = day + (m_hour * 3600 + m_minute * 60 + m_second) * TicksPerSecond + m_fraction;
        return dated || m_hasTime;
    }

 private:
    const Token* Peek(std::size_t ahead = 0) const {
        return m_at + ahead < m_tokens.size() ? &m_tokens[m_at + ahead] : nullptr;
    }
    bool PeekMark(std::string_view mark, std::size_t ahead = 0) const {
        const Token* token = Peek(ahead);
        return token && token->kind == Token::Mark && token->text == mark;
    }

    bool ReadNext() {
        const Token& token = m_tokens[m_at];
        switch (token.kind) {
            case Token::Number:
                return IsTimeAhead() ? ReadTime() : TakeDateNumber();
            case Token::Word:
                return ReadWord();
            default:
                return ReadMark();
        }
    }

    bool IsTimeAhead() const {
        const Token* next = Peek(2);
        const bool colon = PeekMark(":", 1);
        const bool own = m_culture.timeSeparator == "." && PeekMark(".", 1) && m_numberCount >= 3;
        if ((colon || own) && next && next->kind == Token::Number) {
            return true;
        }
        const Token* half = Peek(1);  // "3 PM"
        return half && half->kind == Token::Word && HalfOf(half->text) != 0;
    }

    // 1: before noon, 2: after, 0: not such a word
    int HalfOf(std::string_view word) const {
        const std::string lower = NameKey(word);
        if (lower == "am" || lower == "a.m" || (!m_culture.am.empty() && lower == NameKey(m_culture.am))) {
            return 1;
        }
        return lower == "pm" || lower == "p.m" || (!m_culture.pm.empty() && lower == NameKey(m_culture.pm))
                   ? 2
                   : 0;
    }

    bool TakeTimePart(int& part, int limit) {
        const Token* token = Peek();
        if (!token || token->kind != Token::Number || token->number >= limit || token->text.size() > 2) {
            return false;
        }
        part = token->number;
        ++m_at;
        return true;
    }

    bool ReadTime() {
        if (m_hasTime || !TakeTimePart(m_hour, 24)) {
            return false;
        }
        m_hasTime = true;
        if (TakeTimeMark() && (!TakeTimePart(m_minute, 60) || (TakeTimeMark() && !ReadSeconds()))) {
            return false;
        }
        return ReadHalf() && ReadZone();
    }

    bool TakeTimeMark() {
        const bool mark = PeekMark(":") || (m_culture.timeSeparator == "." && PeekMark("."));
        m_at += mark ? 1 : 0;
        return mark;
    }

    bool ReadSeconds() {
        if (!TakeTimePart(m_second, 60)) {
            return false;
        }
        const Token* digits = Peek(1);
        if ((PeekMark(".") || PeekMark(",")) && digits && digits->kind == Token::Number) {
            int place = 1'000'000;
            for (const char c : digits->text.substr(0, 7)) {
                m_fraction += (c - '0') * place;
                place /= 10;
            }
            m_at += 2;
        }
        return true;
    }

    bool ReadHalf() {
        const Token* word = Peek();
        const int half = word && word->kind == Token::Word ? HalfOf(word->text) : 0;
        if (half == 0) {
            return true;
        }
        ++m_at;
        if (m_hour > 12 || m_hour == 0) {
            return half == 2 ? m_hour > 12 : m_hour == 0;
        }
        m_hour = m_hour % 12 + (half == 2 ? 12 : 0);
        return true;
    }

    bool ReadZone() {
        const Token* token = Peek();
        if (token && token->kind == Token::Word &&
            (token->text == "Z" || token->text == "z" || token->text == "GMT")) {
            ++m_at;
        } else if (PeekMark("+") || PeekMark("-")) {
            ++m_at;
            int hours = 0, minutes = 0;
            const Token* compact = Peek();
            if (compact && compact->kind == Token::Number && compact->text.size() == 4) {
                ++m_at;
            } else if (!TakeTimePart(hours, 15) || (PeekMark(":") && (++m_at, !TakeTimePart(minutes, 60)))) {
                return false;
            }
        }
        return true;
    }

    bool TakeDateNumber() {
        const Token& token = m_tokens[m_at];
        if (m_numberCount == 3 || token.text.size() > 4) {
            return false;
        }
        m_numbers[m_numberCount] = token.number;
        m_widths[m_numberCount++] = token.text.size();
        ++m_at;
        return true;
    }

    bool ReadWord() {
        const std::string_view word = m_tokens[m_at].text;
        int month = NameIndex(word, m_culture.months, 12);
        for (const std::string* names : {m_culture.genitiveMonths, m_culture.shortMonths}) {
            month = month >= 0 ? month : NameIndex(word, names, 12);
        }
        const Culture& invariant = FindCulture("");
        month = month >= 0 ? month : NameIndex(word, invariant.months, 12);
        month = month >= 0 ? month : NameIndex(word, invariant.shortMonths, 12);
        if (month >= 0 && m_month == 0) {
            m_month = month + 1;
        } else if (word == "T" || word == "t") {
            if (m_numberCount < 3 || m_hasTime || !Peek(1) || Peek(1)->kind != Token::Number) {
                return false;
            }
        } else if (!IsFiller(word)) {
            return false;
        }
        ++m_at;
        return true;
    }

    bool IsFiller(std::string_view word) const {
        if (HalfOf(word) != 0 && Peek(1) && Peek(1)->kind == Token::Number) {
            return false;
        }
        const Culture& invariant = FindCulture("");
        return NameIndex(word, m_culture.days, 7) >= 0 || NameIndex(word, m_culture.shortDays, 7) >= 0 ||
               NameIndex(word, invariant.days, 7) >= 0 || NameIndex(word, invariant.shortDays, 7) >= 0 ||
               ((word == "de" || word == "den") && m_month + m_numberCount > 0);
    }

    // One mark between two pieces of the date.
    bool ReadMark() {
        const std::string_view mark = m_tokens[m_at].text;
        const bool known = std::string_view("/-.,").find(mark) != std::string_view::npos;
        if (!known || m_at == 0 || m_tokens[m_at - 1].kind == Token::Mark || m_hasTime) {
            return false;
        }
        const bool ends = m_at + 1 == m_tokens.size();
        ++m_at;
        return !ends || mark == ".";
    }

    // The order of the culture: positions of year, month, day among the three.
    void Order(int& yearAt, int& monthAt, int& dayAt) const {
        const std::string& pattern = m_culture.shortDate;
        const std::size_t y = pattern.find('y'), m = pattern.find('M'), d = pattern.find('d');
        yearAt = (y > m) + (y > d);
        monthAt = (m > y) + (m > d);
        dayAt = (d > y) + (d > m);
    }

    bool Finish() {
        if (m_numberCount == 0) {
            return m_month == 0;
        }
        return (m_month > 0 ? FinishNamed() : FinishNumbers()) && m_year >= 1 && m_year <= 9999 &&
               m_month >= 1 && m_month <= 12 && m_day >= 1 && m_day <= DaysInMonth(m_year, m_month);
    }

    bool FinishNamed() {
        if (m_numberCount == 1) {  // June 2024
            m_year = m_numbers[0];
            m_day = 1;
            return m_widths[0] == 4;
        }
        if (m_numberCount != 2) {
            return false;
        }
        const int yearAt = m_widths[0] > 2 ? 0 : 1;
        m_day = m_numbers[1 - yearAt];
        return m_widths[1 - yearAt] <= 2 && TakeYear(yearAt);
    }

    bool FinishNumbers() {
        if (m_numberCount != 3) {
            return false;
        }
        int yearAt = 0, monthAt = 0, dayAt = 0;
        Order(yearAt, monthAt, dayAt);
        if (m_widths[0] > 2) {  // year first is always year, month, day
            yearAt = 0;
            monthAt = 1;
            dayAt = 2;
        } else if (m_widths[2] > 2 && yearAt == 0) {
            yearAt = 2;
            monthAt = 0;
            dayAt = 1;
        }
        m_month = m_numbers[monthAt];
        m_day = m_numbers[dayAt];
        return m_widths[monthAt] <= 2 && m_widths[dayAt] <= 2 && TakeYear(yearAt);
    }

    // The engine stands alone: FullYear in platform/base/date_reader.h has the same rule of the century.
    bool TakeYear(int index) {
        m_year = m_numbers[index];
        if (m_widths[index] <= 2) {
            m_year += m_year < 30 ? 2000 : 1900;
        }
        return m_widths[index] != 3;
    }

    std::vector<Token> m_tokens;
    const Culture& m_culture;
    std::size_t m_at = 0;
    int m_numbers[3] = {0, 0, 0};
    std::size_t m_widths[3] = {0, 0, 0};
    int m_numberCount = 0;
    int m_year = 0, m_month = 0, m_day = 0, m_hour = 0, m_minute = 0, m_second = 0, m_fraction = 0;
    bool m_hasTime = false;
};

}  // namespace

bool ParseDateTime(std::string_view text, const Culture& culture, std::int64_t& ticks) {
    std::vector<Token> tokens;
    if (text.empty() || text.size() > LongestDate || !Cut(text, tokens)) {
        return false;
    }
    std::int64_t read = 0;
    if (!DateReader(std::move(tokens), culture).Read(read)) {
        return false;
    }
    ticks = read;
    return true;
}

}  // namespace rdl
