// SPDX-License-Identifier: GPL-3.0-or-later
// Parameters and globals that stand in a text: "Sales of {?Year}", "Printed {@ExecutionTime}".
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace rdl {

// Parameters by name in lower case; the value says whether the parameter may have several values.
using ParameterNames = std::unordered_map<std::string, bool>;

// Returns the expression that joins the text and the values of its {?Parameter} and {@Global}; several values
// have ", " between them. Returns nullopt if the text has none. A name in braces that is neither stays text;
// without `parameters` any identifier counts as the name of a parameter.
std::optional<std::string> ExpressionOfText(std::string_view text, const ParameterNames* parameters);

}  // namespace rdl
