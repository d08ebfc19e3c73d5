// The order of values for sorting, grouping and joining.
#pragma once

#include <cstddef>

#include "rdl/values/value.h"

namespace rdl::expr {

// Less than, equal to or greater than 0: null first, texts without regard to case, numbers and dates by
// value, different kinds by kind. A total order, whatever the data mixes.
int Compare(const Value& left, const Value& right);
std::size_t Hash(const Value& value);  // values that Compare calls equal have equal hashes

}  // namespace rdl::expr
