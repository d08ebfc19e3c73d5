// SPDX-License-Identifier: GPL-3.0-or-later
// Custom number formats: up to three sections (positive, negative, zero), digit places, scaling, exponents,
// literals.
#include <algorithm>
#include <cstdlib>

#include "rdl/format/number_format.h"

namespace rdl {
namespace {

constexpr std::string_view PerMille = "\xE2\x80\xB0";

// What a section asks for, found in one pass before digits are laid out in a second.
struct Section {
    std::string_view text;
    int digitPlaces = 0;
    int pointPlace = -1;              // digit places before the decimal point
    int firstZero = -1, endZero = 0;  // places where zeros are forced
    int scaleAdjust = 0;              // powers of ten
    bool grouped = false, scientific = false;
};

// Length of the token at `i` when it is literal text or an escape (0: it is not); `from`, `to` bound the
// text.
std::size_t LiteralLength(std::string_view text, std::size_t i, std::size_t& from, std::size_t& to) {
    if (text[i] == '\\') {
        from = std::min(i + 1, text.size());
        to = std::min(i + 2, text.size());
        return to - i;
    }
    if (text[i] == '"' || text[i] == '\'') {
        const std::size_t close = text.find(text[i], i + 1);
        from = i + 1;
        to = close == std::string_view::npos ? text.size() : close;
        return (close == std::string_view::npos ? to : close + 1) - i;
    }
    return 0;
}

// Returns the length of an exponent such as E0, E+00 or e-000; 0 if the E is literal text.
std::size_t ExponentLength(std::string_view text, std::size_t i) {
    if (text[i] != 'E' && text[i] != 'e') {
        return 0;
    }
    std::size_t j = i + 1;
    if (j < text.size() && (text[j] == '+' || text[j] == '-')) {
        ++j;
    }
    const std::size_t zeros = j;
    while (j < text.size() && text[j] == '0') {
        ++j;
    }
    return j > zeros ? j - i : 0;
}

// The section by number; npos when the format has fewer.
std::string_view SectionText(std::string_view format, int wanted) {
    std::size_t begin = 0, i = 0, from = 0, to = 0;
    int number = 0;
    while (i < format.size()) {
        if (const std::size_t literal = LiteralLength(format, i, from, to)) {
            i += literal;
        } else if (format[i] == ';') {
            if (number == wanted) {
                return format.substr(begin, i - begin);
            }
            ++number;
            begin = ++i;
        } else {
            ++i;
        }
    }
    return number == wanted ? format.substr(begin) : std::string_view();
}

class SectionScanner {
 public:
    explicit SectionScanner(std::string_view text) { m_section.text = text; }

    Section Scan() {
        std::size_t i = 0, from = 0, to = 0;
        const std::string_view text = m_section.text;
        while (i < text.size()) {
            if (const std::size_t literal = LiteralLength(text, i, from, to)) {
                i += literal;
            } else if (const std::size_t exponent = ExponentLength(text, i)) {
                m_section.scientific = true;
                i += exponent;
            } else if (text.substr(i, PerMille.size()) == PerMille) {
                m_section.scaleAdjust += 3;
                i += PerMille.size();
            } else {
                Mark(text[i++]);
            }
        }
        Finish();
        return m_section;
    }

 private:
    void Mark(char c) {
        switch (c) {
            case '0':
                if (m_section.firstZero < 0) {
                    m_section.firstZero = m_section.digitPlaces;
                }
                m_section.endZero = ++m_section.digitPlaces;
                break;
            case '#':
                ++m_section.digitPlaces;
                break;
            case '.':
                if (m_section.pointPlace < 0) {
                    m_section.pointPlace = m_section.digitPlaces;
                }
                break;
            case ',':
                MarkComma();
                break;
            case '%':
                m_section.scaleAdjust += 2;
                break;
            default:
                break;
        }
    }

    // Commas between digit places group; those right before the point divide by a thousand each.
    void MarkComma() {
        if (m_section.digitPlaces == 0 || m_section.pointPlace >= 0) {
            return;
        }
        if (m_commaPlace == m_section.digitPlaces) {
            ++m_commas;
            return;
        }
        if (m_commaPlace >= 0) {
            m_section.grouped = true;
        }
        m_commaPlace = m_section.digitPlaces;
        m_commas = 1;
    }

    void Finish() {
        if (m_section.pointPlace < 0) {
            m_section.pointPlace = m_section.digitPlaces;
        }
        if (m_commaPlace == m_section.pointPlace) {
            m_section.scaleAdjust -= 3 * m_commas;
        } else if (m_commaPlace >= 0) {
            m_section.grouped = true;
        }
    }

    Section m_section;
    int m_commaPlace = -1, m_commas = 0;
};

class SectionWriter {
 public:
    SectionWriter(const Section& section, const Digits& number, const Culture& culture, std::string& out)
        : m_section(section), m_number(number), m_culture(culture), m_out(out) {
        m_zerosFrom = section.firstZero >= 0 ? std::max(section.pointPlace - section.firstZero, 0) : 0;
        m_zerosTo = std::min(section.pointPlace - section.endZero, 0);
        if (section.scientific) {
            m_place = section.pointPlace;
        } else {
            m_place = std::max(number.scale, section.pointPlace);
            m_adjust = number.scale - section.pointPlace;
        }
    }

    void Write() {
        const std::string_view text = m_section.text;
        std::size_t i = 0, from = 0, to = 0;
        while (i < text.size()) {
            if (const std::size_t literal = LiteralLength(text, i, from, to)) {
                m_out += text.substr(from, to - from);
                i += literal;
            } else if (const std::size_t exponent = ExponentLength(text, i)) {
                WriteExponent(text.substr(i, exponent));
                i += exponent;
            } else if (text.substr(i, PerMille.size()) == PerMille) {
                m_out += PerMille;
                i += PerMille.size();
            } else {
                WriteOne(text[i++]);
            }
        }
    }

 private:
    void WriteOne(char c) {
        switch (c) {
            case '0':
            case '#':
                WriteSurplus();
                WritePlace();
                break;
            case '.':
                WriteSurplus();
                WritePoint();
                break;
            case '%':
                m_out += m_culture.percentSymbol;
                break;
            case ',':
                break;
            default:
                m_out += c;
        }
    }

    // A number with more digits than the format has places before the point shows them all at the first
    // place.
    void WriteSurplus() {
        for (; m_adjust > 0; --m_adjust) {
            WriteDigit(m_number.At(m_next++));
        }
    }

    void WritePlace() {
        if (m_adjust < 0) {
            ++m_adjust;
            if (m_place <= m_zerosFrom) {
                WriteDigit('0');
            } else {
                --m_place;
            }
        } else if (m_next < m_number.count) {
            WriteDigit(m_number.At(m_next++));
        } else if (m_place > m_zerosTo) {
            WriteDigit('0');
        } else {
            --m_place;
        }
    }

    void WriteDigit(char digit) {
        m_out += digit;
        if (m_section.grouped && IsGroupEnd(m_place - 1, m_culture)) {
            m_out += m_culture.groupSeparator;
        }
        --m_place;
    }

    void WritePoint() {
        if (m_place != 0 || m_pointWritten) {
            return;
        }
        const bool more = m_section.pointPlace < m_section.digitPlaces && m_next < m_number.count;
        if (m_zerosTo < 0 || more) {
            m_out += m_culture.decimalSeparator;
            m_pointWritten = true;
        }
    }

    // Once; a second exponent shows as text.
    void WriteExponent(std::string_view token) {
        if (!m_section.scientific || m_exponentWritten) {
            m_out += token;
            return;
        }
        m_exponentWritten = true;
        const int exponent = m_number.IsZero() ? 0 : m_number.scale - m_section.pointPlace;
        m_out += token[0];
        const bool sign = token[1] == '+' || token[1] == '-';
        if (exponent < 0) {
            m_out += m_culture.negativeSign;
        } else if (token[1] == '+') {
            m_out += '+';
        }
        const std::string digits = std::to_string(std::abs(exponent));
        const std::size_t width = std::min<std::size_t>(token.size() - (sign ? 2 : 1), 10);
        m_out.append(width > digits.size() ? width - digits.size() : 0, '0');
        m_out += digits;
    }

    const Section& m_section;
    const Digits& m_number;
    const Culture& m_culture;
    std::string& m_out;
    int m_place = 0;   // digit placeholders left before the decimal point; negative after it
    int m_adjust = 0;  // > 0: surplus digits; < 0: places to leave empty first
    int m_zerosFrom = 0, m_zerosTo = 0;
    int m_next = 0;  // next digit of the number
    bool m_pointWritten = false, m_exponentWritten = false;
};

Digits ScaledAndRounded(Digits number, const Section& section) {
    if (number.IsZero()) {
        return number;
    }
    number.scale += section.scaleAdjust;
    const int places =
        section.scientific ? section.digitPlaces : number.scale + section.digitPlaces - section.pointPlace;
    number.Round(places);
    return number;
}

}  // namespace

void FormatCustomNumber(const Value& value, std::string_view format, const Culture& culture,
                        std::string& out) {
    if (value.kind() == Kind::Real && AppendNotFinite(value.AsReal(), culture, out)) {
        return;
    }
    const Digits number = DigitsOf(value);
    const std::string_view positive = SectionText(format, 0);
    std::string_view text = positive;
    bool ownSection = false;  // a section of its own says the sign itself
    if (number.negative) {
        const std::string_view negative = SectionText(format, 1);
        ownSection = !negative.empty();
        text = ownSection ? negative : positive;
    }
    Section section = SectionScanner(text).Scan();
    Digits rounded = ScaledAndRounded(number, section);
    if (rounded.IsZero()) {
        const std::string_view zero = SectionText(format, 2);
        section = SectionScanner(zero.empty() ? positive : zero).Scan();
        rounded = Digits();
    }
    if (rounded.negative && !ownSection) {
        out += culture.negativeSign;
    }
    SectionWriter(section, rounded, culture, out).Write();
}

}  // namespace rdl
