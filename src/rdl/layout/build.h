// From a definition and its data to a ReportInstance: grouping, sorting, filters of regions and groups,
// aggregates in their scopes, expressions of items and styles.
#pragma once

#include <memory>

#include "rdl/layout/model/report_input.h"

namespace rdl::layout {

// Compiles every expression of the definition. Raises rdl::Error naming item and property. The input must
// outlive the instance; it is moved into it.
std::unique_ptr<ReportInstance> Build(ReportInput input);

// Only the check, for opening a report without running it.
void CheckExpressions(const Definition& definition);

}  // namespace rdl::layout
