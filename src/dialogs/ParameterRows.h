// The stored parameter values of a single schedule.
#pragma once

#include <functional>
#include <string>

#include "platform/contracts/runtime.h"

namespace Global {

// Stores ParNames and ParValues, 1 to `count`, for the schedule with the highest key, which is taken to be
// the one that the caller has just inserted. An error shows the error box; rows stored before it stay.
void AddParameterRows(int count);

// Gives the value of line n (from 1) of a list of parameters; raises when there is no such line.
using ParameterLine = std::function<std::string(int n)>;

// Replaces the stored rows of a schedule: names as CurrentReport has them, values from the lines, matched by
// position. A report without parameters leaves the stored rows as they are. False after an error box; what
// was done before the error stays done.
bool ReplaceParameterRows(const Variant& reportID, const ParameterLine& line);

}  // namespace Global
