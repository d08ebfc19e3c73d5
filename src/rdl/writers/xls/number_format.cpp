// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/xls/number_format.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "rdl/values/ascii.h"

namespace rdl::writers {
namespace {

constexpr std::size_t LongestFormat = 250;
constexpr int MostDecimals = 30;

void AppendLiteral(std::string_view text, std::string& out) {
    if (text.empty()) {
        return;
    }
    if (text.find('"') != std::string_view::npos) {
        for (const char c : text) {
            out += static_cast<unsigned char>(c) < 0x80 ? "\\" : "";
            out += c;
        }
        return;
    }
    out += '"';
    out += text;
    out += '"';
}

// Sets `text` to the literal at `i` of a .NET format. Returns its length, 0 if there is none.
std::size_t TakeLiteral(std::string_view format, std::size_t i, std::string& text) {
    if (format[i] == '\\') {
        text = format.substr(i + 1, 1);
        return std::min<std::size_t>(2, format.size() - i);
    }
    if (format[i] != '\'' && format[i] != '"') {
        return 0;
    }
    const std::size_t close = format.find(format[i], i + 1);
    text = format.substr(i + 1, close == std::string_view::npos ? close : close - i - 1);
    return (close == std::string_view::npos ? format.size() : close + 1) - i;
}

std::string Digits(int decimals, bool grouped) {
    std::string digits = grouped ? "#,##0" : "0";
    if (decimals > 0) {
        digits += '.';
        digits.append(static_cast<std::size_t>(std::min(decimals, MostDecimals)), '0');
    }
    return digits;
}

// n, $ and - of a culture's pattern filled in.
std::string FillPattern(std::string_view pattern, const std::string& digits, std::string_view symbol) {
    std::string out;
    for (const char c : pattern) {
        if (c == 'n') {
            out += digits;
        } else if (c == '$') {
            if (symbol == "%") {
                out += '%';
            } else {
                AppendLiteral(symbol, out);
            }
        } else {
            out += c == ' ' ? "\" \"" : std::string(1, c);
        }
    }
    return out;
}

std::string CurrencyFormat(int decimals, const Culture& culture) {
    static constexpr const char* Positive[] = {"$n", "n$", "$ n", "n $"};
    static constexpr const char* Negative[] = {"($n)", "-$n",  "$-n",   "$n-",  "(n$)", "-n$",
                                               "n-$",  "n$-",  "-n $",  "-$ n", "n $-", "$ n-",
                                               "$ -n", "n- $", "($ n)", "(n $)"};
    const std::string digits = Digits(decimals < 0 ? culture.currencyDecimals : decimals, true);
    return FillPattern(Positive[culture.currencyPositivePattern & 3], digits, culture.currencySymbol) + ";" +
           FillPattern(Negative[culture.currencyNegativePattern & 15], digits, culture.currencySymbol);
}

std::string PercentFormat(int decimals, const Culture& culture) {
    static constexpr const char* Positive[] = {"n $", "n$", "$n", "$ n"};
    const std::string digits = Digits(decimals < 0 ? culture.percentDecimals : decimals, true);
    return FillPattern(Positive[culture.percentPositivePattern & 3], digits, "%");
}

std::optional<std::string> StandardNumber(char letter, int precision, const Culture& culture, bool integer) {
    const int decimals = precision < 0 ? culture.numberDecimals : precision;
    switch (AsciiLower(letter)) {
        case 'c':
            return CurrencyFormat(precision, culture);
        case 'd':
            if (!integer) {
                return "General";  // a format of whole numbers; others are shown as they are
            }
            return std::string(static_cast<std::size_t>(std::clamp(precision, 1, MostDecimals)), '0');
        case 'e':
            return Digits(precision < 0 ? 6 : precision, false) + "E+000";
        case 'f':
            return Digits(decimals, false);
        case 'g':
            return precision > 0 ? std::nullopt : std::optional<std::string>("General");
        case 'n':
            return Digits(decimals, true);
        case 'p':
            return PercentFormat(precision, culture);
        case 'r':
            return "General";
        default:
            return std::nullopt;
    }
}

// One section of a custom number format. `decimals`: how many the value shows, -1 when it does not matter.
class NumberSection {
 public:
    NumberSection(std::string_view text, int decimals) : m_text(text), m_decimals(decimals) {}

    std::optional<std::string> Translate() {
        std::string literal;
        std::size_t i = 0;
        while (i < m_text.size()) {
            if (const std::size_t length = TakeLiteral(m_text, i, literal)) {
                AppendLiteral(literal, m_out);
                i += length;
            } else if (const std::size_t exponent = TakeExponent(i)) {
                i += exponent;
            } else if (!TakeOne(m_text[i++])) {
                return std::nullopt;
            }
        }
        return m_out;
    }

 private:
    // E0 shows a sign before negative exponents only: Excel's E-0.
    std::size_t TakeExponent(std::size_t i) {
        if (m_text[i] != 'E' && m_text[i] != 'e') {
            return 0;
        }
        std::size_t j = i + 1;
        const char sign = j < m_text.size() && (m_text[j] == '+' || m_text[j] == '-') ? m_text[j++] : '-';
        const std::size_t zeros = j;
        while (j < m_text.size() && m_text[j] == '0') {
            ++j;
        }
        if (j == zeros) {
            return 0;
        }
        m_out += 'E';
        m_out += sign;
        m_out.append(j - zeros, '0');
        return j - i;
    }

    bool TakeOne(char c) {
        switch (c) {
            case '0':
            case '#':
                TakePlace(c);
                return true;
            case '.':
                if (!m_point && m_decimals != 0) {
                    m_out += c;
                }
                m_point = true;
                return true;
            case ',':  // after the decimal point .NET ignores it; Excel would divide by a thousand
                m_out += m_point ? "" : ",";
                return true;
            case '%':
                m_out += c;
                return true;
            default:
                break;
        }
        if (static_cast<unsigned char>(c) == 0xE2) {
            return false;  // perhaps a per mille sign, which scales
        }
        if (std::string_view(" $-+/():!^&~{}=<>").find(c) != std::string_view::npos) {
            m_out += c;
        } else {
            AppendByte(c);
        }
        return true;
    }

    void TakePlace(char c) {
        if (!m_point || m_decimals < 0) {
            m_out += c;
        } else if (m_written < m_decimals) {
            m_out += '0';
            ++m_written;
        }
    }

    // Bytes of one character must stay together within quotes.
    void AppendByte(char c) {
        if (!m_out.empty() && m_out.back() == '"' && m_quoted == m_out.size()) {
            m_out.pop_back();
        } else {
            m_out += '"';
        }
        m_out += c;
        m_out += '"';
        m_quoted = m_out.size();
    }

    std::string_view m_text;
    int m_decimals, m_written = 0;
    std::string m_out;
    std::size_t m_quoted = 0;  // where quotes of AppendByte ended
    bool m_point = false;
};

std::vector<std::string_view> Sections(std::string_view format) {
    std::vector<std::string_view> sections;
    std::string ignored;
    std::size_t begin = 0, i = 0;
    while (i < format.size()) {
        if (const std::size_t length = TakeLiteral(format, i, ignored)) {
            i += length;
        } else if (format[i] == ';') {
            sections.push_back(format.substr(begin, i - begin));
            begin = ++i;
        } else {
            ++i;
        }
    }
    sections.push_back(format.substr(begin));
    sections.resize(std::min<std::size_t>(sections.size(), 3));
    return sections;
}

int DecimalsShown(std::string_view shown, const Culture& culture) {
    const std::size_t at = shown.find(culture.decimalSeparator);
    if (at == std::string_view::npos) {
        return 0;
    }
    int count = 0;
    for (std::size_t i = at + culture.decimalSeparator.size(); i < shown.size() && IsAsciiDigit(shown[i]);
         ++i) {
        ++count;
    }
    return count;
}

// .NET shows by the first section what has an empty one; Excel would show nothing.
std::optional<std::string> CustomNumber(std::string_view format, const Culture& culture,
                                        std::string_view shown) {
    const int decimals = DependsOnValue(format) ? DecimalsShown(shown, culture) : -1;
    const std::vector<std::string_view> sections = Sections(format);
    std::string out;
    for (std::size_t i = 0; i < sections.size(); ++i) {
        const bool empty = sections[i].empty() && i > 0;
        std::optional<std::string> section =
            NumberSection(empty ? sections[0] : sections[i], decimals).Translate();
        if (!section) {
            return std::nullopt;
        }
        out += i > 0 ? ";" : "";
        out += (empty && i == 1 ? "-" : "") + *section;
    }
    return out;
}

// Windows' numbers of languages, so that names of months and days are those of the report.
const char* LanguageNumber(const Culture& culture) {
    static constexpr std::pair<std::string_view, const char*> Numbers[] = {
        {"en-US", "409"},  {"en-GB", "809"},  {"en-CA", "1009"}, {"en-AU", "C09"},  {"en-NZ", "1409"},
        {"en-IE", "1809"}, {"de-DE", "407"},  {"de-AT", "C07"},  {"de-CH", "807"},  {"fr-FR", "40C"},
        {"fr-CA", "C0C"},  {"fr-CH", "100C"}, {"fr-BE", "80C"},  {"es-ES", "C0A"},  {"es-MX", "80A"},
        {"it-IT", "410"},  {"nl-NL", "413"},  {"nl-BE", "813"},  {"pt-BR", "416"},  {"pt-PT", "816"},
        {"sv-SE", "41D"},  {"da-DK", "406"},  {"nb-NO", "414"},  {"fi-FI", "40B"},  {"pl-PL", "415"},
        {"cs-CZ", "405"},  {"ru-RU", "419"},  {"tr-TR", "41F"},  {"ja-JP", "411"},  {"zh-CN", "804"},
        {"ko-KR", "412"},  {"en-IN", "4009"}, {"en-ZA", "1C09"}, {"es-AR", "2C0A"}, {"zh-TW", "404"},
        {"zh-HK", "C04"},  {"nn-NO", "814"},  {"ar-SA", "401"},  {"bg-BG", "402"},  {"el-GR", "408"},
        {"et-EE", "425"},  {"fa-IR", "429"},  {"he-IL", "40D"},  {"hi-IN", "439"},  {"hr-HR", "41A"},
        {"hu-HU", "40E"},  {"id-ID", "421"},  {"lt-LT", "427"},  {"lv-LV", "426"},  {"ro-RO", "418"},
        {"sk-SK", "41B"},  {"sl-SI", "424"},  {"th-TH", "41E"},  {"uk-UA", "422"},  {"vi-VN", "42A"}};
    const std::string_view language = std::string_view(culture.name).substr(0, culture.name.find('-') + 1);
    const char* ofLanguage = nullptr;
    for (const auto& [name, number] : Numbers) {
        if (name == culture.name) {
            return number;
        }
        if (!ofLanguage && !language.empty() && name.starts_with(language)) {
            ofLanguage = number;
        }
    }
    return ofLanguage ? ofLanguage : "409";
}

std::string StandardDatePattern(char letter, const Culture& culture) {
    switch (letter) {
        case 'd':
            return culture.shortDate;
        case 'D':
            return culture.longDate;
        case 'f':
            return culture.longDate + " " + culture.shortTime;
        case 'F':
        case 'U':
            return culture.longDate + " " + culture.longTime;
        case 'g':
            return culture.shortDate + " " + culture.shortTime;
        case 'G':
            return culture.shortDate + " " + culture.longTime;
        case 'm':
        case 'M':
            return culture.monthDay;
        case 't':
            return culture.shortTime;
        case 'T':
            return culture.longTime;
        case 'y':
        case 'Y':
            return culture.yearMonth;
        case 's':
            return "yyyy-MM-dd'T'HH':'mm':'ss";
        case 'u':
            return "yyyy-MM-dd HH':'mm':'ss'Z'";
        default:
            return {};
    }
}

bool AppendDateLetter(char letter, std::size_t count, const Culture& culture, std::string& out) {
    switch (letter) {
        case 'd':
            out.append(std::min<std::size_t>(count, 4), 'd');
            return true;
        case 'M':
            out.append(std::min<std::size_t>(count, 4), 'm');
            return true;
        case 'y':
            out += count > 2 ? "yyyy" : "yy";
            return true;
        case 'h':
        case 'H':
            out.append(std::min<std::size_t>(count, 2), 'h');
            return true;
        case 'm':
        case 's':
            out.append(std::min<std::size_t>(count, 2), letter);
            return true;
        case 'f':
            out.append(std::min<std::size_t>(count, 3), '0');
            return count <= 3 && out.size() > count + 1 && out[out.size() - count - 1] == '.';
        case 't':
            if (!culture.am.empty()) {
                out += count > 1 ? "AM/PM" : "A/P";
            }
            return true;
        case '/':
            AppendLiteral(culture.dateSeparator, out);
            return true;
        case ':':
            AppendLiteral(culture.timeSeparator, out);
            return true;
        default:
            return false;  // zones, eras and fractions that come and go
    }
}

std::optional<std::string> DatePattern(std::string_view pattern, const Culture& culture) {
    std::string out, literal;
    bool names = false;
    for (std::size_t i = 0; i < pattern.size();) {
        if (const std::size_t length = TakeLiteral(pattern, i, literal)) {
            AppendLiteral(literal, out);
            i += length;
        } else if (pattern[i] == '%') {
            ++i;
        } else if (std::string_view("dMyhHmsftgzKF/:").find(pattern[i]) != std::string_view::npos) {
            const std::size_t end = std::min(pattern.find_first_not_of(pattern[i], i), pattern.size());
            names = names || ((pattern[i] == 'd' || pattern[i] == 'M') && end - i > 2);
            if (!AppendDateLetter(pattern[i], end - i, culture, out)) {
                return std::nullopt;
            }
            i = end;
        } else if (std::string_view(" .,-").find(pattern[i]) != std::string_view::npos) {
            out += pattern[i++];
        } else {
            const std::size_t end =
                std::min(pattern.find_first_of("dMyhHmsftgzKF/:'\"\\% .,-", i), pattern.size());
            AppendLiteral(pattern.substr(i, end - i), out);
            i = end;
        }
    }
    return names ? "[$-" + std::string(LanguageNumber(culture)) + "]" + out : out;
}

std::optional<std::string> NumberFormat(const Value& value, std::string_view format, const Culture& culture,
                                        std::string_view shown) {
    if (format.empty()) {
        return "General";
    }
    const bool standard = IsAsciiLetter(format[0]) && format.size() <= 3 &&
                          format.find_first_not_of("0123456789", 1) == std::string_view::npos;
    if (!standard) {
        return CustomNumber(format, culture, shown);
    }
    int precision = format.size() > 1 ? 0 : -1;
    for (const char c : format.substr(1)) {
        precision = precision * 10 + (c - '0');
    }
    return StandardNumber(format[0], precision, culture, value.kind() == Kind::Integer);
}

}  // namespace

bool DependsOnValue(std::string_view format) {
    const std::size_t point = format.find('.');
    return point != std::string_view::npos && format.find('#', point) != std::string_view::npos;
}

std::optional<std::string> ExcelFormat(const Value& value, std::string_view format, const Culture& culture,
                                       std::string_view shown) {
    std::optional<std::string> excel;
    if (value.IsNumber()) {
        excel = NumberFormat(value, format, culture, shown);
    } else if (value.kind() == Kind::DateTime) {
        const std::string pattern = format.size() > 1
                                        ? std::string(format)
                                        : StandardDatePattern(format.empty() ? 'G' : format[0], culture);
        excel = pattern.empty() ? std::nullopt : DatePattern(pattern, culture);
    }
    return excel && excel->size() <= LongestFormat && !excel->empty() ? excel : std::nullopt;
}

}  // namespace rdl::writers
