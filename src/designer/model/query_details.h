// SPDX-License-Identifier: GPL-3.0-or-later
// What a data set has besides its query and fields: how the query is meant, its parameters or those of the
// shared data set, its time limit and its filters (MS-RDL, Query, SharedDataSet and DataSet).
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "designer/model/filters.h"
#include "rdl/api/query_kinds.h"

namespace designer {

struct QueryParameter {
    int place = NewRow;  // among the parameters in the file
    std::string name, value = {};
    bool operator==(const QueryParameter&) const = default;
};

struct QueryDetails {
    std::string type = "Text";
    int seconds = 0;  // 0: as long as a run allows
    std::vector<QueryParameter> parameters = {};
    std::vector<RowFilter> filters = {};
    bool operator==(const QueryDetails&) const = default;
};

// Returns the kind of query that the type of the details names; of a word that is not known, Text.
rdl::QueryKind KindOfType(std::string_view type);

// Returns those of the data set of this name; the usual ones if there is none.
QueryDetails QueryDetailsOf(const Document& document, std::string_view set);
// Writes what has changed to the data set of this name. Edits of the step that is open. Raises EditError if
// there is none.
void PutQueryDetails(Document& document, std::string_view set, const QueryDetails& details);

// Returns the value with which a dialog runs the query: what the user has typed for a parameter whose value
// in the report is `expression`. A number, date or truth value is an expression of its type, as a run would
// bind it; empty is Null.
std::string TestValue(const Document& document, std::string_view expression, const std::string& typed);
// Returns what such a test begins with: the default value of the report's parameter, if it is a constant.
std::string FirstTestValue(const Document& document, std::string_view expression);

}  // namespace designer
