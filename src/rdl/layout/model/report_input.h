// Everything that a report runs on.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "rdl/data/common/table.h"
#include "rdl/definition/model.h"
#include "rdl/layout/model/instance.h"
#include "rdl/values/run_watch.h"
#include "rdl/values/value.h"

namespace rdl::layout {

struct ParameterState {
    Value value;  // List for a multi-value parameter
    Value label;  // text or list of texts
};

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

}  // namespace rdl::layout
