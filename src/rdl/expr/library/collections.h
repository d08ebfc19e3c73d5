// The objects that report-level code keeps its own data in: StringBuilder, ArrayList and List, Stack, Queue,
// Hashtable, Dictionary and SortedList. They are listed with the functions of objects.h.
#pragma once

#include <span>

#include "rdl/expr/library/functions.h"

namespace rdl::expr {

// New StringBuilder and its like.
std::span<const FunctionInfo> CollectionFunctions();

}  // namespace rdl::expr
