// SPDX-License-Identifier: GPL-3.0-or-later
// Tries a store.
#pragma once

#include <string>

#include "tools/oxc_store/store_place.h"

namespace tools {

// Returns what was found, on lines that end with a line feed. Raises an error if the store cannot be used.
std::string CheckStore(const StorePlace& place);

}  // namespace tools
