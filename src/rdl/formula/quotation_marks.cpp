// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/formula/quotation_marks.h"

namespace rdl::formula {
namespace {

// The text that begins at `at`, which moves past its closing mark; its doubled marks are one each.
std::string TextAt(std::string_view formula, std::size_t& at) {
    const char close = formula[at++];
    std::string text;
    for (; at < formula.size(); ++at) {
        if (formula[at] != close) {
            text += formula[at];
        } else if (at + 1 < formula.size() && formula[at + 1] == close) {
            text += formula[at++];
        } else {
            ++at;
            break;
        }
    }
    return text;
}

std::string InDoubleMarks(std::string_view text) {
    if (text.find('\'') == std::string_view::npos) {
        std::string constant = "\"";
        for (const char c : text) {
            constant.append(c == '"' ? 2 : 1, c);
        }
        return constant + "\"";
    }
    std::string sum = "(";
    for (std::size_t begin = 0;;) {
        const std::size_t end = text.find('\'', begin);
        sum += InDoubleMarks(text.substr(begin, end - begin));
        if (end == std::string_view::npos) {
            return sum + ")";
        }
        sum += " & chr(39) & ";
        begin = end + 1;
    }
}

}  // namespace

std::string WithoutSingleMarks(std::string_view formula) {
    if (formula.find('\'') == std::string_view::npos) {
        return std::string(formula);
    }
    std::string result;
    for (std::size_t at = 0; at < formula.size();) {
        const char c = formula[at];
        if (c == '"' || c == '\'') {
            result += InDoubleMarks(TextAt(formula, at));
            continue;
        }
        // Within a comment, a name or a date it is no mark of a text.
        const bool isComment = formula.substr(at).starts_with("//");
        const char close = isComment ? '\n' : c == '{' ? '}' : c == '#' ? '#' : '\0';
        const std::size_t found = close == '\0' ? at : formula.find(close, at + 1);
        const std::size_t end = found == std::string_view::npos ? formula.size() : found + 1;
        for (; at < end; ++at) {
            result += formula[at] == '\'' ? '"' : formula[at];
        }
    }
    return result;
}

}  // namespace rdl::formula
