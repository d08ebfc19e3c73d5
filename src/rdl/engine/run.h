// SPDX-License-Identifier: GPL-3.0-or-later
// Runs a report: loads and lays out its data, and its subreports when they are reached.
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "rdl/data/load.h"
#include "rdl/layout/model/instance.h"

namespace rdl::engine {

// `request` has resolved parameters; its definition must outlive the result. `file` is the report's file.
// `pictures`: charts, gauges and maps become images. Raises Failure with the stage that failed.
std::shared_ptr<layout::ReportInstance> RunReport(const data::LoadRequest& request,
                                                  const std::filesystem::path& file, bool pictures);

}  // namespace rdl::engine
