// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/document/placeholder_text.h"

#include <algorithm>
#include <cstddef>
#include <optional>

#include "designer/document/xml_text.h"
#include "platform/base/ascii.h"
#include "rdl/api/identifier.h"

namespace designer {
namespace {

constexpr std::string_view AnyExpression =
    "\xC2\xAB"
    "Expr\xC2\xBB";

struct Collection {
    std::string_view name;  // with its mark
    std::string_view sign;  // before the name that is shown
    std::string_view end;   // what may follow the name
};

constexpr Collection ValueCollections[] = {
    {"Fields!", "", ".Value"},
    {"Parameters!", "@", ".Value"},
    {"Parameters!", "@", ".Label"},
    {"Globals!", "&", ""},
    {"User!", "&", ""},
    {"ReportItems!", "", ".Value"},
    {"Variables!", "", ".Value"},
};

// Reads an expression from its beginning.
class Reader {
 public:
    explicit Reader(std::string_view text) : m_rest(text) {}

    bool Take(std::string_view word) {
        SkipBlanks();
        if (m_rest.size() < word.size() || !SameAscii(m_rest.substr(0, word.size()), word)) {
            return false;
        }
        m_rest.remove_prefix(word.size());
        return true;
    }

    std::string_view TakeName() {
        SkipBlanks();
        std::size_t length = NameLength(m_rest);
        length = std::min(length, m_rest.substr(0, length).find_first_of(".-:"));
        const std::string_view name = m_rest.substr(0, length);
        m_rest.remove_prefix(name.size());
        return name;
    }

    // A text between ", in which "" stands for one.
    bool TakeText() {
        if (!Take("\"")) {
            return false;
        }
        const std::size_t end = m_rest.find('"');
        if (end == std::string_view::npos || m_rest.substr(end + 1).starts_with('"')) {
            return false;
        }
        m_rest.remove_prefix(end + 1);
        return true;
    }

    bool IsAtEnd() {
        SkipBlanks();
        return m_rest.empty();
    }

 private:
    void SkipBlanks() {
        while (!m_rest.empty() && IsBlank(m_rest.substr(0, 1))) {
            m_rest.remove_prefix(1);
        }
    }
    std::string_view m_rest;
};

// "Fields!Customer.Value" as "Customer", a parameter as "@Year".
std::optional<std::string> TakeReference(Reader& reader) {
    for (const Collection& collection : ValueCollections) {
        Reader attempt = reader;
        if (!attempt.Take(collection.name)) {
            continue;
        }
        const std::string name(attempt.TakeName());
        if (!name.empty() && attempt.Take(collection.end)) {
            reader = attempt;
            return std::string(collection.sign) + name;
        }
    }
    return std::nullopt;
}

// "Sum(Fields!Amount.Value, "Region")" as "Sum(Amount)".
std::optional<std::string> TakeCall(Reader& reader) {
    const std::string function(reader.TakeName());
    if (function.empty() || !reader.Take("(")) {
        return std::nullopt;
    }
    if (reader.Take(")")) {
        return function + "()";
    }
    const std::optional<std::string> inner = TakeReference(reader);
    const bool hasScope = inner && reader.Take(",");
    if (!inner || (hasScope && !reader.TakeText()) || !reader.Take(")")) {
        return std::nullopt;
    }
    return function + "(" + *inner + ")";
}

std::string OfExpression(std::string_view expression) {
    Reader reader(expression);
    std::optional<std::string> shown = TakeReference(reader);
    if (!shown) {
        reader = Reader(expression);
        shown = TakeCall(reader);
    }
    return shown && reader.IsAtEnd() ? "[" + *shown + "]" : std::string(AnyExpression);
}

}  // namespace

bool IsExpression(std::string_view value) {
    return Trim(value).starts_with('=');
}

std::string PlaceholderOf(std::string_view value) {
    if (IsExpression(value)) {
        return OfExpression(Trim(value).substr(1));
    }
    std::string text;
    for (std::size_t at = 0; at < value.size();) {
        const std::string_view rest = value.substr(at);
        const bool isMark = rest.starts_with("{?") || rest.starts_with("{@");
        const std::size_t end = isMark ? rest.find_first_of("{}", 1) : std::string_view::npos;
        const std::string_view name = end == std::string_view::npos ? "" : Trim(rest.substr(2, end - 2));
        if (end != std::string_view::npos && rest[end] == '}' && rdl::IsIdentifier(name)) {
            text.append(rest[1] == '?' ? "[@" : "[&").append(name).append("]");
            at += end + 1;
        } else {
            text += value[at++];
        }
    }
    return text;
}

}  // namespace designer
