// SPDX-License-Identifier: GPL-3.0-or-later
// The columns and first rows of a query, before there is a report that runs it.
#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "rdl/api/query_kinds.h"
#include "rdl/values/stop.h"
#include "rdl/values/value.h"

namespace rdl {

// A parameter of a query, by its name there. The value is a constant, or an expression that begins with = and
// knows neither fields nor parameters; empty: Null.
struct QueryValue {
    std::string name, value = {};
};

struct QueryRequest {
    std::string provider, connectString;  // as a data source of a report has them; both are constants
    std::string query = {};               // may be empty for a file of rows
    // A shared data set, which has its query and the name of its data source. The source above is the
    // report's of the name `source`; if that is another name, the data set's source is a shared one.
    std::string sharedSet = {}, source = {};
    std::filesystem::path folder = {};     // where relative names start; empty: the current folder
    std::string user = {}, password = {};  // no user: those of the connect string
    std::vector<QueryValue> parameters = {};
    QueryKind kind = QueryKind::Text;
    std::size_t mostRows = 1000;
    int seconds = 0;                              // that the query may take; 0: as long as a report's
    std::shared_ptr<const StopSignal> stop = {};  // by which another thread ends the query; may be null
};

struct QueryRows {
    std::vector<std::string> columns;  // as the data source names them; two may have the same name
    std::vector<Value> cells;          // row after row
    // By column, System.Int64 and so on: the type that the data source declares, empty if it declares none.
    // Shorter than the columns if nothing is known of them.
    std::vector<std::string> types = {};
    std::size_t RowCount() const { return columns.empty() ? 0 : cells.size() / columns.size(); }
    const Value& At(std::size_t row, std::size_t column) const {
        return cells[row * columns.size() + column];
    }
};

// What a shared data source has: a file NAME.rds.
struct SharedSourceText {
    std::string provider, connectString;
    std::filesystem::path file;  // where it was found
};
// Returns the shared data source of this name or path, looked for as a report in the folder does. Raises
// Failure (Stage::Data) if there is none, or if its file is of another kind.
SharedSourceText ReadSharedSource(const std::string& reference, const std::filesystem::path& folder);

// What a shared data set has: a file NAME.rsd.
struct SharedSetText {
    std::string source, query;           // the query may be an expression
    std::vector<QueryValue> parameters;  // that reports can set, with their defaults
    std::filesystem::path file;          // where it was found
};
// Returns the shared data set of this name or path, as ReadSharedSource.
SharedSetText ReadSharedSet(const std::string& reference, const std::filesystem::path& folder);

// Runs the query as a report with this data source runs it, with the same restrictions, and reads its first
// rows: at most `mostRows`, and fewer of long rows. Raises Failure (Stage::Data) with the reason.
QueryRows ReadQueryRows(const QueryRequest& request);

// Returns the parameters that the text of a query asks for in the dialect of the provider, with their marks
// (@Year, :Year), each once; without names a ? for each mark. None for a provider that has no SQL or is not
// known.
std::vector<std::string> ParametersOfQuery(const std::string& provider, const std::string& connectString,
                                           std::string_view query);

}  // namespace rdl
