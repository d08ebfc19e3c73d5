// A query's named parameters as positional binds: a value never becomes part of the text.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "rdl/data/common/provider.h"
#include "rdl/values/value.h"

namespace rdl::data {

struct NamedValue {
    std::string name;  // as the report writes it: @Year, :Year, $Year, ? or Year
    Value value;       // a List becomes one bind for each of its values
};

struct BoundQuery {
    // A parameter is a ?; for PostgreSQL $1, $2 ..., so that one that stands twice has one type; in a CALL of
    // MySQL a variable of the session (VariableMark and its number), as a procedure's rows are not to be had
    // from a prepared statement.
    std::string text;
    std::vector<Value> binds;  // one for each mark, in order
};
inline constexpr std::string_view VariableMark = "@oxc_";

// Rewrites @name, :name and $name where the data set has a parameter of that name (without regard to case),
// outside strings, quoted names and comments. A text without any of them may have a ? for each parameter.
// Comments are left out where there are parameters: drivers look for their marks in them. Raises rdl::Error
// when the numbers do not meet or a list is too long.
BoundQuery BindParameters(std::string_view text, const std::vector<NamedValue>& values,
                          ProviderKind provider);

// Whether nothing but blanks and comments stands behind the first ; outside of texts and comments.
bool IsOneStatement(std::string_view text, ProviderKind provider);
// Whether the statement calls a procedure by the word CALL.
bool IsCall(std::string_view text);

// The statement that calls a stored procedure; its name may hold letters, digits, . _ [ ] " ` and blanks.
BoundQuery ProcedureCall(std::string_view name, const std::vector<NamedValue>& values, ProviderKind provider);
// The statement that reads a whole table.
std::string TableQuery(std::string_view name, ProviderKind provider);

}  // namespace rdl::data
