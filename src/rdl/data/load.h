// The data stage: from a definition, its parameter values and logons to the rows of its data sets.
//
// Every failure is an rdl::Error that names the data set or data source and tells a missing file, a missing
// table, a refused logon and a query's fault apart. No text holds a password.
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
    Value label;  // text, or a list of texts
};

// Replaces the user and password that the report or its connect string has.
struct Logon {
    std::string user, password;
};

struct SourceOverride {
    std::string provider;       // SQLITE, PostgreSQL ...; empty: the report's own
    std::string connectString;  // empty: the report's own
};

// A report is not trusted: what it may put into memory is bounded.
struct Limits {
    std::size_t rows = 5'000'000;              // of one data set
    std::size_t bytes = std::size_t{1} << 30;  // of one data set, cells and their texts
    int querySeconds = 600;                    // where the data set gives no time of its own
};

struct LoadRequest {
    const Definition* definition = nullptr;
    std::vector<ParameterInput> parameters;  // in the definition's order; fewer: the others are Null
    std::string folder;  // machine path of the report's folder; relative names start there
    // Machine paths of folders that hold what is not in the report's own: a report is copied to where it runs
    // from without its data.
    std::vector<std::string> folders;
    std::string reportName, userName, renderFormat;
    std::int64_t nowTicks = 0;
    std::map<std::string, Logon> logons;              // by data source name
    std::map<std::string, SourceOverride> overrides;  // by data source name
    std::string formula;                              // record selection formula; empty: every row
    Limits limits;
    std::shared_ptr<RunWatch> watch;  // of the whole run; null: unbounded

    void CheckBounds() const {
        if (watch) {
            watch->CheckBounds();
        }
    }

    // Where relative names are looked for, in this order.
    std::vector<std::string> SearchFolders() const {
        std::vector<std::string> all{folder};
        all.insert(all.end(), folders.begin(), folders.end());
        return all;
    }
};

// Every data set of the report, by name: queries run, fields typed, calculated fields, the data sets' filters
// and the record selection formula applied.
std::map<std::string, Table> LoadTables(const LoadRequest& request);

// One data set only and without the record selection formula: the values a parameter offers.
Table LoadTable(const LoadRequest& request, const std::string& dataSet);

// The slot order of a data set's fields: those of the query, then the calculated ones, each as defined.
std::vector<const Field*> FieldOrder(const DataSet& dataSet);

// Whether a record selection formula can be run on the report; raises rdl::Error with the position, or
// naming the field or parameter that the report does not have.
void CheckFormula(const Definition& definition, const std::string& formula);

}  // namespace rdl::data
