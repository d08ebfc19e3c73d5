// SPDX-License-Identifier: GPL-3.0-or-later
// A table row in RTF (RTF 1.9.1, Table Definitions): the definitions of its cells without their content.
#pragma once

#include <cstddef>
#include <string>

#include "rdl/writers/common/flow_row.h"
#include "rdl/writers/rtf/styles.h"

namespace rdl::writers {

// The maximum number of cells in a row; word processors reject documents with more.
inline constexpr std::size_t RtfMostCells = 63;

// Appends the row definition. Raises rdl::Error naming the item if the row has too many cells.
void AppendRowDefinition(const FlowRow& row, RtfStyles& styles, std::string& out);

}  // namespace rdl::writers
