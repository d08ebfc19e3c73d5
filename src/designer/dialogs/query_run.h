// SPDX-License-Identifier: GPL-3.0-or-later
// Queries of the designer's dialogs. All raise RuntimeError with the reason as the engine gives it.
#pragma once

#include <QString>
#include <filesystem>
#include <string>
#include <vector>

#include "designer/dialogs/source_kinds.h"
#include "rdl/api/query_rows.h"

namespace designer {

struct TableName {
    std::string schema, name;  // the schema may be empty
};

// Runs the query, which may take two minutes unless the request says how long. After a moment a box over the
// active window offers to stop it; the windows stay alive.
rdl::QueryRows RunQuery(rdl::QueryRequest request);
// Returns the provider and connect string of a shared data source, as a report in this folder finds it.
rdl::SharedSourceText SharedSourceOf(const std::string& reference, const std::filesystem::path& folder);
// The same of a shared data set.
rdl::SharedSetText SharedSetOf(const std::string& reference, const std::filesystem::path& folder);
// Reads something of the source. Returns the result as a text for users.
QString TestOf(const SourceKind& kind, rdl::QueryRequest request);
// Returns the tables and views of a source whose kind has a query for them.
std::vector<TableName> TablesOf(const SourceKind& kind, rdl::QueryRequest request);

}  // namespace designer
