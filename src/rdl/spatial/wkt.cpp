// SPDX-License-Identifier: GPL-3.0-or-later
// Well-known text (OGC 06-103r4, section 7).
#include <charconv>
#include <optional>

#include "rdl/spatial/geometry.h"
#include "rdl/values/ascii.h"
#include "rdl/values/base64.h"
#include "rdl/values/error.h"
#include "rdl/values/utf8.h"

namespace rdl::spatial {
namespace {

class TextReader {
 public:
    TextReader(std::string_view text, Allowance& allowance) : m_text(text), m_allowance(allowance) {}

    Geometry Read() {
        SkipReference();
        Geometry geometry;
        Shape(geometry, 0);
        SkipSpace();
        if (m_at < m_text.size()) {
            Expected("the end of the shape");
        }
        return geometry;
    }

 private:
    [[noreturn]] void Expected(const std::string& what) const {
        throw Error("its text should have " + what + " at character " +
                    std::to_string(CharacterCount(m_text.substr(0, m_at)) + 1));
    }

    void SkipSpace() {
        while (m_at < m_text.size() && IsAsciiSpace(m_text[m_at])) {
            ++m_at;
        }
    }

    // Databases write SRID=4326; before the shape.
    void SkipReference() {
        if (m_text.size() > 5 && EqualNoCase(m_text.substr(0, 5), "SRID=")) {
            const std::size_t end = m_text.find(';');
            m_at = end == std::string_view::npos ? m_text.size() : end + 1;
        }
    }

    bool Takes(char mark) {
        SkipSpace();
        if (m_at < m_text.size() && m_text[m_at] == mark) {
            ++m_at;
            return true;
        }
        return false;
    }

    void Require(char mark) {
        if (!Takes(mark)) {
            Expected(std::string(1, mark));
        }
    }

    std::string Word() {
        SkipSpace();
        const std::size_t begin = m_at;
        while (m_at < m_text.size() && IsAsciiLetter(m_text[m_at])) {
            ++m_at;
        }
        return UpperAscii(m_text.substr(begin, m_at - begin));
    }

    // Whether the next word is EMPTY. Words of dimensions before it are skipped.
    bool IsEmpty() {
        while (true) {
            const std::size_t begin = m_at;
            const std::string word = Word();
            if (word == "EMPTY") {
                return true;
            }
            if (word != "Z" && word != "M" && word != "ZM") {
                m_at = begin;
                return false;
            }
        }
    }

    bool NextIsNumber() {
        SkipSpace();
        return m_at < m_text.size() &&
               (IsAsciiDigit(m_text[m_at]) || IsOneOf(m_text.substr(m_at, 1), {"-", "+", "."}));
    }

    double Number() {
        SkipSpace();
        if (m_at < m_text.size() && m_text[m_at] == '+') {
            ++m_at;
        }
        double number = 0;
        const char* const begin = m_text.data() + m_at;
        const auto [end, failure] = std::from_chars(begin, m_text.data() + m_text.size(), number);
        if (failure != std::errc()) {
            Expected("a number");
        }
        m_at += static_cast<std::size_t>(end - begin);
        return number;
    }

    // Numbers after the second, height and measure, are not drawn.
    Position At() {
        const double x = Number(), y = Number();
        for (int more = 0; more < 2 && NextIsNumber(); ++more) {
            Number();
        }
        m_allowance.TakePositions(1);
        return CheckedPosition(x, y);
    }

    Positions List() {
        Positions positions;
        if (IsEmpty()) {
            return positions;
        }
        Require('(');
        do {
            positions.push_back(At());
        } while (Takes(','));
        Require(')');
        return positions;
    }

    // Calls `part` for each part of a list in parentheses.
    template <typename Part>
    void Each(const Part& part) {
        if (IsEmpty()) {
            return;
        }
        Require('(');
        do {
            part();
        } while (Takes(','));
        Require(')');
    }

    void Polygon(Geometry& geometry) {
        bool isHole = false;
        Each([&] {
            AddRing(List(), isHole, geometry);
            isHole = true;
        });
    }

    // The positions of several points may be in parentheses each.
    void Points(Geometry& geometry) {
        Each([&] {
            if (IsEmpty()) {
                return;
            }
            const bool isEnclosed = Takes('(');
            geometry.points.push_back(At());
            if (isEnclosed) {
                Require(')');
            }
        });
    }

    void Shape(Geometry& geometry, int depth) {
        const std::size_t begin = m_at;
        std::string kind = Word();
        if (kind.ends_with("ZM")) {
            kind.resize(kind.size() - 2);
        } else if (kind.ends_with('Z') || (kind.ends_with('M') && kind != "M")) {
            kind.pop_back();
        }
        if (kind == "POINT" || kind == "MULTIPOINT") {
            Points(geometry);
        } else if (kind == "LINESTRING") {
            AddLine(List(), geometry);
        } else if (kind == "MULTILINESTRING") {
            Each([&] { AddLine(List(), geometry); });
        } else if (kind == "POLYGON") {
            Polygon(geometry);
        } else if (kind == "MULTIPOLYGON") {
            Each([&] { Polygon(geometry); });
        } else if (kind == "GEOMETRYCOLLECTION") {
            if (depth == DeepestCollection) {
                throw Error("its collections are nested too deeply");
            }
            Each([&] { Shape(geometry, depth + 1); });
        } else if (kind.empty()) {
            m_at = begin;
            Expected("the kind of a shape");
        } else {
            throw Error("a shape of the kind " + kind.substr(0, 40) + " cannot be drawn");
        }
    }

    const std::string_view m_text;
    Allowance& m_allowance;
    std::size_t m_at = 0;
};

// Returns nullopt unless the text is hexadecimal digits, with or without 0x before them.
std::optional<std::string> FromHex(std::string_view text) {
    if (text.starts_with("0x") || text.starts_with("0X")) {
        text.remove_prefix(2);
    }
    if (text.empty() || text.size() % 2) {
        return std::nullopt;
    }
    std::string bytes;
    bytes.reserve(text.size() / 2);
    for (std::size_t i = 0; i < text.size(); i += 2) {
        const int high = HexDigitValue(text[i]), low = HexDigitValue(text[i + 1]);
        if (high < 0 || low < 0) {
            return std::nullopt;
        }
        bytes += static_cast<char>(high * 16 + low);
    }
    return bytes;
}

}  // namespace

Geometry ReadText(std::string_view text, Allowance& allowance) {
    text = Trimmed(text);
    if (text.empty()) {
        return {};
    }
    const bool isWellKnown = text.find('(') != std::string_view::npos ||
                             (text.size() > 5 && EqualNoCase(text.substr(text.size() - 5), "EMPTY"));
    if (!isWellKnown) {
        std::optional<std::string> bytes = FromHex(text);
        if (!bytes) {
            bytes = FromBase64(text);
        }
        if (bytes) {
            return ReadBinary(*bytes, allowance);
        }
    }
    return TextReader(text, allowance).Read();
}

}  // namespace rdl::spatial
