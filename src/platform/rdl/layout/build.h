// From a definition and its data to a ReportInstance: grouping, sorting, filters of regions and groups,
// aggregates in their scopes, expressions of items and styles.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/rdl/data/table.h"
#include "platform/rdl/definition/model.h"
#include "platform/rdl/expr/expression.h"
#include "platform/rdl/layout/instance.h"
#include "platform/rdl/run/run_watch.h"

namespace rdl::layout {

struct ParameterState {
    Value value;  // List for a multi-value parameter
    Value label;  // text or list of texts
};

// Everything that a report runs on.
struct ReportInput {
    const Definition* definition = nullptr;
    std::map<std::string, Table>
        tables;  // by data set name; calculated fields and the data set's filters applied
    std::vector<ParameterState> parameters;  // in the definition's order
    std::int64_t nowTicks = 0;
    std::string reportName, reportFolder, userName, renderFormat;
    std::shared_ptr<RunWatch> watch;  // of the whole run; null: unbounded
    // Bytes of an external image by the text that the report gives; empty with an error in `why`.
    std::function<std::shared_ptr<const std::string>(const std::string& source, std::string& why)> loadImage;
    // The instance of a subreport's body with its parameters; null when it cannot be had, which is an error.
    std::function<std::shared_ptr<ReportInstance>(const Subreport& subreport,
                                                  const std::vector<Value>& parameters)>
        openSubreport;
    // Set for formats that show no vectors: charts come out as pictures, made by this.
    std::function<std::shared_ptr<const std::string>(const DrawingInstance& drawing)> paint;
};

// Compiles every expression of the definition. Raises rdl::Error naming item and property. The input must
// outlive the instance; it is moved into it.
std::unique_ptr<ReportInstance> Build(ReportInput input);

// Only the check, for opening a report without running it.
void CheckExpressions(const Definition& definition);

}  // namespace rdl::layout
