// SPDX-License-Identifier: GPL-3.0-or-later
// Functions that look for, compare, split and join text.
#include <algorithm>
#include <string>

#include "rdl/expr/library/functions.h"
#include "rdl/expr/operations/convert.h"
#include "rdl/expr/operations/text_search.h"
#include "rdl/values/characters.h"
#include "rdl/values/utf8.h"

namespace rdl::expr {

std::size_t Find(std::string_view text, std::string_view what, std::size_t from, bool noCase) {
    if (!noCase) {
        return text.find(what, from);
    }
    if (from > text.size()) {
        return std::string_view::npos;
    }
    // By characters: a character and its other case may differ in bytes.
    const std::u32string needle = Lower(ToUtf32(what));
    const std::u32string hay = Lower(ToUtf32(text.substr(from)));
    const std::size_t at = hay.find(needle);
    return at == std::u32string::npos ? std::string_view::npos : from + ByteIndex(text.substr(from), at);
}

std::size_t FindLast(std::string_view text, std::string_view what, bool noCase) {
    if (!noCase) {
        return text.rfind(what);
    }
    const std::size_t at = Lower(ToUtf32(text)).rfind(Lower(ToUtf32(what)));
    return at == std::u32string::npos ? std::string_view::npos : ByteIndex(text, at);
}

namespace {

// Every place of `what`, without overlap, up to `most` of them: as byte ranges.
template <typename Found>
void ForEach(std::string_view text, std::string_view what, std::int64_t most, bool noCase, Found found) {
    const std::size_t characters = noCase ? CharacterCount(what) : 0;
    const std::u32string needle = noCase ? Lower(ToUtf32(what)) : std::u32string();
    const std::u32string hay = noCase ? Lower(ToUtf32(text)) : std::u32string();
    std::size_t byte = 0;
    for (std::size_t at = 0; most != 0; --most) {
        if (!noCase) {
            at = text.find(what, at);
            if (at == std::string_view::npos) {
                return;
            }
            found(at, at + what.size());
            at += what.size();
            continue;
        }
        const std::size_t next = hay.find(needle, at);
        if (next == std::u32string::npos) {
            return;
        }
        byte += ByteIndex(text.substr(byte), next - at);
        const std::size_t end = byte + ByteIndex(text.substr(byte), characters);
        found(byte, end);
        byte = end;
        at = next + characters;
    }
}

bool NoCase(const Call& call, int index, bool& noCase) {
    std::int64_t mode = 0;
    if (!call.Integer(index, mode)) {
        return false;
    }
    noCase = mode == 1;
    return true;
}

// InStr([start,] text, what [, compare]): the start is there when the first argument is a number.
Value InStr(const Call& call) {
    const bool started = call.count() > 2 && call[0].IsNumber();
    const int first = started ? 1 : 0;
    std::int64_t start = 1;
    bool noCase = false;
    if ((started && !call.Integer(0, start)) || !NoCase(call, first + 2, noCase)) {
        return call.error;
    }
    if (start < 1) {
        return Value::Error("Argument 1 must be at least 1");
    }
    const std::string text = call.Text(first);
    const std::string what = call.Text(first + 1);
    const auto skipped = static_cast<std::size_t>(start - 1);
    if (text.empty() || skipped >= CharacterCount(text)) {
        return Value::Integer(0);
    }
    if (what.empty()) {
        return Value::Integer(start);
    }
    const std::size_t at = Find(text, what, ByteIndex(text, skipped), noCase);
    return Value::Integer(at == std::string::npos ? 0
                                                  : static_cast<std::int64_t>(CharacterIndex(text, at)) + 1);
}

// InStrRev(text, what [, start [, compare]]): backwards from the start, -1 being the end.
Value InStrRev(const Call& call) {
    std::int64_t start = -1;
    bool noCase = false;
    if ((call.Has(2) && !call.Integer(2, start)) || !NoCase(call, 3, noCase)) {
        return call.error;
    }
    if (start == 0 || start < -1) {
        return Value::Error("Argument 3 must be -1 or at least 1");
    }
    const std::string text = call.Text(0);
    const std::string what = call.Text(1);
    const auto length = static_cast<std::int64_t>(CharacterCount(text));
    if (text.empty() || start > length) {
        return Value::Integer(0);
    }
    if (what.empty()) {
        return Value::Integer(start == -1 ? length : start);
    }
    const std::string_view part =
        start == -1 ? std::string_view(text) : Slice(text, 0, static_cast<std::size_t>(start));
    const std::size_t at = FindLast(part, what, noCase);
    return Value::Integer(at == std::string::npos ? 0
                                                  : static_cast<std::int64_t>(CharacterIndex(text, at)) + 1);
}

// Replace(text, find, with [, start [, count [, compare]]]): what stands before the start is left out.
Value Replace(const Call& call) {
    std::int64_t start = 1;
    std::int64_t count = -1;
    bool noCase = false;
    if ((call.Has(3) && !call.Integer(3, start)) || (call.Has(4) && !call.Integer(4, count)) ||
        !NoCase(call, 5, noCase)) {
        return call.error;
    }
    if (start < 1 || count < -1) {
        return Value::Error("Replace cannot start or count there");
    }
    const std::string text = call.Text(0);
    return ReplaceAll(std::string_view(text).substr(ByteIndex(text, static_cast<std::size_t>(start - 1))),
                      call.Text(1), call.Text(2), count, noCase);
}

Value Split(const Call& call) {
    std::int64_t most = -1;
    bool noCase = false;
    if ((call.Has(2) && !call.Integer(2, most)) || !NoCase(call, 3, noCase)) {
        return call.error;
    }
    return SplitText(call.Text(0), call.Has(1) ? call.Text(1) : " ", most, noCase);
}

Value Join(const Call& call) {
    const std::string separator = call.count() > 1 ? call.Text(1) : " ";
    if (call[0].kind() != Kind::List) {
        return MakeText(call.Text(0));
    }
    std::string text;
    bool first = true;
    for (const Value& part : call[0].AsList()) {
        text += first ? "" : separator;
        first = false;
        if (part.IsError()) {
            return part;
        }
        text += TextOf(part, call.culture());
        if (text.size() > MaxText) {
            break;
        }
    }
    return MakeText(text);
}

// Filter(list, match [, include [, compare]])
Value Filter(const Call& call) {
    bool include = true;
    bool noCase = false;
    if ((call.Has(2) && !call.Truth(2, include)) || !NoCase(call, 3, noCase)) {
        return call.error;
    }
    if (call[0].kind() != Kind::List) {
        return NoConversion(call[0], "a list");
    }
    const std::string match = call.Text(1);
    ValueList kept;
    for (const Value& item : call[0].AsList()) {
        if ((Find(TextOf(item, call.culture()), match, 0, noCase) != std::string::npos) == include) {
            kept.push_back(item);
        }
    }
    return Value::List(std::move(kept));
}

Value StrComp(const Call& call) {
    bool noCase = false;
    if (!NoCase(call, 2, noCase)) {
        return call.error;
    }
    const std::string left = call.Text(0);
    const std::string right = call.Text(1);
    const int order = noCase ? CompareNoCase(left, right) : left.compare(right);
    return Value::Integer(order < 0 ? -1 : order > 0 ? 1 : 0);
}

constexpr FunctionInfo functions[] = {
    {"instr", 2, 4, InStr}, {"instrrev", 2, 4, InStrRev}, {"replace", 3, 6, Replace}, {"split", 1, 4, Split},
    {"join", 1, 2, Join},   {"filter", 2, 4, Filter},     {"strcomp", 2, 3, StrComp},
};
static_assert(NamesDiffer(functions));

}  // namespace

Value ReplaceAll(std::string_view text, std::string_view what, std::string_view with, std::int64_t most,
                 bool noCase) {
    if (what.empty()) {
        return Value::Text(text);
    }
    std::string result;
    std::size_t done = 0;
    ForEach(text, what, most, noCase, [&](std::size_t begin, std::size_t end) {
        if (result.size() <= MaxText) {
            result += text.substr(done, begin - done);
            result += with;
        }
        done = end;
    });
    result += text.substr(done);
    return MakeText(result);
}

Value SplitText(std::string_view text, std::string_view separator, std::int64_t most, bool noCase) {
    ValueList parts;
    std::size_t done = 0;
    if (!separator.empty()) {
        ForEach(text, separator, most < 0 ? -1 : std::max<std::int64_t>(0, most - 1), noCase,
                [&](std::size_t begin, std::size_t end) {
                    parts.push_back(Value::Text(text.substr(done, begin - done)));
                    done = end;
                });
    }
    parts.push_back(Value::Text(text.substr(done)));
    return Value::List(std::move(parts));
}

std::span<const FunctionInfo> SearchFunctions() {
    return functions;
}

}  // namespace rdl::expr
