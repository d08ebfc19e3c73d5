// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/definition/placeholders.h"

#include "rdl/api/text_literal.h"
#include "rdl/definition/identifier.h"
#include "rdl/expr/language/names.h"
#include "rdl/values/ascii.h"

namespace rdl {
namespace {

// Returns the expression of what stands between braces; empty if it is mere text.
std::string ValueOf(std::string_view inBraces, const ParameterNames* parameters) {
    const std::string_view name = Trimmed(inBraces.substr(1));
    if (!IsIdentifier(name)) {
        return {};
    }
    const std::string lower = LowerAscii(name);
    const std::string source = "{" + std::string(1, inBraces.front()) + std::string(name) + "}";
    if (inBraces.front() == '@') {
        return FindNamed(expr::GlobalNames, lower) ? source : "";
    }
    if (!parameters) {
        return source;
    }
    const auto known = parameters->find(lower);
    if (known == parameters->end()) {
        return {};
    }
    return known->second ? "Join(" + source + ", \", \")" : source;
}

void AddText(std::string_view text, std::string& expression) {
    if (text.empty()) {
        return;
    }
    expression += (expression.size() > 1 ? " & " : "") + TextLiteral(text);
}

}  // namespace

std::optional<std::string> ExpressionOfText(std::string_view text, const ParameterNames* parameters) {
    std::string expression = "=";
    std::size_t done = 0;  // what is in the expression
    for (std::size_t open = text.find('{'); open != std::string_view::npos; open = text.find('{', open + 1)) {
        const std::size_t close = text.find_first_of("{}", open + 1);
        if (close == std::string_view::npos || text[close] != '}' ||
            (text[open + 1] != '?' && text[open + 1] != '@')) {
            continue;
        }
        const std::string value = ValueOf(text.substr(open + 1, close - open - 1), parameters);
        if (value.empty()) {
            continue;
        }
        AddText(text.substr(done, open - done), expression);
        expression += (expression.size() > 1 ? " & " : "") + value;
        done = close + 1;
    }
    if (done == 0) {
        return std::nullopt;
    }
    AddText(text.substr(done), expression);
    return expression;
}

}  // namespace rdl
