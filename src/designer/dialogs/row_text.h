// SPDX-License-Identifier: GPL-3.0-or-later
// The rows of a query as texts.
#pragma once

#include <string>
#include <vector>

#include "rdl/api/query_rows.h"

namespace designer {

// Returns the value without separators, dates as 2025-03-01 or 2025-03-01 08:30:00. Null and bytes are empty.
std::string TextOf(const rdl::Value& value);
// Returns a word for the type of a value: Text, Whole number, Number, Decimal, Date, Time, Boolean, Bytes.
const char* WordOf(rdl::Kind kind);
// Returns this word for the values of a column. Empty for a column without values, Mixed for one of several
// types.
std::string TypeOf(const rdl::QueryRows& rows, std::size_t column);

// Returns the first rows as a CSV file with these headings, one for each column; a column with an empty
// heading is left out.
std::string CsvOf(const rdl::QueryRows& rows, const std::vector<std::string>& headings, std::size_t mostRows);

}  // namespace designer
