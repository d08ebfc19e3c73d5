// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/base/date_reader.h"

#include <array>
#include <cstddef>

#include "platform/base/ascii.h"
#include "platform/base/text.h"

namespace {

constexpr std::size_t LongestText = 64;  // no date is longer, but a field may hold any text

struct Number {
    int value = 0;
    int digits = 0;
};

std::optional<DateValue> DateOf(const Number& year, const Number& month, const Number& day) {
    const int fullYear = FullYear(year.value, year.digits);
    if (month.digits > 2 || day.digits > 2 || !IsValidDate(fullYear, month.value, day.value)) {
        return std::nullopt;
    }
    return DateSerial(fullYear, month.value, day.value);
}

std::optional<DateValue> DateInOrder(const std::array<Number, 3>& part, DateOrder order) {
    switch (order) {
        case DateOrder::YearMonthDay:
            return DateOf(part[0], part[1], part[2]);
        case DateOrder::DayMonthYear:
            return DateOf(part[2], part[1], part[0]);
        case DateOrder::MonthDayYear:
            return DateOf(part[2], part[0], part[1]);
    }
    return std::nullopt;
}

// Tries the region's order first, then the others, with the day before the month.
std::optional<DateValue> DateOfThree(const std::array<Number, 3>& part, DateOrder order) {
    if (part[0].digits > 2) {
        return DateInOrder(part, DateOrder::YearMonthDay);
    }
    const bool yearIsLast = part[2].digits > 2;
    if (!(yearIsLast && order == DateOrder::YearMonthDay)) {
        if (const auto date = DateInOrder(part, order)) {
            return date;
        }
    }
    for (const DateOrder other :
         {DateOrder::DayMonthYear, DateOrder::MonthDayYear, DateOrder::YearMonthDay}) {
        if (yearIsLast && other == DateOrder::YearMonthDay) {
            continue;
        }
        if (const auto date = DateInOrder(part, other)) {
            return date;
        }
    }
    return std::nullopt;
}

int MonthOfWord(std::string_view word) {
    constexpr std::array<std::string_view, 12> Names{"January",   "February", "March",    "April",
                                                     "May",       "June",     "July",     "August",
                                                     "September", "October",  "November", "December"};
    for (std::size_t month = 0; month < Names.size(); ++month) {
        if (SameText(word, Names[month]) || SameText(word, Names[month].substr(0, 3))) {
            return static_cast<int>(month) + 1;
        }
    }
    return 0;
}

class Reader {
 public:
    Reader(std::string_view text, const RegionalSettings& regional) : m_text(text), m_regional(regional) {}

    std::optional<DateValue> Read() {
        SkipBlanks();
        if (const auto time = Whole(&Reader::Time)) {
            return time;
        }
        const auto date = Date();
        if (!date) {
            return std::nullopt;
        }
        const std::size_t afterDate = m_at;
        SkipBlanks();
        if (AtEnd()) {
            return date;
        }
        if (m_text[m_at] == ',') {
            ++m_at;
            SkipBlanks();
        } else if (m_at == afterDate) {
            return std::nullopt;
        }
        const auto time = Whole(&Reader::Time);
        if (!time) {
            return std::nullopt;
        }
        return DateValue::FromSeconds(date->Seconds() + time->Seconds());
    }

 private:
    bool AtEnd() const { return m_at >= m_text.size(); }
    char Peek() const { return AtEnd() ? '\0' : m_text[m_at]; }
    void SkipBlanks() {
        while (Peek() == ' ' || Peek() == '\t') {
            ++m_at;
        }
    }

    bool TakeNumber(Number& number) {
        number = {};
        while (IsAsciiDigit(Peek()) && number.digits < 5) {
            number.value = number.value * 10 + (Peek() - '0');
            ++number.digits;
            ++m_at;
        }
        return number.digits > 0 && number.digits < 5;
    }

    std::string_view TakeWord() {
        const std::size_t start = m_at;
        while (IsAsciiLetter(Peek())) {
            ++m_at;
        }
        return m_text.substr(start, m_at - start);
    }

    // Returns what `part` reads if it reaches the end of the text. Otherwise reads nothing and returns
    // nullopt.
    std::optional<DateValue> Whole(std::optional<DateValue> (Reader::*part)()) {
        const std::size_t start = m_at;
        const auto value = (this->*part)();
        SkipBlanks();
        if (value && AtEnd()) {
            return value;
        }
        m_at = start;
        return std::nullopt;
    }

    std::optional<DateValue> Time() {
        Number hour;
        Number minute;
        Number second;
        if (!TakeNumber(hour)) {
            return std::nullopt;
        }
        const bool hasMinute = Peek() == ':';
        if (hasMinute) {
            ++m_at;
            if (!TakeNumber(minute)) {
                return std::nullopt;
            }
            if (Peek() == ':') {
                ++m_at;
                if (!TakeNumber(second)) {
                    return std::nullopt;
                }
            }
        }
        SkipBlanks();
        const std::string_view half = TakeWord();
        const bool isNoon = SameText(half, "PM");
        if (!half.empty()) {
            if ((!isNoon && !SameText(half, "AM")) || hour.value < 1 || hour.value > 12) {
                return std::nullopt;
            }
            hour.value = hour.value % 12 + (isNoon ? 12 : 0);
        }
        const bool fits = hour.digits <= 2 && minute.digits <= 2 && second.digits <= 2 && hour.value < 24 &&
                          minute.value < 60 && second.value < 60;
        if (!fits || (!hasMinute && half.empty())) {
            return std::nullopt;
        }
        return TimeSerial(hour.value, minute.value, second.value);
    }

    std::optional<DateValue> Date() {
        if (IsAsciiLetter(Peek())) {
            return MonthDayYear();
        }
        std::array<Number, 3> part;
        if (!TakeNumber(part[0])) {
            return std::nullopt;
        }
        const char separator = Peek();
        const bool isKnown = separator == '/' || separator == '-' || separator == '.';
        if (!isKnown || IsAsciiLetter(m_at + 1 < m_text.size() ? m_text[m_at + 1] : '\0')) {
            return DayMonthYear(part[0]);
        }
        for (std::size_t index = 1; index < part.size(); ++index) {
            if (Peek() != separator) {
                return std::nullopt;
            }
            ++m_at;
            if (!TakeNumber(part[index])) {
                return std::nullopt;
            }
        }
        return DateOfThree(part, m_regional.order);
    }

    // 31 December 2003, 31-Dec-2003
    std::optional<DateValue> DayMonthYear(const Number& day) {
        Number year;
        SkipNameSeparator();
        const int month = MonthOfWord(TakeWord());
        SkipNameSeparator();
        if (month == 0 || !TakeNumber(year)) {
            return std::nullopt;
        }
        return DateOf(year, {month, 1}, day);
    }

    // December 31, 2003
    std::optional<DateValue> MonthDayYear() {
        Number day;
        Number year;
        const int month = MonthOfWord(TakeWord());
        SkipNameSeparator();
        if (month == 0 || !TakeNumber(day)) {
            return std::nullopt;
        }
        SkipNameSeparator();
        if (!TakeNumber(year)) {
            return std::nullopt;
        }
        return DateOf(year, {month, 1}, day);
    }

    void SkipNameSeparator() {
        SkipBlanks();
        if (Peek() == ',' || Peek() == '-' || Peek() == '/' || Peek() == '.') {
            ++m_at;
        }
        SkipBlanks();
    }

    std::string_view m_text;
    RegionalSettings m_regional;
    std::size_t m_at = 0;
};

}  // namespace

int FullYear(int number, int digits) {
    constexpr int ShortYear = 2, FirstOfLastCentury = 30, LastCentury = 1900, ThisCentury = 2000;
    if (digits > ShortYear) {
        return number;
    }
    return number + (number < FirstOfLastCentury ? ThisCentury : LastCentury);
}

std::optional<DateValue> ReadDateText(std::string_view text, const RegionalSettings& regional) {
    if (text.size() > LongestText) {
        return std::nullopt;
    }
    return Reader(text, regional).Read();
}
