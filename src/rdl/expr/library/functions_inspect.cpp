// SPDX-License-Identifier: GPL-3.0-or-later
// What a value or a character is, and the small functions of the Information and Interaction modules.
#include <algorithm>
#include <string>

#include "rdl/expr/library/functions.h"
#include "rdl/values/ascii.h"
#include "rdl/values/characters.h"
#include "rdl/values/utf8.h"

namespace rdl::expr {
namespace {

// As the VariantType constants.
Value VarType(const Call& call) {
    switch (call[0].kind()) {
        case Kind::Boolean:
            return Value::Integer(11);
        case Kind::Integer:
            return Value::Integer(FindFunction("typename")->function(call).AsText() == "Long" ? 20 : 3);
        case Kind::Real:
            return Value::Integer(5);
        case Kind::Decimal:
            return Value::Integer(14);
        case Kind::DateTime:
            return Value::Integer(7);
        case Kind::Text:
            return Value::Integer(8);
        case Kind::TimeSpan:
            return Value::Integer(36);
        case Kind::Bytes:
            return Value::Integer(8192 + 17);
        case Kind::List:
            return Value::Integer(8192 + 9);
        default:
            return Value::Integer(9);
    }
}

struct TypeNames {
    std::string_view basic, system;
};
constexpr TypeNames Types[] = {
    {"Boolean", "System.Boolean"}, {"Byte", "System.Byte"},       {"Char", "System.Char"},
    {"Date", "System.DateTime"},   {"Decimal", "System.Decimal"}, {"Double", "System.Double"},
    {"Integer", "System.Int32"},   {"Long", "System.Int64"},      {"Object", "System.Object"},
    {"SByte", "System.SByte"},     {"Short", "System.Int16"},     {"Single", "System.Single"},
    {"String", "System.String"},   {"UInteger", "System.UInt32"}, {"ULong", "System.UInt64"},
    {"UShort", "System.UInt16"},
};

// Returns Null for a name that is no type of the language.
Value SystemTypeName(const Call& call) {
    const std::string name = call.Text(0);
    for (const TypeNames& type : Types) {
        if (EqualNoCase(type.basic, name)) {
            return Value::Text(type.system);
        }
    }
    return {};
}

Value VbTypeName(const Call& call) {
    std::string name = call.Text(0);
    if (!LowerAscii(name).starts_with("system.")) {
        name = "System." + name;
    }
    for (const TypeNames& type : Types) {
        if (EqualNoCase(type.system, name)) {
            return Value::Text(type.basic);
        }
    }
    return {};
}

// What .GetType() says.
Value FullTypeName(const Call& call) {
    if (call[0].IsNull()) {
        return Value::Error("Nothing has no type");
    }
    const Value basic = FindFunction("typename")->function(call);
    const Value names[] = {basic};
    const Value full = SystemTypeName(Call(names, 1, call.environment));
    return full.IsNull() ? Value::Text("System." + std::string(basic.AsText())) : full;
}

Value ShortTypeName(const Call& call) {
    const Value full = FullTypeName(call);
    return full.IsText() ? Value::Text(full.AsText().substr(full.AsText().rfind('.') + 1)) : full;
}

Value IsReference(const Call& call) {
    const Kind kind = call[0].kind();
    return Value::Boolean(kind == Kind::Null || kind == Kind::Text || kind == Kind::Bytes ||
                          kind == Kind::List || kind == Kind::Object);
}

Value Rgb(const Call& call) {
    std::int64_t colour = 0;
    for (int i = 2; i >= 0; --i) {
        std::int64_t part = 0;
        if (!call.Integer(i, part)) {
            return call.error;
        }
        if (part < 0) {
            return Value::Error("A part of a colour cannot be negative");
        }
        colour = colour * 256 + std::min<std::int64_t>(part, 255);
    }
    return Value::Integer(colour);
}

Value QbColor(const Call& call) {
    constexpr int colours[] = {0x000000, 0x800000, 0x008000, 0x808000, 0x000080, 0x800080,
                               0x008080, 0xC0C0C0, 0x808080, 0xFF0000, 0x00FF00, 0xFFFF00,
                               0x0000FF, 0xFF00FF, 0x00FFFF, 0xFFFFFF};
    std::int64_t number = 0;
    if (!call.Integer(0, number)) {
        return call.error;
    }
    return number >= 0 && number < 16 ? Value::Integer(colours[number])
                                      : Value::Error("There is no colour " + std::to_string(number));
}

std::string Aligned(const std::string& text, std::size_t width) {
    return std::string(width > text.size() ? width - text.size() : 0, ' ') + text;
}

// Partition(number, start, stop, interval): the range that holds the number, both ends aligned for sorting.
Value Partition(const Call& call) {
    std::int64_t number = 0, start = 0, stop = 0, interval = 0;
    if (!call.Integer(0, number) || !call.Integer(1, start) || !call.Integer(2, stop) ||
        !call.Integer(3, interval)) {
        return call.error;
    }
    constexpr std::int64_t most = 1'000'000'000'000'000'000;
    if (start < 0 || stop <= start || interval < 1 || stop > most || interval > most) {
        return Value::Error("Partition cannot make such ranges");
    }
    std::string lower, upper;
    if (number < start) {
        upper = std::to_string(start - 1);
    } else if (number > stop) {
        lower = std::to_string(stop + 1);
    } else {
        const std::int64_t first = interval == 1 ? number : start + (number - start) / interval * interval;
        lower = std::to_string(first);
        upper = std::to_string(interval == 1 ? number : std::min(first + interval - 1, stop));
    }
    const std::size_t width = std::to_string(stop + 1).size();
    return Value::Text(Aligned(lower, width) + ":" + Aligned(upper, width));
}

bool IsDigit(char32_t c) {
    return c >= U'0' && c <= U'9';
}
bool IsUpper(char32_t c) {
    return IsLetter(c) && Lower(c) != c;
}
bool IsLower(char32_t c) {
    return IsLetter(c) && Upper(c) != c;
}
bool IsLetterOrDigit(char32_t c) {
    return IsLetter(c) || IsDigit(c);
}
bool IsControl(char32_t c) {
    return c < 0x20 || (c >= 0x7F && c < 0xA0);
}
bool IsPunctuation(char32_t c) {
    return c != 0 && std::u32string_view(U"!\"#%&'()*,-./:;?@[\\]_{}¡§«¶·»¿‐–—‘’“”„…").find(c) !=
                         std::u32string_view::npos;
}
bool IsSymbol(char32_t c) {
    return c != 0 && std::u32string_view(U"$+<=>^`|~¢£¤¥¦¨©¬®¯°±´¸×÷€").find(c) != std::u32string_view::npos;
}

// Char.IsX(character) or Char.IsX(text, index).
template <bool (*Test)(char32_t)>
Value CharacterIs(const Call& call) {
    std::int64_t index = 0;
    if (!call.Integer(1, index)) {
        return call.error;
    }
    const std::u32string text = ToUtf32(call.Text(0));
    if (index < 0 || static_cast<std::size_t>(index) >= text.size()) {
        return Value::Error("There is no such character");
    }
    return Value::Boolean(Test(text[static_cast<std::size_t>(index)]));
}

constexpr FunctionInfo functions[] = {
    {"vartype", 1, 1, VarType},
    {"systemtypename", 1, 1, SystemTypeName},
    {"vbtypename", 1, 1, VbTypeName},
    {".gettype", 1, 1, FullTypeName},
    {".gettype.tostring", 1, 1, FullTypeName},
    {".gettype.fullname", 1, 1, FullTypeName},
    {".gettype.name", 1, 1, ShortTypeName},
    {"isreference", 1, 1, IsReference},
    {"rgb", 3, 3, Rgb},
    {"qbcolor", 1, 1, QbColor},
    {"partition", 4, 4, Partition},
    {"char.isdigit", 1, 2, CharacterIs<IsDigit>},
    {"char.isnumber", 1, 2, CharacterIs<IsDigit>},
    {"char.isletter", 1, 2, CharacterIs<IsLetter>},
    {"char.isletterordigit", 1, 2, CharacterIs<IsLetterOrDigit>},
    {"char.isupper", 1, 2, CharacterIs<IsUpper>},
    {"char.islower", 1, 2, CharacterIs<IsLower>},
    {"char.iswhitespace", 1, 2, CharacterIs<IsSpace>},
    {"char.iscontrol", 1, 2, CharacterIs<IsControl>},
    {"char.ispunctuation", 1, 2, CharacterIs<IsPunctuation>},
    {"char.issymbol", 1, 2, CharacterIs<IsSymbol>},
};
static_assert(NamesDiffer(functions));

}  // namespace

std::span<const FunctionInfo> InspectFunctions() {
    return functions;
}

}  // namespace rdl::expr
