// The names that a report gives to its parts.
#pragma once

#include <string>
#include <string_view>

namespace rdl {

// Whether the UTF-8 text is an identifier: a letter or _ first, then letters, digits, connectors and
// combining marks of any script. Names end up in expressions, columns and statements, so nothing else is a
// name.
bool IsIdentifier(std::string_view name);

// What is said of a name that is none, for an error: its kind, the name, and the rule.
std::string NotAnIdentifier(std::string_view kind, std::string_view name);

}  // namespace rdl
