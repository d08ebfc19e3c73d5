// SPDX-License-Identifier: GPL-3.0-or-later
// Names of the parts of a report.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>

#include "rdl/api/identifier.h"

namespace rdl {

// Returns the error text for an invalid name: its kind, the name, and the rule.
std::string NotAnIdentifier(std::string_view kind, std::string_view name);

// The names of one collection. Expressions find them without regard to case, so two names that differ only in
// case would be one.
class DistinctNames {
 public:
    // Returns an empty text, or what is wrong with the name, for an error: the collection has one like it.
    std::string Add(const std::string& name);

 private:
    std::unordered_map<std::string, std::string> m_names;  // in lower case, as it is written
};

}  // namespace rdl
