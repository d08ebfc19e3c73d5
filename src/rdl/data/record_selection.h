// The record selection formula on the data sets of a report.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "rdl/data/load.h"
#include "rdl/formula/formula.h"

namespace rdl::data {

// A field may be written {DataSet.Field}, {Field}, or with any table name where only one data set has the
// field. The formula rules the data sets that hold all its fields; one without fields rules them all.
class RecordSelection {
 public:
    // Raises rdl::Error when the formula does not compile, names a field or parameter that the report does
    // not have, or mixes fields of several data sets. An empty text selects everything.
    RecordSelection(const Definition& definition, const std::string& text);

    // Drops the rows that are not selected. Raises rdl::Error when the formula fails on one.
    void Apply(const LoadRequest& request, const DataSet& dataSet, Table& table) const;

 private:
    std::optional<formula::Formula> m_formula;
    std::vector<std::string> m_dataSets;  // that it rules
    std::vector<int> m_parameters;        // index in the definition, by the formula's numbers
};

}  // namespace rdl::data
