// Names of the parts of a report.
#pragma once

#include <string>
#include <string_view>

namespace rdl {

// Whether the UTF-8 text is an identifier: a letter or _, then letters, digits, connectors and combining
// marks of any script. Names appear in expressions, columns and statements, so nothing else is allowed.
bool IsIdentifier(std::string_view name);

// Returns the error text for an invalid name: its kind, the name, and the rule.
std::string NotAnIdentifier(std::string_view kind, std::string_view name);

}  // namespace rdl
