// SPDX-License-Identifier: GPL-3.0-or-later
// Reads DataSources, DataSets and ReportParameters (MS-RDL, elements of these names). Raises rdl::Error.
#pragma once

#include "rdl/definition/context.h"

namespace rdl {

std::vector<DataSource> ReadDataSources(Context& context, const XmlElement& report);
std::vector<DataSet> ReadDataSets(Context& context, const XmlElement& report);
std::vector<ReportParameter> ReadParameters(Context& context, const XmlElement& report);

}  // namespace rdl
