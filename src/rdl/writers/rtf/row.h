// SPDX-License-Identifier: GPL-3.0-or-later
// A table row in RTF (RTF 1.9.1, Table Definitions): the definitions of its cells without their content.
#pragma once

#include <string>

#include "rdl/writers/common/flow_row.h"
#include "rdl/writers/rtf/styles.h"

namespace rdl::writers {

// Appends the row definition.
void AppendRowDefinition(const FlowRow& row, RtfStyles& styles, std::string& out);

}  // namespace rdl::writers
