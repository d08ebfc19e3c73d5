// SPDX-License-Identifier: GPL-3.0-or-later
// Reads shared data sources (.rds) and shared data sets (.rsd) from the folders of a run.
#pragma once

#include <string>
#include <vector>

#include "rdl/definition/model.h"

namespace rdl::data {

struct SharedSource {
    std::string provider;
    Expr connectString;  // an expression if {?Parameter} or {@Global} stands in it; else a constant
    bool integrated = false;
    std::string file = {};  // where it was found
};

// `reference` is a name or a report server path; its last part names the file. Raises rdl::Error if the file
// is missing or is not of this kind.
SharedSource ReadSharedSource(const std::string& reference, const std::vector<std::string>& folders);

struct SharedParameter {
    std::string name;  // as in the query: @Year
    Expr defaultValue;
    bool nullable = false;
    bool readOnly = false;       // reports cannot set it
    bool omitFromQuery = false;  // for expressions only
};

struct SharedDataSet {
    DataSet dataSet;  // query, fields and filters; its data source's name is the reference
    std::vector<SharedParameter> parameters;
    DataSource source;      // the shared data source of its query
    std::string file = {};  // where it was found
};
SharedDataSet ReadSharedDataSet(const std::string& reference, const std::vector<std::string>& folders);

}  // namespace rdl::data
