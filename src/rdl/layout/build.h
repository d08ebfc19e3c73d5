// SPDX-License-Identifier: GPL-3.0-or-later
// Builds a ReportInstance from a definition and its data: grouping, sorting, filters, aggregates, expressions
// of items and styles.
#pragma once

#include <memory>

#include "rdl/layout/model/report_input.h"

namespace rdl::layout {

// Takes over `input`; what it points to must outlive the instance. Raises rdl::Error naming item and property
// if an expression does not compile.
std::unique_ptr<ReportInstance> Build(ReportInput input);

// Only compiles the expressions, for opening a report without running it. Raises errors as Build does.
void CheckExpressions(const Definition& definition);

}  // namespace rdl::layout
