// Rows of a SQLite database, by its C API: the driver of the house for report data, and the fastest way to
// typed values. The file is opened for reading only and is never created.
#pragma once

#include <memory>
#include <string>

#include "rdl/data/common/cursor.h"
#include "rdl/data/sql/query_text.h"

namespace rdl::data {

struct SqliteSource {
    std::string file;      // machine path
    int querySeconds = 0;  // after that a query is given up
};

// Raises rdl::Error, telling a missing file, one that is no database, a missing table and a syntax error
// apart.
std::unique_ptr<Cursor> OpenSqlite(const SqliteSource& source, const BoundQuery& query);

}  // namespace rdl::data
