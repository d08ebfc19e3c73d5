// What the parameters of a report come to: given values, defaults, labels, and the rules that they keep.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "rdl/data/load.h"
#include "rdl/definition/model.h"
#include "rdl/engine/report_parameter.h"

namespace rdl::engine {

// The value in the parameter's type; Null stays Null. Raises rdl::Error naming the parameter.
Value ConvertToType(const ReportParameter& parameter, const Value& value);
// The same for an expression's value, which may be a list of several.
ValueList ValuesInType(const ReportParameter& parameter, const Value& value);
// As a person would type it: dates year-month-day, numbers with a point.
std::string ParameterText(const Value& value);

// The defaults that stand in the report; those that fail to evaluate are left out until the report runs.
ValueList ConstantDefaults(const data::LoadRequest& request, const ReportParameter& parameter);
// The values that the report itself allows; none while one of them fails to evaluate, and none of a query.
ValueList ConstantValidValues(const data::LoadRequest& request, const ReportParameter& parameter);
std::string PromptOf(const data::LoadRequest& request, const ReportParameter& parameter);

// What defaults behind this one see of it before the report runs: its own defaults, or an error while its
// value comes from a query or from whoever runs the report.
data::ParameterInput InputBeforeRun(const ReportParameter& parameter, const ValueList& values);

// Fills request.parameters in order: what each field was given, else its defaults, else Null where the
// parameter allows it. Raises rdl::Error naming the parameter that has no value or one that is not valid.
void ResolveParameters(data::LoadRequest& request,
                       const std::vector<std::unique_ptr<ReportParameterState>>& fields);

}  // namespace rdl::engine
