// SPDX-License-Identifier: GPL-3.0-or-later
// Rows from a SQLite database through its C API, which is the fastest way to typed values. The file is opened
// read-only and never created.
#pragma once

#include <memory>
#include <string>

#include "rdl/data/common/cursor.h"
#include "rdl/data/sql/query_text.h"

namespace rdl::data {

struct SqliteSource {
    std::string file;      // machine path
    int querySeconds = 0;  // timeout of the query
};

// The cursor owns the connection. Raises rdl::Error that distinguishes a missing file, a file that is not a
// database, a missing table and a syntax error.
std::unique_ptr<Cursor> OpenSqlite(const SqliteSource& source, const BoundQuery& query);

}  // namespace rdl::data
