// SPDX-License-Identifier: GPL-3.0-or-later
// Converts named query parameters to positional binds: a value never becomes part of the text.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "rdl/data/common/provider.h"
#include "rdl/values/value.h"

namespace rdl::data {

struct NamedValue {
    std::string name;  // as in the report: @Year, :Year, $Year, ? or Year
    Value value;       // a List becomes one bind for each value
};

struct BoundQuery {
    // Each parameter is a ?; for PostgreSQL $1, $2 ..., so that a repeated one has one type; in a CALL of
    // MySQL a session variable (VariableMark and its number), as prepared statements return no rows from a
    // procedure.
    std::string text;
    std::vector<Value> binds;  // one for each placeholder, in order
};
inline constexpr std::string_view VariableMark = "@oxc_";

// Replaces @name, :name and $name if the data set has a parameter of that name (without regard to case),
// outside of strings, quoted names and comments. A text without names may use one ? for each parameter. With
// parameters, comments are removed: drivers look for placeholders in them. Raises rdl::Error if the counts
// differ or a list is too long.
BoundQuery BindParameters(std::string_view text, const std::vector<NamedValue>& values,
                          ProviderKind provider);

// Whether only white space and comments follow the first ; outside of strings and comments.
bool IsOneStatement(std::string_view text, ProviderKind provider);
// Whether the statement starts with CALL.
bool IsCall(std::string_view text);

// Returns the call of a stored procedure. The name may contain ASCII letters, digits, . _ [ ] " ` and blanks;
// any other raises rdl::Error.
BoundQuery ProcedureCall(std::string_view name, const std::vector<NamedValue>& values, ProviderKind provider);
// Returns the statement that reads a whole table.
std::string TableQuery(std::string_view name, ProviderKind provider);

}  // namespace rdl::data
