// SPDX-License-Identifier: GPL-3.0-or-later
// The input of a report run.
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

// What becomes of charts and gauges.
enum class Drawings {
    Vectors,   // the objects of a page
    Pictures,  // images
    Data       // the values that they show
};

struct ReportInput {
    const Definition* definition = nullptr;
    std::map<std::string, Table>
        tables;  // by data set name; calculated fields computed, the data sets' filters applied
    std::vector<ParameterState> parameters;  // in the definition's order
    std::int64_t nowTicks = 0;
    std::string reportName, reportFolder, userName, renderFormat;
    std::shared_ptr<RunWatch> watch;  // limits of the whole run; null: no limits
    // Returns the bytes of an external image; null with the reason in `why` on failure.
    std::function<std::shared_ptr<const std::string>(const std::string& source, std::string& why)> loadImage;
    // Returns the bytes of a data file that the report names. Raises rdl::Error if it cannot be read.
    std::function<std::string(const std::string& name)> readFile;
    // Returns the instance of a subreport with its parameters; null if it cannot be opened, which is an
    // error.
    std::function<std::shared_ptr<ReportInstance>(const Subreport& subreport,
                                                  const std::vector<Value>& parameters)>
        openSubreport;
    Drawings drawings = Drawings::Vectors;
    // Converts drawings to images; set if they become pictures.
    std::function<std::shared_ptr<const std::string>(const DrawingInstance& drawing)> paint;
};

}  // namespace rdl::layout
