// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/definition/query_words.h"

#include <charconv>

#include "rdl/values/ascii.h"

namespace rdl {
std::optional<QueryKind> CommandTypeOf(std::string_view word) {
    if (word.empty()) {
        return QueryKind::Text;
    }
    const QueryKindRow* const known = FindQueryKind(word);
    return known ? std::optional(known->kind) : std::nullopt;
}

std::optional<int> TimeoutOf(std::string_view text) {
    text = Trimmed(text);
    int seconds = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), seconds);
    const bool isNumber = error == std::errc() && end == text.data() + text.size();
    if (!text.empty() && (!isNumber || seconds < 0 || seconds > MostQuerySeconds)) {
        return std::nullopt;
    }
    return seconds;
}

std::string NotACommandType(std::string_view word) {
    return "\"" + std::string(word) + "\" is not known";
}

std::string NotATimeout(std::string_view text) {
    return "\"" + std::string(Trimmed(text)) + "\" is not a whole number from 0 to " +
           std::to_string(MostQuerySeconds);
}

}  // namespace rdl
