// SPDX-License-Identifier: GPL-3.0-or-later
// Opens the rows of a data set.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "rdl/data/common/cursor.h"
#include "rdl/data/common/provider.h"
#include "rdl/data/load.h"

namespace rdl::data {

// A data source ready for use: shared source read, overrides and logon applied, expressions evaluated.
struct OpenSource {
    ProviderKind provider = ProviderKind::Sqlite;
    std::string connectString;
    Logon logon;
    bool integrated = false;  // log on as the user of the operating system
};
OpenSource ResolveSource(const LoadRequest& request, const DataSource& source);

// Returns the columns whose values a file of texts must not guess: their fields are declared as texts or as
// decimals, which keep their digits.
std::vector<std::string> ColumnsReadAsTexts(const DataSet& dataSet);

// Runs the data set's query. `source` may be null for inline rows. Raises rdl::Error without the names of
// data set and data source.
std::unique_ptr<Cursor> OpenCursor(const LoadRequest& request, const DataSet& dataSet,
                                   const DataSource* source);

}  // namespace rdl::data
