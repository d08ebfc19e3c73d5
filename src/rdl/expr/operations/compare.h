// SPDX-License-Identifier: GPL-3.0-or-later
// The order of values for sorting, grouping and joining.
#pragma once

#include <cstddef>

#include "rdl/values/value.h"

namespace rdl::expr {

// Returns a number less than, equal to or greater than 0. Null is first, texts ignore case, numbers and dates
// compare by value, different kinds by kind. This is a total order for any mix of values.
int Compare(const Value& left, const Value& right);
std::size_t Hash(const Value& value);  // equal by Compare implies equal hashes

}  // namespace rdl::expr
