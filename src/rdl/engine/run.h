// A run of a report: its data is loaded and laid out, its subreports likewise as they are met.
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "rdl/data/load.h"
#include "rdl/layout/model/instance.h"

namespace rdl::engine {

// `request` has the parameters resolved and its definition outlives the instance; `file` is the report's.
// `pictures` is for formats without vectors: charts come out as images. Raises Failure with the stage that
// failed.
std::shared_ptr<layout::ReportInstance> RunReport(const data::LoadRequest& request,
                                                  const std::filesystem::path& file, bool pictures);

}  // namespace rdl::engine
