// SPDX-License-Identifier: GPL-3.0-or-later
// Text for addresses and markup, and bytes as text: System.Uri, HttpUtility, Convert.FromBase64String.
#include <algorithm>
#include <string>

#include "rdl/expr/library/functions.h"
#include "rdl/expr/operations/convert.h"
#include "rdl/values/ascii.h"
#include "rdl/values/base64.h"
#include "rdl/values/utf8.h"

namespace rdl::expr {
namespace {

// Encodes bytes that are neither ASCII alphanumeric nor in `kept`.
std::string Encoded(std::string_view text, std::string_view kept, std::string_view digits = HexDigits) {
    const auto isPlain = [kept](char c) {
        return IsAsciiLetterOrDigit(c) || kept.find(c) != std::string_view::npos;
    };
    return PercentEncoded(text, isPlain, digits);
}

Value EscapeDataString(const Call& call) {
    return MakeText(Encoded(call.Text(0), "-_.~"));
}
Value EscapeUriString(const Call& call) {
    return MakeText(Encoded(call.Text(0), "-_.~!*'();:@&=+$,/?#[]"));
}

// As forms are sent: a blank is +.
Value UrlEncode(const Call& call) {
    std::string text = Encoded(call.Text(0), "-_.!*() ", SmallHexDigits);
    for (char& c : text) {
        c = c == ' ' ? '+' : c;
    }
    return MakeText(text);
}

std::string PercentDecoded(std::string_view text, bool plusIsBlank) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const int high = text[i] == '%' && i + 2 < text.size() ? HexDigitValue(text[i + 1]) : -1;
        const int low = high >= 0 ? HexDigitValue(text[i + 2]) : -1;
        if (low >= 0) {
            result += static_cast<char>(high * 16 + low);
            i += 2;
        } else {
            result += plusIsBlank && text[i] == '+' ? ' ' : text[i];
        }
    }
    // Replaces malformed UTF-8, which decoding another charset may give, by U+FFFD.
    return ToUtf8(ToUtf32(result));
}

Value UnescapeDataString(const Call& call) {
    return MakeText(PercentDecoded(call.Text(0), false));
}
Value UrlDecode(const Call& call) {
    return MakeText(PercentDecoded(call.Text(0), true));
}

constexpr std::pair<std::string_view, std::string_view> Entities[] = {
    {"&lt;", "<"}, {"&gt;", ">"}, {"&quot;", "\""}, {"&#39;", "'"}, {"&nbsp;", "\xC2\xA0"}, {"&amp;", "&"}};

Value HtmlEncode(const Call& call) {
    std::string result;
    for (const char c : call.Text(0)) {
        std::string_view shown(&c, 1);
        for (const auto& [entity, character] : Entities) {
            shown = character.size() == 1 && character[0] == c ? entity : shown;
        }
        result += shown;
    }
    return MakeText(result);
}

Value HtmlDecode(const Call& call) {
    const std::string text = call.Text(0);
    std::string result;
    for (std::size_t i = 0; i < text.size();) {
        std::size_t taken = 1;
        std::string_view shown = std::string_view(text).substr(i, 1);
        for (const auto& [entity, character] : Entities) {
            if (std::string_view(text).substr(i, entity.size()) == entity) {
                taken = entity.size();
                shown = character;
            }
        }
        result += shown;
        i += taken;
    }
    return MakeText(result);
}

// Unlike elsewhere the padding must be there.
Value FromBase64(const Call& call) {
    const std::string text = call.Text(0);
    const auto digits = std::count_if(text.begin(), text.end(), [](char c) { return !IsAsciiSpace(c); });
    const std::optional<std::string> bytes = digits % 4 == 0 ? rdl::FromBase64(text) : std::nullopt;
    return bytes ? Value::Bytes(*bytes) : NoConversion(call[0], "binary data");
}

Value ToBase64(const Call& call) {
    if (call[0].kind() != Kind::Bytes) {
        return NoConversion(call[0], "binary data");
    }
    const std::string_view bytes = call[0].AsText();
    return bytes.size() > MaxText / 4 * 3 ? Value::Error("A text becomes too long")
                                          : Value::Text(rdl::ToBase64(bytes));
}

constexpr FunctionInfo functions[] = {
    {"uri.escapedatastring", 1, 1, EscapeDataString},     {"uri.escapeuristring", 1, 1, EscapeUriString},
    {"uri.unescapedatastring", 1, 1, UnescapeDataString}, {"httputility.urlencode", 1, 1, UrlEncode},
    {"httputility.urldecode", 1, 1, UrlDecode},           {"httputility.htmlencode", 1, 1, HtmlEncode},
    {"httputility.htmldecode", 1, 1, HtmlDecode},         {"webutility.htmlencode", 1, 1, HtmlEncode},
    {"webutility.htmldecode", 1, 1, HtmlDecode},          {"convert.frombase64string", 1, 1, FromBase64},
    {"convert.tobase64string", 1, 1, ToBase64},
};
static_assert(NamesDiffer(functions));

}  // namespace

std::span<const FunctionInfo> EscapeFunctions() {
    return functions;
}

}  // namespace rdl::expr
