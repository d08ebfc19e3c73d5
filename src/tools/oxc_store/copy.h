// SPDX-License-Identifier: GPL-3.0-or-later
// Copies a store to another place.
#pragma once

#include <cstdint>

#include "tools/oxc_store/store_place.h"

namespace tools {

// Copies all rows to a store without rows: a new file, or a database in which the tables are made if they are
// missing. The report files, of the store or of the folder Cache beside a file, go to the store or to the
// folder Cache beside the new file; another file of the same name there is an error. The rows are compared
// with the source before they are stored. Either everything arrives or nothing. Returns the number of rows.
std::int64_t CopyStore(const StorePlace& from, const StorePlace& to);

}  // namespace tools
