// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/definition/query_words.h"

#include <charconv>

#include "rdl/values/ascii.h"

namespace rdl {
namespace {

constexpr int MostSeconds = 1'000'000;

}  // namespace

std::optional<DataSet::CommandType> CommandTypeOf(std::string_view word) {
    if (word.empty() || EqualNoCase(word, "Text")) {
        return DataSet::CommandType::Text;
    }
    if (EqualNoCase(word, "StoredProcedure")) {
        return DataSet::CommandType::StoredProcedure;
    }
    if (EqualNoCase(word, "TableDirect")) {
        return DataSet::CommandType::TableDirect;
    }
    return std::nullopt;
}

std::optional<int> TimeoutOf(std::string_view text) {
    text = Trimmed(text);
    int seconds = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), seconds);
    const bool isNumber = error == std::errc() && end == text.data() + text.size();
    if (!text.empty() && (!isNumber || seconds < 0 || seconds > MostSeconds)) {
        return std::nullopt;
    }
    return seconds;
}

std::string NotACommandType(std::string_view word) {
    return "\"" + std::string(word) + "\" is not known";
}

std::string NotATimeout(std::string_view text) {
    return "\"" + std::string(Trimmed(text)) + "\" is not a whole number from 0 to " +
           std::to_string(MostSeconds);
}

}  // namespace rdl
