// SPDX-License-Identifier: GPL-3.0-or-later
// Members of any value and of texts: .ToString("N2"), .Trim(), .Substring(0, 3), .Length ...
#include <algorithm>
#include <limits>
#include <string>

#include "rdl/expr/library/functions.h"
#include "rdl/expr/library/objects.h"
#include "rdl/expr/operations/compare.h"
#include "rdl/expr/operations/convert.h"
#include "rdl/expr/operations/text_search.h"
#include "rdl/values/characters.h"
#include "rdl/values/utf8.h"

namespace rdl::expr {
namespace {

// The one of the StringSplitOptions that does something.
constexpr std::string_view NoEmptyEntries = "RemoveEmptyEntries";

Value Outside() {
    return Value::Error("A position lies outside the text");
}

// A member of Nothing is an error in the language. Without the error a report hides a mistake.
bool IsNothing(const Call& call) {
    if (call[0].IsNull()) {
        call.error = Value::Error("Nothing has no members");
        return true;
    }
    return false;
}

Value ToStringMember(const Call& call) {
    if (IsNothing(call)) {
        return call.error;
    }
    // A culture may follow the format or replace it.
    const Culture& culture = CultureOf(call, call.count() - 1);
    if (call.Has(1) && call[1].kind() != Kind::Object) {
        return MakeText(FormatValue(call[0], call.Text(1), culture));
    }
    return MakeText(call[0].kind() == Kind::DateTime ? FormatValue(call[0], "G", culture)
                                                     : TextOf(call[0], culture));
}

Value Length(const Call& call) {
    if (call[0].kind() == Kind::List) {
        return Value::Integer(static_cast<std::int64_t>(call[0].AsList().size()));
    }
    return IsNothing(call) ? call.error
                           : Value::Integer(static_cast<std::int64_t>(CharacterCount(call.Text(0))));
}

Value Count(const Call& call) {
    return call[0].kind() == Kind::List ? Length(call) : Value::Integer(1);
}

Value ToUpper(const Call& call) {
    return IsNothing(call) ? call.error : MakeText(Upper(call.Text(0)));
}
Value ToLower(const Call& call) {
    return IsNothing(call) ? call.error : MakeText(Lower(call.Text(0)));
}

// The characters that stand in the arguments from `first` on, as texts or in lists.
std::u32string Characters(const Call& call, int first) {
    std::u32string characters;
    for (int i = first; i < call.count(); ++i) {
        if (call[i].kind() != Kind::List) {
            characters += ToUtf32(call.Text(i));
            continue;
        }
        for (const Value& one : call[i].AsList()) {
            characters += ToUtf32(TextOf(one, call.culture()));
        }
    }
    return characters;
}

// Removes white space, or the given characters, from the ends.
Value TrimAs(const Call& call, bool left, bool right) {
    if (IsNothing(call)) {
        return call.error;
    }
    const std::u32string text = ToUtf32(call.Text(0));
    const std::u32string marks = Characters(call, 1);
    const auto cut = [&](char32_t c) {
        return marks.empty() ? IsSpace(c) : marks.find(c) != std::u32string::npos;
    };
    std::size_t begin = 0;
    std::size_t end = text.size();
    while (left && begin < end && cut(text[begin])) {
        ++begin;
    }
    while (right && end > begin && cut(text[end - 1])) {
        --end;
    }
    return Value::Text(ToUtf8(std::u32string_view(text).substr(begin, end - begin)));
}

Value Trim(const Call& call) {
    return TrimAs(call, true, true);
}
Value TrimStart(const Call& call) {
    return TrimAs(call, true, false);
}
Value TrimEnd(const Call& call) {
    return TrimAs(call, false, true);
}

// Start and count of a part that must lie within the text; the count defaults to the rest.
bool Part(const Call& call, std::size_t length, std::size_t& start, std::size_t& count) {
    std::int64_t from = 0;
    std::int64_t size = 0;
    if (!call.Integer(1, from) || (call.count() > 2 && !call.Integer(2, size))) {
        return false;
    }
    const auto whole = static_cast<std::int64_t>(length);
    size = call.count() > 2 ? size : whole - from;
    if (from < 0 || from > whole || size < 0 || size > whole - from) {
        call.error = Outside();
        return false;
    }
    start = static_cast<std::size_t>(from);
    count = static_cast<std::size_t>(size);
    return true;
}

Value Substring(const Call& call) {
    const std::string text = call.Text(0);
    std::size_t start = 0;
    std::size_t count = 0;
    if (IsNothing(call) || !Part(call, CharacterCount(text), start, count)) {
        return call.error;
    }
    return Value::Text(Slice(text, start, count));
}

Value Remove(const Call& call) {
    const std::string text = call.Text(0);
    std::size_t start = 0;
    std::size_t count = 0;
    if (IsNothing(call) || !Part(call, CharacterCount(text), start, count)) {
        return call.error;
    }
    const std::size_t begin = ByteIndex(text, start);
    return Value::Text(text.substr(0, begin) + text.substr(ByteIndex(text, start + count)));
}

Value Insert(const Call& call) {
    const std::string text = call.Text(0);
    std::int64_t at = 0;
    if (IsNothing(call) || !call.Integer(1, at)) {
        return call.error;
    }
    if (at < 0 || at > static_cast<std::int64_t>(CharacterCount(text))) {
        return Outside();
    }
    const std::size_t byte = ByteIndex(text, static_cast<std::size_t>(at));
    return MakeText(text.substr(0, byte) + call.Text(2) + text.substr(byte));
}

Value Replace(const Call& call) {
    if (IsNothing(call)) {
        return call.error;
    }
    const std::string what = call.Text(1);
    return what.empty() ? Value::Error("Replace needs something to look for")
                        : ReplaceAll(call.Text(0), what, call.Text(2), -1, false);
}

// The last arguments may say that case does not count: True, or one of the StringComparison constants.
bool NoCase(const Call& call) {
    for (int i = 2; i < call.count(); ++i) {
        if (call[i].kind() == Kind::Boolean ? call[i].AsBoolean()
                                            : call[i].IsText() && call[i].AsText().ends_with("IgnoreCase")) {
            return true;
        }
    }
    return false;
}

// Equal with regard to case, unlike what sorting and grouping take for equal.
bool Same(const Value& left, const Value& right) {
    return Compare(left, right) == 0 && (!left.IsText() || left.AsText() == right.AsText());
}

Value Contains(const Call& call) {
    if (call[0].kind() == Kind::List) {
        for (const Value& item : call[0].AsList()) {
            if (Same(item, call[1])) {
                return Value::Boolean(true);
            }
        }
        return Value::Boolean(false);
    }
    return IsNothing(call)
               ? call.error
               : Value::Boolean(Find(call.Text(0), call.Text(1), 0, NoCase(call)) != std::string::npos);
}

std::string Folded(const Call& call, int index) {
    return NoCase(call) ? Lower(call.Text(index)) : call.Text(index);
}

Value StartsWith(const Call& call) {
    return IsNothing(call) ? call.error : Value::Boolean(Folded(call, 0).starts_with(Folded(call, 1)));
}
Value EndsWith(const Call& call) {
    return IsNothing(call) ? call.error : Value::Boolean(Folded(call, 0).ends_with(Folded(call, 1)));
}

Value IndexInList(const Call& call) {
    const ValueList& list = call[0].AsList();
    const auto found =
        std::find_if(list.begin(), list.end(), [&](const Value& item) { return Same(item, call[1]); });
    return Value::Integer(found == list.end() ? -1 : found - list.begin());
}

Value IndexOf(const Call& call) {
    if (call[0].kind() == Kind::List) {
        return IndexInList(call);
    }
    std::int64_t from = 0;
    if (IsNothing(call) || (call[2].IsNumber() && !call.Integer(2, from))) {
        return call.error;
    }
    const std::string text = call.Text(0);
    const auto length = static_cast<std::int64_t>(CharacterCount(text));
    std::int64_t count = length - from;
    if (call[3].IsNumber() && !call.Integer(3, count)) {
        return call.error;
    }
    if (from < 0 || from > length || count < 0 || count > length - from) {
        return Outside();
    }
    const std::size_t end = ByteIndex(text, static_cast<std::size_t>(from + count));
    const std::size_t at = Find(std::string_view(text).substr(0, end), call.Text(1),
                                ByteIndex(text, static_cast<std::size_t>(from)), NoCase(call));
    return Value::Integer(at == std::string::npos ? -1 : static_cast<std::int64_t>(CharacterIndex(text, at)));
}

// Backwards from a place, which what is found must not go beyond.
Value LastIndexOf(const Call& call) {
    const std::string text = call.Text(0);
    const auto length = static_cast<std::int64_t>(CharacterCount(text));
    std::int64_t last = length - 1;
    if (IsNothing(call) || (call[2].IsNumber() && !call.Integer(2, last))) {
        return call.error;
    }
    if (length > 0 && (last < 0 || last > length)) {
        return Outside();
    }
    const std::string_view part = Slice(text, 0, static_cast<std::size_t>(last + 1));
    const std::size_t at = FindLast(part, call.Text(1), NoCase(call));
    return Value::Integer(at == std::string::npos ? -1 : static_cast<std::int64_t>(CharacterIndex(text, at)));
}

Value IndexOfAny(const Call& call) {
    if (IsNothing(call)) {
        return call.error;
    }
    const std::size_t at = ToUtf32(call.Text(0)).find_first_of(Characters(call, 1));
    return Value::Integer(at == std::u32string::npos ? -1 : static_cast<std::int64_t>(at));
}

Value ToCharArray(const Call& call) {
    if (IsNothing(call)) {
        return call.error;
    }
    ValueList characters;
    for (const char32_t c : ToUtf32(call.Text(0))) {
        characters.push_back(Value::Text(ToUtf8(std::u32string(1, c))));
    }
    return Value::List(std::move(characters));
}

Value Pad(const Call& call, bool left) {
    std::int64_t width = 0;
    if (IsNothing(call) || !call.Integer(1, width)) {
        return call.error;
    }
    const std::string text = call.Text(0);
    const std::string mark = call.Has(2) ? call.Text(2) : " ";
    const auto length = static_cast<std::int64_t>(CharacterCount(text));
    const std::string_view fill = Slice(mark, 0, 1);
    if (width < 0 || fill.empty()) {
        return Outside();
    }
    if (width > static_cast<std::int64_t>(MaxText / fill.size())) {
        return Value::Error("A text becomes too long");
    }
    std::string blanks;
    for (std::int64_t i = length; i < width; ++i) {
        blanks += fill;
    }
    return MakeText(left ? blanks + text : text + blanks);
}

Value PadLeft(const Call& call) {
    return Pad(call, true);
}
Value PadRight(const Call& call) {
    return Pad(call, false);
}

// The first `most` parts, the last of which holds the rest; empty ones are left out when they shall be.
Value Parted(const std::u32string& text, const std::u32string& marks, std::int64_t most, bool noEmpty) {
    ValueList parts;
    std::size_t begin = 0;
    for (std::size_t i = 0; i <= text.size() && most > 0; ++i) {
        const bool end = i == text.size();
        if (!end && marks.find(text[i]) == std::u32string::npos) {
            continue;
        }
        if (noEmpty && i == begin) {
            ++begin;
            continue;
        }
        const bool last = static_cast<std::int64_t>(parts.size()) == most - 1;
        parts.push_back(
            Value::Text(ToUtf8(std::u32string_view(text).substr(begin, last ? text.size() : i - begin))));
        begin = i + 1;
        if (last) {
            break;
        }
    }
    return Value::List(std::move(parts));
}

// Split(separators [, count] [, options]): any of the characters parts; no separator parts at white space. A
// text alone is one separator.
Value Split(const Call& call) {
    if (IsNothing(call)) {
        return call.error;
    }
    const std::string text = call.Text(0);
    std::int64_t most = std::numeric_limits<std::int32_t>::max();
    bool noEmpty = false;
    std::u32string marks;
    for (int i = 1; i < call.count(); ++i) {
        if (call[i].IsNumber()) {
            if (!call.Integer(i, most) || most < 0) {
                return Outside();
            }
        } else if (call[i].IsText() && call[i].AsText() == NoEmptyEntries) {
            noEmpty = true;
        } else {
            marks += Characters(Call(&call[i], 1, call.environment), 0);
        }
    }
    if (call.count() == 2 && call[1].IsText()) {
        return SplitText(text, call[1].AsText(), -1, false);
    }
    return Parted(ToUtf32(text), marks.empty() ? U" \t\r\n" : marks, most, noEmpty);
}

Value Chars(const Call& call) {
    std::int64_t at = 0;
    if (IsNothing(call) || !call.Integer(1, at)) {
        return call.error;
    }
    const std::string text = call.Text(0);
    const std::string_view character =
        at < 0 ? std::string_view() : Slice(text, static_cast<std::size_t>(at), 1);
    return character.empty() ? Outside() : Value::Text(character);
}

Value Item(const Call& call) {
    std::int64_t at = 0;
    if (!call.Integer(1, at)) {
        return call.error;
    }
    if (call[0].kind() != Kind::List) {
        return at == 0 ? call[0] : Outside();
    }
    const ValueList& list = call[0].AsList();
    return at >= 0 && static_cast<std::size_t>(at) < list.size() ? list[static_cast<std::size_t>(at)]
                                                                 : Outside();
}

Value GetUpperBound(const Call& call) {
    return call[0].kind() == Kind::List
               ? Value::Integer(static_cast<std::int64_t>(call[0].AsList().size()) - 1)
               : NoConversion(call[0], "a list");
}

Value EqualsMember(const Call& call) {
    if (NoCase(call)) {
        return Value::Boolean(CompareNoCase(call.Text(0), call.Text(1)) == 0);
    }
    if (call[0].IsNull() != call[1].IsNull()) {
        return Value::Boolean(false);
    }
    return CompareAs(Comparison::Equal, call[0], call[1], call.culture());
}

Value CompareTo(const Call& call) {
    const int order = call[0].IsText() && call[1].IsText() ? call[0].AsText().compare(call[1].AsText())
                                                           : Compare(call[0], call[1]);
    return Value::Integer(order < 0 ? -1 : order > 0 ? 1 : 0);
}

Value Rank(const Call& call) {
    return call[0].kind() == Kind::List ? Value::Integer(1) : NoConversion(call[0], "a list");
}

Value ArrayIndexOf(const Call& call) {
    return call[0].kind() == Kind::List ? IndexInList(call) : NoConversion(call[0], "a list");
}

Value LBound(const Call& call) {
    return call[0].kind() == Kind::List ? Value::Integer(0) : NoConversion(call[0], "a list");
}

Value HasValue(const Call& call) {
    return Value::Boolean(!call[0].IsNull());
}
Value Itself(const Call& call) {
    return call[0];
}
// Whether a parameter, which code was given as a whole, has several values.
Value IsMultiValue(const Call& call) {
    return Value::Boolean(call[0].kind() == Kind::List);
}
Value OrDefault(const Call& call) {
    return call[0].IsNull() ? call[1] : call[0];
}

constexpr FunctionInfo functions[] = {
    {".tostring", 1, 3, ToStringMember, false, true},
    {".length", 1, 1, Length},
    {".count", 1, 1, Count},
    {".toupper", 1, 1, ToUpper},
    {".tolower", 1, 1, ToLower},
    {".toupperinvariant", 1, 1, ToUpper},
    {".tolowerinvariant", 1, 1, ToLower},
    {".trim", 1, Any, Trim},
    {".trimstart", 1, Any, TrimStart},
    {".trimend", 1, Any, TrimEnd},
    {".substring", 2, 3, Substring},
    {".remove", 2, 3, Remove, false, true},
    {".insert", 3, 3, Insert, false, true},
    {".replace", 3, 3, Replace, false, true},
    {".contains", 2, 3, Contains, false, true},
    {".startswith", 2, 4, StartsWith},
    {".endswith", 2, 4, EndsWith},
    {".indexof", 2, 5, IndexOf, false, true},
    {".lastindexof", 2, 4, LastIndexOf},
    {".indexofany", 2, 2, IndexOfAny},
    {".tochararray", 1, 1, ToCharArray},
    {".padleft", 2, 3, PadLeft},
    {".padright", 2, 3, PadRight},
    {".split", 1, Any, Split},
    {".chars", 2, 2, Chars},
    {".getvalue", 2, 2, Item},
    {".item", 2, 2, Item},
    {".getlength", 2, 2, Length},
    {".getupperbound", 2, 2, GetUpperBound},
    {".getlowerbound", 2, 2, LBound},
    {".rank", 1, 1, Rank},
    {".equals", 2, 3, EqualsMember},
    {".compareto", 2, 2, CompareTo},
    {".hasvalue", 1, 1, HasValue},
    {".value", 1, 1, Itself},
    {".message", 1, 1, Itself},
    {".ismultivalue", 1, 1, IsMultiValue},
    {".getvalueordefault", 1, 2, OrDefault},
};
static_assert(NamesDiffer(functions));

constexpr FunctionInfo listFunctions[] = {
    {"ubound", 1, 2, GetUpperBound},
    {"lbound", 1, 2, LBound},
    {"array.indexof", 2, 2, ArrayIndexOf},
};
static_assert(NamesDiffer(listFunctions));

}  // namespace

std::span<const FunctionInfo> TextMembers() {
    return functions;
}
std::span<const FunctionInfo> ListFunctions() {
    return listFunctions;
}

}  // namespace rdl::expr
