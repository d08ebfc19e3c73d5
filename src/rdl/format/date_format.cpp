// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/format/date_format.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <ctime>

#include "rdl/values/utf8.h"

namespace rdl {
namespace {

constexpr std::string_view DateLetters = "dfFghHKmMstyz:/%";

// Dates carry no zone: z is the zone of the machine at that moment.
int MinutesFromUtc(const DateTimeParts& parts) {
    std::tm local{};
    local.tm_year = parts.year - 1900;
    local.tm_mon = parts.month - 1;
    local.tm_mday = parts.day;
    local.tm_hour = parts.hour;
    local.tm_min = parts.minute;
    local.tm_sec = parts.second;
    local.tm_isdst = -1;
    return std::mktime(&local) == -1 ? 0 : static_cast<int>(local.tm_gmtoff / 60);
}

class PatternWriter {
 public:
    PatternWriter(std::int64_t ticks, std::string_view pattern, const Culture& culture, std::string& out)
        : m_parts(SplitTicks(ticks)), m_pattern(pattern), m_culture(culture), m_out(out) {}

    void Write() {
        std::size_t i = 0;
        while (i < m_pattern.size()) {
            if (const std::size_t literal = AppendPatternLiteral(m_pattern, i, m_out)) {
                i += literal;
            } else if (m_pattern[i] == '%') {
                ++i;  // marks a single letter as custom
            } else if (DateLetters.find(m_pattern[i]) != std::string_view::npos) {
                const std::size_t count = RepeatCount(m_pattern, i);
                WriteSpecifier(m_pattern[i], static_cast<int>(std::min<std::size_t>(count, 20)));
                i += count;
            } else {
                m_out += m_pattern[i++];
            }
        }
    }

 private:
    void WriteSpecifier(char letter, int count) {
        switch (letter) {
            case 'd':
                WriteDay(count);
                break;
            case 'M':
                WriteMonth(count);
                break;
            case 'y':
                WriteYear(count);
                break;
            case 'h':
                AppendPadded((m_parts.hour + 11) % 12 + 1, std::min(count, 2), m_out);
                break;
            case 'H':
                AppendPadded(m_parts.hour, std::min(count, 2), m_out);
                break;
            case 'm':
                AppendPadded(m_parts.minute, std::min(count, 2), m_out);
                break;
            case 's':
                AppendPadded(m_parts.second, std::min(count, 2), m_out);
                break;
            case 'f':
                AppendFraction(m_parts.fraction, std::min(count, 7), TrailingZeros::Keep, m_out);
                break;
            case 'F':
                WriteTrimmedFraction(count);
                break;
            case 't':
                WriteHalfDay(count);
                break;
            case 'g':
                m_out += m_culture.era;
                break;
            case 'z':
                WriteZone(count);
                break;
            case 'K':
                break;  // a date without a zone has no such mark
            default:
                WriteSeparator(letter == ':' ? m_culture.timeSeparator : m_culture.dateSeparator, count);
        }
    }

    void WriteSeparator(const std::string& separator, int count) {
        for (int i = 0; i < count; ++i) {
            m_out += separator;
        }
    }

    void WriteDay(int count) {
        if (count >= 4) {
            m_out += m_culture.days[m_parts.dayOfWeek];
        } else if (count == 3) {
            m_out += m_culture.shortDays[m_parts.dayOfWeek];
        } else {
            AppendPadded(m_parts.day, count, m_out);
        }
    }

    void WriteMonth(int count) {
        if (count >= 4) {
            m_out += (HasDayOfMonth() ? m_culture.genitiveMonths : m_culture.months)[m_parts.month - 1];
        } else if (count == 3) {
            m_out += m_culture.shortMonths[m_parts.month - 1];
        } else {
            AppendPadded(m_parts.month, count, m_out);
        }
    }

    bool HasDayOfMonth() const {
        std::string ignored;
        for (std::size_t i = 0; i < m_pattern.size();) {
            if (const std::size_t literal = AppendPatternLiteral(m_pattern, i, ignored)) {
                i += literal;
                continue;
            }
            const std::size_t count = RepeatCount(m_pattern, i);
            if (m_pattern[i] == 'd' && count <= 2) {
                return true;
            }
            i += count;
        }
        return false;
    }

    void WriteYear(int count) {
        if (count <= 2) {
            AppendPadded(m_parts.year % 100, count, m_out);
        } else {
            AppendPadded(m_parts.year, count, m_out);
        }
    }

    // Also removes the point before a fraction that becomes empty.
    void WriteTrimmedFraction(int count) {
        const std::size_t before = m_out.size();
        AppendFraction(m_parts.fraction, std::min(count, 7), TrailingZeros::Drop, m_out);
        if (m_out.size() == before && before > 0 && m_out[before - 1] == '.') {
            m_out.pop_back();
        }
    }

    void WriteHalfDay(int count) {
        const std::string& half = m_parts.hour < 12 ? m_culture.am : m_culture.pm;
        if (count >= 2) {
            m_out += half;
            return;
        }
        m_out += Slice(half, 0, 1);
    }

    void WriteZone(int count) {
        const int minutes = MinutesFromUtc(m_parts);
        m_out += minutes < 0 ? '-' : '+';
        AppendPadded(std::abs(minutes) / 60, std::min(count, 2), m_out);
        if (count >= 3) {
            m_out += ':';
            AppendPadded(std::abs(minutes) % 60, 2, m_out);
        }
    }

    const DateTimeParts m_parts;
    const std::string_view m_pattern;
    const Culture& m_culture;
    std::string& m_out;
};

// Formats made for numbers: #,##0.00, N2.
bool LooksNumeric(std::string_view format) {
    if (format.size() <= 3 &&
        std::string_view("CDEFGNPRXcdefgnprx").find(format[0]) != std::string_view::npos &&
        format.find_first_not_of("0123456789", 1) == std::string_view::npos) {
        return true;
    }
    std::string literals;
    bool places = false;
    for (std::size_t i = 0; i < format.size();) {
        if (const std::size_t literal = AppendPatternLiteral(format, i, literals)) {
            i += literal;
            continue;
        }
        if (DateLetters.find(format[i]) != std::string_view::npos && format[i] != '%') {
            return false;
        }
        places = places || format[i] == '#' || format[i] == '0';
        ++i;
    }
    return places;
}

}  // namespace

int ZoneMinutes(std::int64_t ticks) {
    return MinutesFromUtc(SplitTicks(ticks));
}

void AppendPadded(std::int64_t value, int width, std::string& out) {
    char buffer[24];
    const auto written = std::to_chars(buffer, buffer + sizeof buffer, value);
    for (auto length = written.ptr - buffer; length < width; ++length) {
        out += '0';
    }
    out.append(buffer, written.ptr);
}

void AppendFraction(int fraction, int digits, TrailingZeros zeros, std::string& out) {
    char buffer[7];
    for (int i = 6; i >= 0; --i) {
        buffer[i] = static_cast<char>('0' + fraction % 10);
        fraction /= 10;
    }
    while (zeros == TrailingZeros::Drop && digits > 0 && buffer[digits - 1] == '0') {
        --digits;
    }
    out.append(buffer, static_cast<std::size_t>(digits));
}

std::size_t AppendPatternLiteral(std::string_view pattern, std::size_t i, std::string& out) {
    const char c = pattern[i];
    if (c == '\\') {
        out += pattern.substr(std::min(i + 1, pattern.size()), 1);
        return std::min<std::size_t>(2, pattern.size() - i);
    }
    if (c != '"' && c != '\'') {
        return 0;
    }
    std::size_t j = i + 1;
    for (; j < pattern.size() && pattern[j] != c; ++j) {
        if (pattern[j] == '\\' && j + 1 < pattern.size()) {
            ++j;
        }
        out += pattern[j];
    }
    return std::min(j + 1, pattern.size()) - i;
}

std::size_t RepeatCount(std::string_view pattern, std::size_t i) {
    const std::size_t end = pattern.find_first_not_of(pattern[i], i);
    return (end == std::string_view::npos ? pattern.size() : end) - i;
}

void AppendDatePattern(std::int64_t ticks, std::string_view pattern, const Culture& culture,
                       std::string& out) {
    PatternWriter(ticks, pattern, culture, out).Write();
}

bool StandardDatePattern(char letter, const Culture& culture, std::string& pattern, bool& invariant) {
    invariant = false;
    switch (letter) {
        case 'd':
            pattern = culture.shortDate;
            return true;
        case 'D':
            pattern = culture.longDate;
            return true;
        case 'f':
            pattern = culture.longDate + " " + culture.shortTime;
            return true;
        case 'F':
        case 'U':
            pattern = culture.longDate + " " + culture.longTime;
            return true;
        case 'g':
            pattern = culture.shortDate + " " + culture.shortTime;
            return true;
        case 'G':
            pattern = culture.shortDate + " " + culture.longTime;
            return true;
        case 'm':
        case 'M':
            pattern = culture.monthDay;
            return true;
        case 't':
            pattern = culture.shortTime;
            return true;
        case 'T':
            pattern = culture.longTime;
            return true;
        case 'y':
        case 'Y':
            pattern = culture.yearMonth;
            return true;
        default:
            break;
    }
    invariant = true;
    switch (letter) {
        case 'o':
        case 'O':
            pattern = "yyyy-MM-ddTHH:mm:ss.fffffff";
            return true;
        case 'r':
        case 'R':
            pattern = "ddd, dd MMM yyyy HH:mm:ss 'GMT'";
            return true;
        case 's':
            pattern = "yyyy-MM-ddTHH:mm:ss";
            return true;
        case 'u':
            pattern = "yyyy-MM-dd HH:mm:ss'Z'";
            return true;
        default:
            return false;
    }
}

bool FormatDateTime(std::int64_t ticks, std::string_view format, const Culture& culture, std::string& out) {
    if (format.size() == 1) {
        std::string pattern;
        bool invariant = false;
        if (!StandardDatePattern(format[0], culture, pattern, invariant)) {
            return false;
        }
        AppendDatePattern(ticks, pattern, invariant ? FindCulture("") : culture, out);
        return true;
    }
    if (LooksNumeric(format)) {
        return false;
    }
    AppendDatePattern(ticks, format, culture, out);
    return true;
}

}  // namespace rdl
