// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/format/format.h"

#include <charconv>

#include "rdl/format/date_format.h"
#include "rdl/format/number_format.h"

namespace rdl {
namespace {

constexpr int MaxListDepth = 8;

void AppendInteger(std::int64_t number, const Culture& culture, std::string& out) {
    char buffer[24];
    const auto written = std::to_chars(buffer, buffer + sizeof buffer, number);
    const char* begin = buffer;
    if (number < 0) {
        out += culture.negativeSign;
        ++begin;
    }
    out.append(begin, static_cast<std::size_t>(written.ptr - begin));
}

void AppendText(const Value& value, const Culture& culture, int depth, std::string& out) {
    switch (value.kind()) {
        case Kind::Null:
            break;
        case Kind::Boolean:
            out += value.AsBoolean() ? "True" : "False";
            break;
        case Kind::Integer:
            AppendInteger(value.AsInteger(), culture, out);
            break;
        case Kind::Real:
            AppendShortest(value.AsReal(), culture, out);
            break;
        case Kind::Decimal:
            AppendDecimal(value.AsDecimal(), culture, out);
            break;
        case Kind::DateTime:
            FormatDateTime(value.AsTicks(), "G", culture, out);
            break;
        case Kind::TimeSpan:
            FormatTimeSpan(value.AsTicks(), "c", culture, out);
            break;
        case Kind::Text:
            out += value.AsText();
            break;
        case Kind::Bytes:
            out += "System.Byte[]";
            break;
        case Kind::List: {
            const char* separator = "";
            if (depth >= MaxListDepth) {
                break;
            }
            for (const Value& item : value.AsList()) {
                out += separator;
                AppendText(item, culture, depth + 1, out);
                separator = ", ";
            }
            break;
        }
        case Kind::Error:
            out += "#Error";
            break;
        case Kind::Object:
            out += value.AsObject().TypeName();
            break;
    }
}

bool AppendNumber(const Value& value, std::string_view format, const Culture& culture, std::string& out) {
    StandardFormat standard;
    if (ReadStandardFormat(format, standard)) {
        return FormatStandardNumber(value, standard, culture, out);
    }
    FormatCustomNumber(value, format, culture, out);
    return true;
}

}  // namespace

std::string FormatValue(const Value& value, std::string_view format, const Culture& culture) {
    std::string out;
    bool fits = false;
    if (!format.empty()) {
        switch (value.kind()) {
            case Kind::Integer:
            case Kind::Real:
            case Kind::Decimal:
                fits = AppendNumber(value, format, culture, out);
                break;
            case Kind::DateTime:
                fits = FormatDateTime(value.AsTicks(), format, culture, out);
                break;
            case Kind::TimeSpan:
                fits = FormatTimeSpan(value.AsTicks(), format, culture, out);
                break;
            default:
                break;
        }
    }
    if (!fits) {
        out.clear();
        AppendText(value, culture, 0, out);
    }
    return out;
}

std::string ToText(const Value& value, const Culture& culture) {
    std::string out;
    AppendText(value, culture, 0, out);
    return out;
}

}  // namespace rdl
