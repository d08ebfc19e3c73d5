// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/data_provider/connection_string.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "platform/base/ascii.h"
#include "platform/base/text.h"

namespace {

constexpr std::string_view Blanks = " \t";  // names of folders may end with a line end

// Returns true if a value may end before this text. Names of folders may hold semicolons: only the keys of
// the system's own strings begin another pair.
bool IsNextPiece(std::string_view text) {
    const std::size_t start = text.find_first_not_of("; \t");
    if (start == std::string_view::npos) {
        return true;
    }
    text.remove_prefix(start);
    const std::size_t sign = text.find('=');
    const std::string_view name = Trim(text.substr(0, sign), Blanks);
    constexpr std::array<std::string_view, 3> Keys{"Provider", "Data Source", "Persist Security Info"};
    return sign != std::string_view::npos &&
           std::any_of(Keys.begin(), Keys.end(),
                       [name](std::string_view key) { return SameText(name, key); });
}

// Returns the text up to the semicolon that ends it.
std::string_view PlainValue(std::string_view text) {
    std::size_t end = text.find(';');
    while (end != std::string_view::npos && !IsNextPiece(text.substr(end))) {
        end = text.find(';', end + 1);
    }
    return text.substr(0, end);
}

// Removes and returns the value at the front of the text, up to the semicolon.
std::string TakeValue(std::string_view& text) {
    const std::size_t start = text.find_first_not_of(Blanks);
    const char mark = start == std::string_view::npos ? '\0' : text[start];
    if (mark != '"' && mark != '\'') {
        const std::string_view plain = PlainValue(text);
        text.remove_prefix(plain.size());
        return std::string(Trim(plain, Blanks));
    }
    text.remove_prefix(start);
    std::string value = TakeQuoted(text).value;
    text.remove_prefix(std::min(text.find(';'), text.size()));
    return value;
}

}  // namespace

QuotedValue TakeQuoted(std::string_view& text) {
    const char mark = text.front();
    QuotedValue quoted;
    std::size_t at = 1;
    for (; at < text.size() && !quoted.isClosed; ++at) {
        const bool isMark = text[at] == mark;
        if (isMark && (at + 1 >= text.size() || text[at + 1] != mark)) {
            quoted.isClosed = true;
            continue;
        }
        at += isMark ? 1 : 0;
        quoted.value += text[at];
    }
    text.remove_prefix(std::min(at, text.size()));
    return quoted;
}

std::string ConnectionValue(std::string_view connectionString, std::string_view key) {
    std::string found;
    std::string_view rest = connectionString;
    while (!rest.empty()) {
        const std::size_t keyEnd = rest.find_first_of("=;");
        if (keyEnd == std::string_view::npos) {
            break;
        }
        const std::string_view name = Trim(rest.substr(0, keyEnd), Blanks);
        const bool hasValue = rest[keyEnd] == '=';
        rest.remove_prefix(keyEnd + 1);
        if (!hasValue) {
            continue;
        }
        std::string value = TakeValue(rest);
        if (SameText(name, key)) {
            found = std::move(value);
        }
        rest.remove_prefix(rest.empty() ? 0 : 1);
    }
    return found;
}
