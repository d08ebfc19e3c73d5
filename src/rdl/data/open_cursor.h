// From a data set to the rows of its data source.
#pragma once

#include <memory>

#include "rdl/data/common/cursor.h"
#include "rdl/data/common/provider.h"
#include "rdl/data/load.h"

namespace rdl::data {

// A data source as it is used: shared ones read, overrides and logon put in, expressions worked out.
struct OpenSource {
    ProviderKind provider = ProviderKind::Sqlite;
    std::string connectString;
    Logon logon;
    bool integrated = false;  // the report asks for the operating system's user
};
OpenSource ResolveSource(const LoadRequest& request, const DataSource& source);

// Runs the data set's query; inline rows are their own source. `source` may be null for those. Raises
// rdl::Error without the names of data set and data source.
std::unique_ptr<Cursor> OpenCursor(const LoadRequest& request, const DataSet& dataSet,
                                   const DataSource* source);

}  // namespace rdl::data
