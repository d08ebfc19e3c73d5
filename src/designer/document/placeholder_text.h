// SPDX-License-Identifier: GPL-3.0-or-later
// What a text box shows of its value while it is designed.
#pragma once

#include <string>
#include <string_view>

namespace designer {

// Returns what stands for the value: of a field [Customer], of an aggregate of one [Sum(Amount)], of a
// parameter
// [@Year], of a global [&PageNumber]; of any other expression «Expr». A constant is itself, with {?Year} and
// {@PageNumber} in it likewise.
std::string PlaceholderOf(std::string_view value);

// Whether the text is an expression.
bool IsExpression(std::string_view value);

}  // namespace designer
