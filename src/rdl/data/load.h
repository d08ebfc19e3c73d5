// SPDX-License-Identifier: GPL-3.0-or-later
// The data stage: loads the rows of a definition's data sets for parameter values and logons.
//
// Every failure is an rdl::Error that names the data set or data source and distinguishes a missing file, a
// missing table, a refused logon and a faulty query. No text contains a password.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "rdl/data/common/table.h"
#include "rdl/definition/model.h"
#include "rdl/values/error.h"
#include "rdl/values/run_watch.h"
#include "rdl/values/value.h"

namespace rdl::data {

struct ParameterInput {
    Value value;  // a List for a multi-value parameter
    Value label;  // a Text, or a List of Texts
};

// Replaces user and password of the report or its connect string.
struct Logon {
    std::string user, password;
};

struct SourceOverride {
    std::string provider;       // SQLITE, PostgreSQL ...; empty: the report's own
    std::string connectString;  // empty: that of the report
};

// Limits on untrusted reports: they bound memory and time.
struct Limits {
    std::size_t rows = 5'000'000;              // of one data set
    std::size_t bytes = std::size_t{1} << 30;  // of one data set, cells with their texts
    int querySeconds = 600;                    // if the data set sets no timeout
};

struct LoadRequest {
    const Definition* definition = nullptr;
    // For a shared data set the request of the report that uses it, whose parameters connect strings know;
    // else null.
    const LoadRequest* report = nullptr;
    std::vector<ParameterInput> parameters;  // in the definition's order; missing ones are Null
    std::string folder;  // machine path of the report's folder, where relative names start
    // Machine paths of further folders: a report may be copied to where it runs without its data.
    std::vector<std::string> folders;
    std::string reportName, userName, renderFormat;
    std::int64_t nowTicks = 0;
    std::map<std::string, Logon> logons;              // by data source name
    std::map<std::string, SourceOverride> overrides;  // by data source name
    // Machine paths of CSV files by data set name: rows that replace the query. Their columns are fields by
    // name.
    std::map<std::string, std::string> rowFiles;
    std::string formula;  // record selection formula; empty: every row
    Limits limits;
    std::shared_ptr<RunWatch> watch;  // limits of the whole run; null: no limits

    void CheckBounds() const {
        if (watch) {
            watch->CheckBounds();
        }
    }

    // Folders to search for relative names, in this order.
    std::vector<std::string> SearchFolders() const {
        std::vector<std::string> all{folder};
        all.insert(all.end(), folders.begin(), folders.end());
        return all;
    }
};

// Returns every data set by name: queries run, fields converted, calculated fields computed, filters and the
// record selection formula applied.
std::map<std::string, Table> LoadTables(const LoadRequest& request);

// Loads one data set as LoadTables does; no other query runs.
Table LoadSelectedTable(const LoadRequest& request, const DataSet& dataSet);

// Loads the rows of the shared data set that `dataSet` names, with the parameters that this gives it: the
// fields and filters are those of the shared file.
Table LoadSharedTable(const LoadRequest& request, const DataSet& dataSet);

// Loads one data set without the record selection formula, for a parameter's available values.
Table LoadTable(const LoadRequest& request, const std::string& dataSet);

// Returns the fields in the order of their slots: query fields, then calculated ones, each as defined. The
// data set owns them.
std::vector<const Field*> FieldOrder(const DataSet& dataSet);

// Checks a record selection formula. Raises rdl::Error with the position, or naming a field or parameter that
// the report does not have.
void CheckFormula(const Definition& definition, const std::string& formula);

}  // namespace rdl::data
