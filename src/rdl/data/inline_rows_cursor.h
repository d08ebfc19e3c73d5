// SPDX-License-Identifier: GPL-3.0-or-later
// The rows that stand in a report.
#pragma once

#include <memory>

#include "rdl/data/common/cursor.h"
#include "rdl/definition/model.h"

namespace rdl::data {

// The columns are those that the fields name. The data set must have rows and outlive the result.
std::unique_ptr<Cursor> OpenInlineRows(const DataSet& dataSet);

}  // namespace rdl::data
