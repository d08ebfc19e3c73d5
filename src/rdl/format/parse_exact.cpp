// SPDX-License-Identifier: GPL-3.0-or-later
// Dates by a format string: every character of the text must be what the format says.
#include <algorithm>
#include <string>

#include "rdl/format/date_format.h"
#include "rdl/format/format.h"
#include "rdl/values/ascii.h"

namespace rdl {
namespace {

class ExactReader {
 public:
    ExactReader(std::string_view text, std::string_view pattern, const Culture& culture)
        : m_text(text), m_pattern(pattern), m_culture(culture) {}

    bool Read(std::int64_t& ticks) {
        for (std::size_t i = 0; i < m_pattern.size();) {
            std::string literal;
            if (const std::size_t length = AppendPatternLiteral(m_pattern, i, literal)) {
                if (!Take(literal)) {
                    return false;
                }
                i += length;
            } else if (m_pattern[i] == '%') {
                ++i;
            } else {
                const std::size_t count = RepeatCount(m_pattern, i);
                if (!ReadSpecifier(m_pattern[i], static_cast<int>(std::min<std::size_t>(count, 20)))) {
                    return false;
                }
                i += count;
            }
        }
        return m_text.empty() && Finish(ticks);
    }

 private:
    bool Take(std::string_view piece) {
        if (!m_text.starts_with(piece)) {
            return false;
        }
        m_text.remove_prefix(piece.size());
        return true;
    }

    // Between `least` and `most` digits.
    bool TakeNumber(int least, int most, int& number) {
        int digits = 0;
        number = 0;
        while (digits < most && !m_text.empty() && m_text[0] >= '0' && m_text[0] <= '9') {
            number = number * 10 + (m_text[0] - '0');
            m_text.remove_prefix(1);
            ++digits;
        }
        return digits >= least;
    }

    // The longest of the names that the text begins with.
    bool TakeName(const std::string* names, int count, int& index) {
        std::size_t longest = 0;
        for (int i = 0; i < count; ++i) {
            const std::string& name = names[i];
            if (name.size() > longest && EqualNoCase(name, m_text.substr(0, name.size()))) {
                longest = name.size();
                index = i;
            }
        }
        m_text.remove_prefix(longest);
        return longest > 0;
    }

    bool ReadSpecifier(char letter, int count) {
        const int digits = std::min(count, 2);
        switch (letter) {
            case 'y':
                return ReadYear(count);
            case 'M':
                return ReadMonth(count);
            case 'd':
                return ReadDay(count);
            case 'H':
                return TakeNumber(digits, 2, m_hour);
            case 'h':
                m_half = true;
                return TakeNumber(digits, 2, m_hour);
            case 'm':
                return TakeNumber(digits, 2, m_minute);
            case 's':
                return TakeNumber(digits, 2, m_second);
            case 'f':
                return ReadFraction(count, count);
            case 'F':
                return ReadFraction(0, count);
            case 't':
                return ReadHalf(count);
            case 'z':
            case 'K':
                return ReadZone(letter == 'K');
            case ':':
            case '/':
                return ReadSeparator(letter == ':' ? m_culture.timeSeparator : m_culture.dateSeparator,
                                     count);
            default:
                return Take(std::string(static_cast<std::size_t>(count), letter));
        }
    }

    bool ReadSeparator(const std::string& separator, int count) {
        for (; count > 0; --count) {
            if (!Take(separator)) {
                return false;
            }
        }
        return true;
    }

    bool ReadYear(int count) {
        if (!TakeNumber(count <= 2 ? count : std::min(count, 4), count <= 2 ? 2 : 4, m_year)) {
            return false;
        }
        m_year += count > 2 ? 0 : m_year < 30 ? 2000 : 1900;
        return true;
    }

    bool ReadMonth(int count) {
        if (count <= 2) {
            return TakeNumber(count, 2, m_month);
        }
        int index = 0;
        const bool found = count == 3 ? TakeName(m_culture.shortMonths, 12, index)
                                      : TakeName(m_culture.genitiveMonths, 12, index) ||
                                            TakeName(m_culture.months, 12, index);
        m_month = index + 1;
        return found;
    }

    bool ReadDay(int count) {
        if (count <= 2) {
            return TakeNumber(count, 2, m_day);
        }
        return TakeName(count == 3 ? m_culture.shortDays : m_culture.days, 7, m_weekday);
    }

    bool ReadFraction(int least, int most) {
        int place = 1'000'000;
        int digits = 0;
        while (digits < std::min(most, 7) && !m_text.empty() && m_text[0] >= '0' && m_text[0] <= '9') {
            m_fraction += (m_text[0] - '0') * place;
            place /= 10;
            m_text.remove_prefix(1);
            ++digits;
        }
        return digits >= least;
    }

    bool ReadHalf(int count) {
        const std::string halves[] = {m_culture.am.substr(0, count == 1 ? 1 : std::string::npos),
                                      m_culture.pm.substr(0, count == 1 ? 1 : std::string::npos)};
        int index = 0;
        if (halves[0].empty() && halves[1].empty()) {
            return true;
        }
        if (!TakeName(halves, 2, index)) {
            return false;
        }
        m_afternoon = index;
        return true;
    }

    // The clock time stands as written, as everywhere here.
    bool ReadZone(bool optional) {
        if (Take("Z")) {
            return true;
        }
        int ignored = 0;
        if (!Take("+") && !Take("-")) {
            return optional;
        }
        return TakeNumber(1, 2, ignored) && (!Take(":") || TakeNumber(2, 2, ignored));
    }

    bool Finish(std::int64_t& ticks) const {
        int hour = m_hour;
        if (m_half) {
            if (hour < 1 || hour > 12) {
                return false;
            }
            hour = m_afternoon < 0 ? hour : hour % 12 + (m_afternoon == 1 ? 12 : 0);
        }
        const bool valid = m_year >= 1 && m_year <= 9999 && m_month >= 1 && m_month <= 12 && m_day >= 1 &&
                           m_day <= DaysInMonth(m_year, m_month) && hour <= 23 && m_minute <= 59 &&
                           m_second <= 59;
        if (!valid) {
            return false;
        }
        ticks = MakeTicks(m_year, m_month, m_day, hour, m_minute, m_second) + m_fraction;
        return m_weekday < 0 || SplitTicks(ticks).dayOfWeek == m_weekday;
    }

    std::string_view m_text, m_pattern;
    const Culture& m_culture;
    int m_year = 1, m_month = 1, m_day = 1, m_hour = 0, m_minute = 0, m_second = 0, m_fraction = 0;
    int m_weekday = -1, m_afternoon = -1;
    bool m_half = false;
};

}  // namespace

bool ParseDateTimeExact(std::string_view text, std::string_view format, const Culture& culture,
                        std::int64_t& ticks) {
    std::string pattern(format);
    bool invariant = false;
    if (text.empty() || text.size() > 200 || format.empty() || format.size() > 200 ||
        (format.size() == 1 && !StandardDatePattern(format[0], culture, pattern, invariant))) {
        return false;
    }
    return ExactReader(text, pattern, invariant ? FindCulture("") : culture).Read(ticks);
}

}  // namespace rdl
