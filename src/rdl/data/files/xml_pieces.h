// SPDX-License-Identifier: GPL-3.0-or-later
// Rows of a long query that holds its data: they are parsed a piece at a time.
#pragma once

#include <memory>

#include "rdl/data/common/cursor.h"
#include "rdl/spool/spool.h"

namespace rdl::data {

// Opens a query as OpenXml does. Returns null if the query must be read whole: it has errors, or a column of
// it needs more than one of the pieces. `query` must outlive the result.
std::unique_ptr<Cursor> OpenLongXml(Spool& query);

}  // namespace rdl::data
