// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/csv/csv_lines.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "rdl/format/format.h"
#include "rdl/format/iso_date.h"
#include "rdl/values/base64.h"

namespace rdl::writers {
namespace {

// Beyond this magnitude digits without an exponent would be mostly zeros.
constexpr double MostPlain = 1e21, LeastPlain = 1e-7;

bool NeedsQuotes(std::string_view text) {
    for (const char c : text) {
        if (c == ',' || c == '"' || c == '\r' || c == '\n') {
            return true;
        }
    }
    return false;
}

std::string NumberText(double number) {
    char digits[64];
    const double size = std::fabs(number);
    const bool isPlain = size == 0 || (size < MostPlain && size >= LeastPlain);
    const std::to_chars_result end =
        isPlain ? std::to_chars(digits, digits + sizeof digits, number, std::chars_format::fixed)
                : std::to_chars(digits, digits + sizeof digits, number);
    return {digits, end.ptr};
}

std::string MomentText(std::int64_t ticks) {
    const DateTimeParts parts = SplitTicks(ticks);
    std::string text = IsoDate(parts);
    if (ticks % TicksPerDay != 0) {
        text += "T" + IsoTime(parts);
    }
    if (parts.fraction != 0) {
        text += IsoFraction(parts);
        text.erase(text.find_last_not_of('0') + 1);
    }
    return text;
}

}  // namespace

void AppendField(std::string& line, std::string_view text) {
    if (!NeedsQuotes(text)) {
        line += text;
        return;
    }
    line += '"';
    for (const char c : text) {
        line += c == '"' ? "\"\"" : std::string_view(&c, 1);
    }
    line += '"';
}

template <typename Fields>
void CsvLines::AddLine(const Fields& fields) {
    constexpr std::size_t PieceSize = 64u << 10;
    const std::size_t begin = m_text.size();
    for (std::size_t i = 0; i < fields.size(); ++i) {
        if (i > 0) {
            m_text += ',';
        }
        AppendField(m_text, fields[i]);
    }
    // A line without a character would be the end of the table.
    m_text += m_text.size() == begin ? "\"\"\r\n" : "\r\n";
    if (m_text.size() >= PieceSize) {
        Flush();
    }
}

void CsvLines::Add(const std::vector<std::string>& fields) {
    AddLine(fields);
}

void CsvLines::Add(const std::vector<std::string_view>& fields) {
    AddLine(fields);
}

void CsvLines::Flush() {
    m_output.Write(m_text);
    m_text.clear();
}

std::string PlainText(const Value& value) {
    switch (value.kind()) {
        case Kind::Boolean:
            return value.AsBoolean() ? "true" : "false";
        case Kind::Integer:
            return std::to_string(value.AsInteger());
        case Kind::Real:
            return NumberText(value.AsReal());
        case Kind::DateTime:
            return MomentText(value.AsTicks());
        case Kind::Bytes:
            return ToBase64(value.AsText());
        default:
            return ToText(value, FindCulture(""));
    }
}

}  // namespace rdl::writers
