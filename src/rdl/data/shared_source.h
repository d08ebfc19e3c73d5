// Shared data sources (.rds) and shared data sets (.rsd) beside a report.
#pragma once

#include <string>
#include <vector>

#include "rdl/definition/model.h"

namespace rdl::data {

struct SharedSource {
    std::string provider, connectString;
    bool integrated = false;
};

// `reference` is a name or a path of a report server; its last piece names the file in the run's folders.
// Raises rdl::Error when the file is missing or none of its kind.
SharedSource ReadSharedSource(const std::string& reference, const std::vector<std::string>& folders);

struct SharedParameter {
    std::string name;  // as its query writes it: @Year
    Expr defaultValue;
    bool nullable = false;
    bool readOnly = false;       // reports cannot give it
    bool omitFromQuery = false;  // for expressions only
};

struct SharedDataSet {
    DataSet dataSet;  // its query, fields and filters; its data source's name is the reference
    std::vector<SharedParameter> parameters;
    DataSource source;  // the shared data source that it asks
};
SharedDataSet ReadSharedDataSet(const std::string& reference, const std::vector<std::string>& folders);

}  // namespace rdl::data
