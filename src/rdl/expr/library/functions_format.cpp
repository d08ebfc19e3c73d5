// SPDX-License-Identifier: GPL-3.0-or-later
// Numbers and dates as text: Format and its family, String.Format.
#include <string>

#include "rdl/expr/library/composite.h"
#include "rdl/expr/library/functions.h"
#include "rdl/expr/library/objects.h"
#include "rdl/expr/operations/convert.h"
#include "rdl/values/characters.h"
#include "rdl/values/utf8.h"

namespace rdl::expr {
namespace {

struct Named {
    std::string_view name, format;
};

// The named formats of Format(), which no other place knows.
constexpr Named NumberFormats[] = {
    {"general number", "G"}, {"g", "G"},       {"currency", "C"},   {"fixed", "F"},
    {"standard", "N"},       {"percent", "P"}, {"scientific", "E"},
};
constexpr Named DateFormats[] = {
    {"general date", "G"}, {"long date", "D"},   {"medium date", "D"}, {"short date", "d"},
    {"long time", "T"},    {"medium time", "T"}, {"short time", "t"},
};
constexpr Named TruthFormats[] = {{"yes/no", "Yes/No"}, {"true/false", "True/False"}, {"on/off", "On/Off"}};
static_assert(NamesDiffer(NumberFormats) && NamesDiffer(DateFormats) && NamesDiffer(TruthFormats));

Value Format(const Call& call) {
    const Value& value = call[0];
    if (!call.Has(1) || value.IsNull()) {
        return MakeText(call.Text(0));
    }
    const std::string format = call.Text(1);
    const std::string lower = Lower(format);
    if (const Named* truth = FindNamed(TruthFormats, lower)) {
        bool yes = false;
        const std::string_view words = truth->format;
        const std::size_t bar = words.find('/');
        return call.Truth(0, yes) ? Value::Text(yes ? words.substr(0, bar) : words.substr(bar + 1))
                                  : call.error;
    }
    if (const Named* number = FindNamed(NumberFormats, lower)) {
        Value converted;
        if (ToNumber(value, call.culture(), converted)) {
            return MakeText(FormatValue(converted, number->format, call.culture()));
        }
    }
    if (const Named* date = FindNamed(DateFormats, lower)) {
        std::int64_t ticks = 0;
        if (ToDateTime(value, call.culture(), ticks)) {
            return MakeText(FormatValue(Value::DateTime(ticks), date->format, call.culture()));
        }
    }
    return MakeText(FormatValue(value, format, call.culture()));
}

// Reads a tri-state argument: -1 is true, 0 false, -2 or a missing argument the culture's rule.
bool TriState(const Call& call, int index, bool usual, bool& result) {
    std::int64_t state = -2;
    if (call.Has(index) && !call.Integer(index, state)) {
        return false;
    }
    result = state == -2 ? usual : state != 0;
    return true;
}

std::string WithoutLeadingZero(std::string text, const std::string& separator) {
    const std::size_t zero = text.find("0" + separator);
    const bool first =
        zero != std::string::npos && (zero == 0 || text[zero - 1] < '0' || text[zero - 1] > '9');
    return first ? text.erase(zero, 1) : text;
}

// FormatX(number [, digits [, leading digit [, parentheses [, groups]]]])
Value FormatAs(const Call& call, char letter) {
    Value number;
    std::int64_t digits = -1;
    bool leading = true;
    bool groups = true;
    const bool usualParentheses = letter == 'C' ? call.culture().currencyNegativePattern == 0
                                                : call.culture().numberNegativePattern == 0;
    bool parentheses = usualParentheses;
    if (!ToNumber(call[0], call.culture(), number)) {
        return NoConversion(call[0], "a number");
    }
    if ((call.Has(1) && !call.Integer(1, digits)) || !TriState(call, 2, true, leading) ||
        !TriState(call, 3, usualParentheses, parentheses) || !TriState(call, 4, true, groups)) {
        return call.error;
    }
    if (digits < -1 || digits > 99) {
        return Value::Error("A number is shown with 0 to 99 decimals");
    }
    const bool negative = number.AsDouble() < 0;
    Culture culture = call.culture();
    if (!groups) {
        culture.groupSeparator.clear();
        culture.currencyGroupSeparator.clear();
    }
    if (parentheses != usualParentheses && !parentheses) {
        culture.currencyNegativePattern = 1;
        culture.numberNegativePattern = 1;
    }
    const bool enclose = parentheses && !usualParentheses && negative;
    if (enclose) {
        number = number.kind() == Kind::Decimal ? Value::Decimal(number.AsDecimal().Magnitude())
                                                : Value::Real(-number.AsDouble());
    }
    std::string text = FormatValue(number, letter + (digits < 0 ? "" : std::to_string(digits)), culture);
    if (!leading) {
        text = WithoutLeadingZero(
            text, letter == 'C' ? culture.currencyDecimalSeparator : culture.decimalSeparator);
    }
    return MakeText(enclose ? "(" + text + ")" : text);
}

Value FormatNumber(const Call& call) {
    return FormatAs(call, 'N');
}
Value FormatCurrency(const Call& call) {
    return FormatAs(call, 'C');
}
Value FormatPercent(const Call& call) {
    return FormatAs(call, 'P');
}

Value FormatDateTime(const Call& call) {
    std::int64_t ticks = 0;
    std::int64_t how = 0;
    if (!call.Date(0, ticks) || !call.Integer(1, how)) {
        return call.error;
    }
    const Value date = Value::DateTime(ticks);
    switch (how) {
        case 0:
            return MakeText(TextOf(date, call.culture()));
        case 1:
            return MakeText(FormatValue(date, "D", call.culture()));
        case 2:
            return MakeText(FormatValue(date, "d", call.culture()));
        case 3:
            return MakeText(FormatValue(date, "T", call.culture()));
        case 4:
            return MakeText(FormatValue(date, "HH:mm", call.culture()));
        default:
            return Value::Error("FormatDateTime does not know the format " + std::to_string(how));
    }
}

Value StringFormat(const Call& call) {
    // A culture may stand in front of the pattern.
    const int at = call[0].kind() == Kind::Object ? 1 : 0;
    ValueList values;
    const bool list = call.count() == at + 2 && call[at + 1].kind() == Kind::List;
    for (int i = at + 1; !list && i < call.count(); ++i) {
        values.push_back(call[i]);
    }
    return FormatComposite(call.Text(at), list ? call[at + 1].AsList() : values, CultureOf(call, 0));
}

Value StringJoin(const Call& call) {
    std::string text;
    const bool list = call.count() == 2 && call[1].kind() == Kind::List;
    const std::size_t count = list ? call[1].AsList().size() : static_cast<std::size_t>(call.count() - 1);
    for (std::size_t i = 0; i < count && text.size() <= MaxText; ++i) {
        text += i == 0 ? "" : call.Text(0);
        text += TextOf(list ? call[1].AsList()[i] : call[static_cast<int>(i) + 1], call.culture());
    }
    return MakeText(text);
}

Value StringConcat(const Call& call) {
    std::string text;
    for (int i = 0; i < call.count() && text.size() <= MaxText; ++i) {
        text += call.Text(i);
    }
    return MakeText(text);
}

Value IsNullOrEmpty(const Call& call) {
    return Value::Boolean(call.Text(0).empty());
}

Value IsNullOrWhiteSpace(const Call& call) {
    for (const char32_t c : ToUtf32(call.Text(0))) {
        if (!IsSpace(c)) {
            return Value::Boolean(false);
        }
    }
    return Value::Boolean(true);
}

// True, or one of the StringComparison constants that leave case aside.
bool IgnoresCase(const Call& call, int index, bool& noCase) {
    if (call[index].IsText()) {
        noCase = call[index].AsText().ends_with("IgnoreCase");
        return true;
    }
    return call.Truth(index, noCase);
}

// Compare(a, b [, ignore case or comparison])
Value StringCompare(const Call& call) {
    bool noCase = false;
    if (!IgnoresCase(call, 2, noCase)) {
        return call.error;
    }
    const std::string left = call.Text(0);
    const std::string right = call.Text(1);
    const int order = noCase ? CompareNoCase(left, right) : left.compare(right);
    return Value::Integer(order < 0 ? -1 : order > 0 ? 1 : 0);
}

Value CompareOrdinal(const Call& call) {
    const int order = call.Text(0).compare(call.Text(1));
    return Value::Integer(order < 0 ? -1 : order > 0 ? 1 : 0);
}

Value StringEquals(const Call& call) {
    bool noCase = false;
    if (!IgnoresCase(call, 2, noCase)) {
        return call.error;
    }
    const std::string left = call.Text(0);
    const std::string right = call.Text(1);
    return Value::Boolean(call[0].IsNull() == call[1].IsNull() &&
                          (noCase ? CompareNoCase(left, right) == 0 : left == right));
}

// New String(character, count), New String(text)
Value NewString(const Call& call) {
    if (call.count() == 1 && call[0].kind() == Kind::List) {
        std::string text;
        for (const Value& character : call[0].AsList()) {
            text += TextOf(character, call.culture());
        }
        return MakeText(text);
    }
    if (call.count() == 1) {
        return MakeText(call.Text(0));
    }
    const Value swapped[] = {call[1], call[0]};
    return FindFunction("strdup")->function(Call(swapped, 2, call.environment));
}

constexpr FunctionInfo functions[] = {
    {"format", 1, 4, Format},
    {"formatnumber", 1, 5, FormatNumber},
    {"formatcurrency", 1, 5, FormatCurrency},
    {"formatpercent", 1, 5, FormatPercent},
    {"formatdatetime", 1, 2, FormatDateTime},
    {"string.format", 1, Any, StringFormat},
    {"string.join", 2, Any, StringJoin},
    {"string.concat", 1, Any, StringConcat},
    {"string.isnullorempty", 1, 1, IsNullOrEmpty},
    {"string.isnullorwhitespace", 1, 1, IsNullOrWhiteSpace},
    {"string.compare", 2, 4, StringCompare},
    {"string.compareordinal", 2, 2, CompareOrdinal},
    {"string.equals", 2, 3, StringEquals},
    {"new.string", 1, 2, NewString},
};
static_assert(NamesDiffer(functions));

}  // namespace

std::span<const FunctionInfo> FormatFunctions() {
    return functions;
}

}  // namespace rdl::expr
