// SPDX-License-Identifier: GPL-3.0-or-later
// What a mistyped name may have meant, for errors.
#pragma once

#include <string>
#include <string_view>

namespace rdl::expr {

class CodeFunctions;

// Returns the function, aggregate or constant whose name differs least from `lower`; Code.Name for a function
// of the code of the report (`code` may be null). Empty if none is near: a typing error or two, by the
// length.
std::string NearestName(std::string_view lower, const CodeFunctions* code);
// The same among the functions of the code of the report alone.
std::string NearestOwn(std::string_view lower, const CodeFunctions& code);
// The same for a member of a value, without its point.
std::string NearestMember(std::string_view lower);

}  // namespace rdl::expr
