// SPDX-License-Identifier: GPL-3.0-or-later
// Resolves report parameters: given values, defaults, labels and validation.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "rdl/data/load.h"
#include "rdl/definition/model.h"
#include "rdl/engine/report_parameter.h"

namespace rdl::engine {

// Converts a value to the parameter's type; Null stays Null. Raises rdl::Error naming the parameter.
Value ConvertToType(const ReportParameter& parameter, const Value& value);
// The same for the value of an expression, which may be a list.
ValueList ValuesInType(const ReportParameter& parameter, const Value& value);
// Returns a value as a user types it: dates as year-month-day, numbers with a decimal point.
std::string ParameterText(const Value& value);

// Returns the constant defaults of the report; those that fail to evaluate are omitted until the report runs.
ValueList ConstantDefaults(const data::LoadRequest& request, const ReportParameter& parameter);
// Returns the constant valid values; empty if one of them fails to evaluate or if they come from a query.
ValueList ConstantValidValues(const data::LoadRequest& request, const ReportParameter& parameter);
std::string PromptOf(const data::LoadRequest& request, const ReportParameter& parameter);

// Returns what the defaults of later parameters see before the report runs: this parameter's defaults, or an
// error if its value comes from a query or from the user.
data::ParameterInput InputBeforeRun(const ReportParameter& parameter, const ValueList& values);

// Fills request.parameters in order: the given values, else the defaults, else Null if the parameter allows
// it. Raises rdl::Error naming a parameter without a value or with an invalid one.
void ResolveParameters(data::LoadRequest& request,
                       const std::vector<std::unique_ptr<ReportParameterState>>& fields);

}  // namespace rdl::engine
