// A run of a report: its data is loaded and laid out, its subreports likewise as they are met.
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "platform/rdl/data/load.h"
#include "platform/rdl/layout/instance.h"

namespace rdl::engine {

// `request` has the parameters resolved and its definition outlives the instance; `file` is the report's.
// `pictures` is for formats without vectors: charts come out as images. Raises RuntimeError with the number
// of the stage that failed.
std::shared_ptr<layout::ReportInstance> RunReport(const data::LoadRequest& request,
                                                  const std::filesystem::path& file, bool pictures);

// Of the process's user, for User!UserID.
std::string UserName();

}  // namespace rdl::engine
