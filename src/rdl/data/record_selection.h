// SPDX-License-Identifier: GPL-3.0-or-later
// Applies the record selection formula to the data sets of a report.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "rdl/data/load.h"
#include "rdl/formula/formula.h"

namespace rdl::data {

// A field is written {DataSet.Field}, {Field}, or with any table name if only one data set has the field. The
// formula applies to the data sets that have all its fields; without fields it applies to all.
class RecordSelection {
 public:
    // An empty text selects all rows. Raises rdl::Error if the formula does not compile, names an unknown
    // field or parameter, or mixes fields of several data sets.
    RecordSelection(const Definition& definition, const std::string& text);

    // Removes the rows that are not selected. Raises rdl::Error if the formula fails on a row.
    void Apply(const LoadRequest& request, const DataSet& dataSet, Table& table) const;

 private:
    std::optional<formula::Formula> m_formula;
    std::vector<std::string> m_dataSets;  // data sets that it applies to
    std::vector<int> m_parameters;        // index in the definition, by the formula's parameter index
};

}  // namespace rdl::data
