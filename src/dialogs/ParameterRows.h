// SPDX-License-Identifier: GPL-3.0-or-later
// The stored parameter values of a single schedule.
#pragma once

#include <functional>
#include <string>

#include "platform/contracts/adodb.h"
#include "platform/contracts/runtime.h"

namespace Global {

// Inserts one value. Nothing is escaped. Errors pass to the caller.
void InsertParameterRow(ADODB::Connection& connection, const std::string& reportID, const std::string& name,
                        const std::string& value);

// Stores ParNames and ParValues, 1 to `count`, for the schedule with the highest key. The caller has just
// inserted that schedule. An error is shown; rows stored before it stay.
void AddParameterRows(int count);

// Returns the value of line `n` (from 1) of a list of parameters. Raises an error if there is no such line.
using ParameterLine = std::function<std::string(int n)>;

// Replaces the stored rows of a schedule. The names are those of CurrentReport, the values come from the
// lines by position. If the report has no parameters, the stored rows stay unchanged. An error is shown and
// gives false; what was done before it stays done.
bool ReplaceParameterRows(const Variant& reportID, const ParameterLine& line);

}  // namespace Global
