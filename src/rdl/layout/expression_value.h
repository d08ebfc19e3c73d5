// SPDX-License-Identifier: GPL-3.0-or-later
// Computes one expression outside the items of a report, so that its author sees the value. The expression
// sees the first row of a data set. Every region and group then has all rows of the set.
#pragma once

#include <string>
#include <vector>

#include "rdl/layout/model/report_input.h"

namespace rdl::layout {

struct ExpressionNeeds {
    bool parameters = false;
    bool run = false;   // pages, other items or instances of groups: without a run there is no value
    bool rows = false;  // of the expression's own data set
    std::vector<std::string> dataSets = {};  // whose rows it reads, its own among them
};

// Returns what the value of an expression in this data set depends on; the data set may be empty. Raises
// rdl::Error, which begins with `where`, if the expression or the report does not compile.
ExpressionNeeds NeedsOf(const Definition& definition, const std::string& source, const std::string& where,
                        const std::string& dataSet);

// Returns the value; a failure is a value of kind Error. `input` has the tables and parameters that the
// expression needs.
Value ValueOf(const ReportInput& input, const std::string& source, const std::string& where,
              const std::string& dataSet);

}  // namespace rdl::layout
