// SPDX-License-Identifier: GPL-3.0-or-later
// Runs a report: loads and lays out its data, and its subreports when they are reached.
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "rdl/data/load.h"
#include "rdl/layout/model/instance.h"
#include "rdl/layout/model/report_input.h"

namespace rdl::engine {

// `request` has resolved parameters; its definition must outlive the result. `file` is the report's file.
// Raises Failure with the stage that failed.
std::shared_ptr<layout::ReportInstance> RunReport(const data::LoadRequest& request,
                                                  const std::filesystem::path& file,
                                                  layout::Drawings drawings);

// Returns the input of a run with what the request has: without tables, images and subreports.
layout::ReportInput InputOf(const data::LoadRequest& request);

}  // namespace rdl::engine
