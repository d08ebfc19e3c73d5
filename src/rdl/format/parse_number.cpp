// SPDX-License-Identifier: GPL-3.0-or-later
#include <charconv>
#include <cmath>

#include "rdl/format/format.h"
#include "rdl/values/ascii.h"

namespace rdl {
namespace {

constexpr std::size_t LongestNumber = 400;
constexpr std::string_view NoBreak = "\xC2\xA0", NarrowNoBreak = "\xE2\x80\xAF";

class NumberReader {
 public:
    NumberReader(std::string_view text, const Culture& culture) : m_rest(text), m_culture(culture) {}

    bool Read(Decimal& number) {
        const auto read = ReadPlain() ? Decimal::OfText(m_plain) : std::nullopt;
        number = !read ? Decimal() : m_negative ? -*read : *read;
        return read.has_value();
    }

    bool Read(double& number) {
        if (!ReadPlain()) {
            return false;
        }
        const char* end = m_plain.data() + m_plain.size();
        const auto read = std::from_chars(m_plain.data(), end, number);
        if (read.ec == std::errc::result_out_of_range) {
            number = 0;  // too small to differ from zero, or too large, which is no number
            return m_plain.find("e-") != std::string::npos;
        }
        if (read.ec != std::errc() || read.ptr != end || !std::isfinite(number)) {
            return false;
        }
        number = m_negative ? -number : number;
        return true;
    }

 private:
    bool ReadPlain() { return ReadPrefix() && ReadDigits() && ReadSuffix(); }

    bool Take(std::string_view piece) {
        if (piece.empty() || m_rest.substr(0, piece.size()) != piece) {
            return false;
        }
        m_rest.remove_prefix(piece.size());
        return true;
    }

    void SkipSpaces() {
        while (!m_rest.empty() && (IsAsciiSpace(m_rest[0]) || Take(NoBreak) || Take(NarrowNoBreak))) {
            if (!m_rest.empty() && IsAsciiSpace(m_rest[0])) {
                m_rest.remove_prefix(1);
            }
        }
    }

    bool TakeSign() {
        if (m_signed || m_parenthesis) {
            return false;
        }
        if (Take("-") || Take(m_culture.negativeSign) || Take("\xE2\x88\x92")) {
            m_negative = true;
        } else if (!Take("+")) {
            return false;
        }
        m_signed = true;
        return true;
    }

    bool TakeCurrency() {
        if (m_currency || !Take(m_culture.currencySymbol)) {
            return false;
        }
        m_currency = true;
        return true;
    }

    bool ReadPrefix() {
        for (;;) {
            SkipSpaces();
            if (!m_parenthesis && !m_signed && Take("(")) {
                m_parenthesis = m_negative = true;
            } else if (!TakeSign() && !TakeCurrency()) {
                return !m_rest.empty();
            }
        }
    }

    // A space that groups may be any space.
    bool TakeGroup() {
        const std::string& group = m_culture.groupSeparator;
        if (Take(group)) {
            return true;
        }
        const bool narrow = m_rest.starts_with(NarrowNoBreak);
        const std::size_t length = narrow ? NarrowNoBreak.size() : 1;
        return group == NoBreak && m_rest.size() > length && IsAsciiDigit(m_rest[length]) &&
               Take(narrow ? NarrowNoBreak : " ");
    }

    bool ReadDigits() {
        bool digits = false, point = false;
        while (!m_rest.empty()) {
            if (m_rest[0] >= '0' && m_rest[0] <= '9') {
                digits = true;
                m_plain += m_rest[0];
                m_rest.remove_prefix(1);
            } else if (!point && Take(m_culture.decimalSeparator)) {
                point = true;
                m_plain += '.';
            } else if (!digits || point || !TakeGroup()) {
                break;
            }
        }
        return digits && ReadExponent();
    }

    bool ReadExponent() {
        if (m_rest.empty() || (m_rest[0] != 'e' && m_rest[0] != 'E')) {
            return true;
        }
        m_rest.remove_prefix(1);
        m_plain += 'e';
        if (Take("-")) {
            m_plain += '-';
        } else {
            Take("+");
        }
        const std::size_t before = m_plain.size();
        while (!m_rest.empty() && m_rest[0] >= '0' && m_rest[0] <= '9') {
            m_plain += m_rest[0];
            m_rest.remove_prefix(1);
        }
        return m_plain.size() > before;
    }

    bool ReadSuffix() {
        bool closed = !m_parenthesis;
        for (;;) {
            SkipSpaces();
            if (m_rest.empty()) {
                return closed;
            }
            if (!closed && Take(")")) {
                closed = true;
            } else if (!TakeSign() && !TakeCurrency()) {
                return false;
            }
        }
    }

    std::string_view m_rest;
    const Culture& m_culture;
    std::string m_plain;
    bool m_negative = false, m_signed = false, m_parenthesis = false, m_currency = false;
};

}  // namespace

bool ParseNumber(std::string_view text, const Culture& culture, double& number) {
    return text.size() <= LongestNumber && NumberReader(text, culture).Read(number);
}

bool ParseNumber(std::string_view text, const Culture& culture, Decimal& number) {
    return text.size() <= LongestNumber && NumberReader(text, culture).Read(number);
}

}  // namespace rdl
