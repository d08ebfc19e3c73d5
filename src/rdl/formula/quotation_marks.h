// SPDX-License-Identifier: GPL-3.0-or-later
// Quotation marks of a formula.
#pragma once

#include <string>
#include <string_view>

namespace rdl::formula {

// Returns an equivalent formula without ': texts are in double quotes, and a ' inside one becomes chr(39).
// Applications put formulas into SQL statements, where ' would end a literal.
std::string WithoutSingleMarks(std::string_view formula);

}  // namespace rdl::formula
