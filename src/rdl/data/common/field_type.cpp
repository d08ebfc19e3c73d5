// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/data/common/field_type.h"

#include <charconv>
#include <cmath>

#include "rdl/format/format.h"
#include "rdl/format/iso_date.h"
#include "rdl/values/ascii.h"
#include "rdl/values/named.h"
#include "rdl/xml/flag.h"

namespace rdl::data {
namespace {

struct TypeName {
    std::string_view name;  // lower case, without System.
    FieldType type;
};

constexpr TypeName TypeNames[] = {
    {"boolean", FieldType::Boolean}, {"bool", FieldType::Boolean},
    {"int16", FieldType::Integer},   {"int32", FieldType::Integer},
    {"int64", FieldType::Integer},   {"byte", FieldType::Integer},
    {"sbyte", FieldType::Integer},   {"uint16", FieldType::Integer},
    {"uint32", FieldType::Integer},  {"uint64", FieldType::Integer},
    {"integer", FieldType::Integer}, {"int", FieldType::Integer},
    {"decimal", FieldType::Decimal}, {"double", FieldType::Real},
    {"single", FieldType::Real},     {"float", FieldType::Real},
    {"numeric", FieldType::Decimal}, {"datetime", FieldType::DateTime},
    {"date", FieldType::DateTime},   {"datetimeoffset", FieldType::DateTime},
    {"string", FieldType::Text},     {"char", FieldType::Text},
    {"guid", FieldType::Text},       {"byte[]", FieldType::Bytes},
};
static_assert(NamesDiffer(TypeNames));

constexpr std::int64_t MaxTicks = 3'652'059 * TicksPerDay;  // the end of the year 9999

std::string_view InvariantText(const Value& value) {
    return Trimmed(value.AsText());
}

bool ReadInteger(std::string_view text, std::int64_t& number) {
    if (!text.empty() && text.front() == '+') {
        text.remove_prefix(1);
    }
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), number);
    return failure == std::errc() && end == text.data() + text.size();
}

bool ReadReal(std::string_view text, double& number) {
    if (!text.empty() && text.front() == '+') {
        text.remove_prefix(1);
    }
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), number);
    return failure == std::errc() && end == text.data() + text.size() && std::isfinite(number);
}

Value NumberOfText(std::string_view text, FieldType type, const Value& original) {
    std::int64_t whole = 0;
    if (ReadInteger(text, whole)) {
        return type == FieldType::Integer ? Value::Integer(whole) : Value::Real(static_cast<double>(whole));
    }
    double real = 0;
    return ReadReal(text, real) ? Value::Real(real) : original;
}

Value DecimalOfText(std::string_view text, const Value& original) {
    const auto number = Decimal::OfText(text.starts_with('+') ? text.substr(1) : text);
    return number ? Value::Decimal(*number) : NumberOfText(text, FieldType::Real, original);
}

Value DecimalOfReal(const Value& number) {
    const auto exact = Decimal::OfDouble(number.AsReal());
    return exact ? Value::Decimal(*exact) : number;
}

Value BooleanOfText(std::string_view text, const Value& original) {
    const std::optional<bool> flag = xml::FlagOf(text);
    return flag ? Value::Boolean(*flag) : original;
}

Value DateOfText(std::string_view text, const Value& original) {
    std::int64_t ticks = 0;
    return ParseDateTime(text, FindCulture(""), ticks) ? Value::DateTime(ticks) : original;
}

}  // namespace

FieldType FieldTypeOfName(std::string_view typeName) {
    std::string name = LowerAscii(Trimmed(typeName));
    if (name.starts_with("system.")) {
        name.erase(0, 7);
    }
    for (const TypeName& known : TypeNames) {
        if (known.name == name) {
            return known.type;
        }
    }
    return FieldType::Untyped;
}

FieldType FieldTypeOfColumn(std::string_view declared) {
    const std::string name = LowerAscii(Trimmed(declared));
    if (name.starts_with("date") || name.starts_with("timestamp") || name.starts_with("smalldatetime")) {
        return FieldType::DateTime;
    }
    for (const std::string_view exact : {"numeric", "decimal", "money", "smallmoney"}) {
        if (name.starts_with(exact)) {
            return FieldType::Decimal;
        }
    }
    return name.starts_with("bool") || name == "bit" ? FieldType::Boolean : FieldType::Untyped;
}

FieldType FieldTypeOfDeclaration(std::string_view declared) {
    const FieldType special = FieldTypeOfColumn(declared);
    if (special != FieldType::Untyped) {
        return special;
    }
    constexpr struct {
        std::string_view word;
        FieldType type;
    } Words[] = {{"int", FieldType::Integer}, {"char", FieldType::Text},  {"clob", FieldType::Text},
                 {"text", FieldType::Text},   {"blob", FieldType::Bytes}, {"real", FieldType::Real},
                 {"floa", FieldType::Real},   {"doub", FieldType::Real}};
    const std::string name = LowerAscii(declared);
    for (const auto& [word, type] : Words) {
        if (name.find(word) != std::string::npos) {
            return type;
        }
    }
    return FieldType::Untyped;
}

std::string_view NameOfFieldType(FieldType type) {
    switch (type) {
        case FieldType::Boolean:
            return "System.Boolean";
        case FieldType::Integer:
            return "System.Int64";
        case FieldType::Real:
            return "System.Double";
        case FieldType::Decimal:
            return "System.Decimal";
        case FieldType::DateTime:
            return "System.DateTime";
        case FieldType::Text:
            return "System.String";
        case FieldType::Bytes:
            return "System.Byte[]";
        case FieldType::Untyped:
            break;
    }
    return {};
}

Value ConvertValue(const Value& value, FieldType type) {
    if (value.kind() == Kind::Integer) {
        if (type == FieldType::Boolean) {
            return Value::Boolean(value.AsInteger() != 0);
        }
        return type == FieldType::Real      ? Value::Real(static_cast<double>(value.AsInteger()))
               : type == FieldType::Decimal ? Value::Decimal(value.AsDecimal())
                                            : value;
    }
    if (value.kind() == Kind::Real && type == FieldType::Decimal) {
        return DecimalOfReal(value);
    }
    if (!value.IsText()) {
        return value;
    }
    const std::string_view text = InvariantText(value);
    if (text.empty()) {
        return type == FieldType::Untyped || type == FieldType::Text || type == FieldType::Bytes ? value
                                                                                                 : Value();
    }
    switch (type) {
        case FieldType::Boolean:
            return BooleanOfText(text, value);
        case FieldType::Integer:
        case FieldType::Real:
            return NumberOfText(text, type, value);
        case FieldType::Decimal:
            return DecimalOfText(text, value);
        case FieldType::DateTime:
            return DateOfText(text, value);
        default:
            return value;
    }
}

Value ConvertStored(const Value& value, FieldType type) {
    if (type == FieldType::DateTime && value.IsNumber()) {
        const bool julian = value.kind() == Kind::Real;
        const double days = julian ? value.AsReal() - 1'721'425.5 : value.AsDouble() / 86'400 + 719'162;
        const double seconds = std::round(days * 86'400);
        constexpr std::int64_t End = MaxTicks / TicksPerSecond;
        if (!(seconds >= 0) || seconds >= static_cast<double>(End)) {
            return value;
        }
        return Value::DateTime(static_cast<std::int64_t>(seconds) * TicksPerSecond);
    }
    return ConvertValue(value, type);
}

std::string IsoText(std::int64_t ticks) {
    const DateTimeParts parts = SplitTicks(ticks);
    std::string text = IsoDate(parts);
    if (ticks % TicksPerDay != 0) {
        text += " " + IsoTime(parts);
    }
    if (parts.fraction != 0) {
        text += IsoFraction(parts);
    }
    return text;
}

}  // namespace rdl::data
