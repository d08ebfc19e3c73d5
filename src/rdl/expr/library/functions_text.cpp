// SPDX-License-Identifier: GPL-3.0-or-later
// Functions that cut and change text: Left, Mid, Trim, UCase, StrConv ...
#include <limits>
#include <string>

#include "rdl/expr/library/functions.h"
#include "rdl/expr/operations/convert.h"
#include "rdl/values/characters.h"
#include "rdl/values/utf8.h"

namespace rdl::expr {
namespace {

// A length or position that must not be below `least`.
bool Size(const Call& call, int index, std::int64_t least, std::size_t& size) {
    std::int64_t number = 0;
    if (!call.Integer(index, number)) {
        return false;
    }
    if (number < least) {
        call.error = Value::Error("Argument " + std::to_string(index + 1) + " must be at least " +
                                  std::to_string(least));
        return false;
    }
    size = static_cast<std::size_t>(number);
    return true;
}

Value Asc(const Call& call) {
    const std::u32string text = ToUtf32(call.Text(0));
    return text.empty() ? Value::Error("A text without characters has no code")
                        : Value::Integer(static_cast<std::int64_t>(text[0]));
}

Value Chr(const Call& call) {
    std::int64_t code = 0;
    if (!call.Integer(0, code)) {
        return call.error;
    }
    if (code < 0 || code > 65535 || (code >= 0xD800 && code < 0xE000)) {
        return Value::Error("There is no character " + std::to_string(code));
    }
    std::string text;
    AppendUtf8(static_cast<char32_t>(code), text);
    return Value::Text(text);
}

Value GetChar(const Call& call) {
    std::size_t index = 0;
    if (!Size(call, 1, 1, index)) {
        return call.error;
    }
    const std::string text = call.Text(0);
    const std::string_view character = Slice(text, index - 1, 1);
    return character.empty() ? Value::Error("The text has no character " + std::to_string(index))
                             : Value::Text(character);
}

Value Left(const Call& call) {
    std::size_t count = 0;
    return Size(call, 1, 0, count) ? Value::Text(Slice(call.Text(0), 0, count)) : call.error;
}

Value Right(const Call& call) {
    std::size_t count = 0;
    if (!Size(call, 1, 0, count)) {
        return call.error;
    }
    const std::string text = call.Text(0);
    const std::size_t length = CharacterCount(text);
    return Value::Text(Slice(text, length > count ? length - count : 0, count));
}

Value Mid(const Call& call) {
    std::size_t start = 0;
    std::size_t count = std::numeric_limits<std::size_t>::max();
    if (!Size(call, 1, 1, start) || (call.Has(2) && !Size(call, 2, 0, count))) {
        return call.error;
    }
    return Value::Text(Slice(call.Text(0), start - 1, count));
}

// Returns the size in bytes of a value that is not a text, as in Visual Basic.
Value Len(const Call& call) {
    switch (call[0].kind()) {
        case Kind::Null:
            return Value::Integer(0);
        case Kind::Boolean:
            return Value::Integer(2);
        case Kind::Integer:
            return Value::Integer(4);
        case Kind::Real:
        case Kind::DateTime:
        case Kind::TimeSpan:
            return Value::Integer(8);
        case Kind::Decimal:
            return Value::Integer(16);
        default:
            return Value::Integer(static_cast<std::int64_t>(CharacterCount(call.Text(0))));
    }
}

Value Fill(const Call& call, int lengthIndex, std::string_view character) {
    std::size_t count = 0;
    if (!Size(call, lengthIndex, 0, count)) {
        return call.error;
    }
    if (count > MaxText / std::max<std::size_t>(1, character.size())) {
        return Value::Error("A text becomes too long");
    }
    std::string text;
    text.reserve(count * character.size());
    for (std::size_t i = 0; i < count; ++i) {
        text += character;
    }
    return Value::Text(text);
}

Value Space(const Call& call) {
    return Fill(call, 0, " ");
}

Value StrDup(const Call& call) {
    const std::string text = call.Text(1);
    const std::string_view character = Slice(text, 0, 1);
    return character.empty() ? Value::Error("There is no character to repeat") : Fill(call, 0, character);
}

// Returns the text at a length: cut, or filled with blanks on one side.
Value SetLength(const Call& call, bool fillLeft) {
    std::size_t length = 0;
    if (!Size(call, 1, 0, length)) {
        return call.error;
    }
    if (length > MaxText) {
        return Value::Error("A text becomes too long");
    }
    const std::string text = call.Text(0);
    const std::size_t count = CharacterCount(text);
    if (count >= length) {
        return Value::Text(Slice(text, 0, length));
    }
    const std::string blanks(length - count, ' ');
    return Value::Text(fillLeft ? blanks + text : text + blanks);
}

Value LSet(const Call& call) {
    return SetLength(call, false);
}
Value RSet(const Call& call) {
    return SetLength(call, true);
}

// Removes blanks only, not every white space.
Value TrimBlanks(const Call& call, bool left, bool right) {
    const std::string text = call.Text(0);
    std::string_view rest = text;
    while (left && !rest.empty() && rest.front() == ' ') {
        rest.remove_prefix(1);
    }
    while (right && !rest.empty() && rest.back() == ' ') {
        rest.remove_suffix(1);
    }
    return Value::Text(rest);
}

Value Trim(const Call& call) {
    return TrimBlanks(call, true, true);
}
Value LTrim(const Call& call) {
    return TrimBlanks(call, true, false);
}
Value RTrim(const Call& call) {
    return TrimBlanks(call, false, true);
}
Value UCase(const Call& call) {
    return MakeText(Upper(call.Text(0)));
}
Value LCase(const Call& call) {
    return MakeText(Lower(call.Text(0)));
}

Value CharOf(const Call& call) {
    return MakeText(call.Text(0));
}

Value StrReverse(const Call& call) {
    const std::u32string text = ToUtf32(call.Text(0));
    return Value::Text(ToUtf8(std::u32string(text.rbegin(), text.rend())));
}

std::string ProperCase(std::string_view text) {
    std::string result;
    bool inWord = false;
    for (const char32_t c : ToUtf32(text)) {
        AppendUtf8(inWord ? Lower(c) : Upper(c), result);
        inWord = IsLetter(c) || (inWord && (c == U'\'' || (c >= U'0' && c <= U'9')));
    }
    return result;
}

Value StrConv(const Call& call) {
    std::int64_t how = 0;
    if (!call.Integer(1, how)) {
        return call.error;
    }
    switch (how) {
        case 0:
            return MakeText(call.Text(0));
        case 1:
            return UCase(call);
        case 2:
            return LCase(call);
        case 3:
            return MakeText(ProperCase(call.Text(0)));
        default:
            return Value::Error("StrConv does not know the conversion " + std::to_string(how));
    }
}

constexpr FunctionInfo functions[] = {
    {"asc", 1, 1, Asc},
    {"ascw", 1, 1, Asc},
    {"chr", 1, 1, Chr},
    {"chrw", 1, 1, Chr},
    {"getchar", 2, 2, GetChar},
    {"left", 2, 2, Left},
    {"right", 2, 2, Right},
    {"mid", 2, 3, Mid},
    {"len", 1, 1, Len},
    {"space", 1, 1, Space},
    {"strdup", 2, 2, StrDup},
    {"lset", 2, 2, LSet},
    {"rset", 2, 2, RSet},
    {"trim", 1, 1, Trim},
    {"ltrim", 1, 1, LTrim},
    {"rtrim", 1, 1, RTrim},
    {"ucase", 1, 1, UCase},
    {"lcase", 1, 1, LCase},
    {"strreverse", 1, 1, StrReverse},
    {"strconv", 2, 3, StrConv},
    {"char.toupper", 1, 2, UCase},
    {"char.tolower", 1, 2, LCase},
    {"char.tostring", 1, 1, CharOf},
    {"string.copy", 1, 1, CharOf},
};
static_assert(NamesDiffer(functions));

}  // namespace

std::span<const FunctionInfo> TextFunctions() {
    return functions;
}

}  // namespace rdl::expr
