// SPDX-License-Identifier: GPL-3.0-or-later
// The collection classes of report-level code: StringBuilder, ArrayList, List, Stack, Queue, Hashtable,
// Dictionary and SortedList. objects.h lists them with its functions.
#pragma once

#include <span>

#include "rdl/expr/library/functions.h"

namespace rdl::expr {

// The constructors, such as New StringBuilder.
std::span<const FunctionInfo> CollectionFunctions();

}  // namespace rdl::expr
