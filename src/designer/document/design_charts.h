// SPDX-License-Identifier: GPL-3.0-or-later
// Charts, gauges and bar codes of a design copy: as they are, with sample data.
#pragma once

#include "designer/document/design_writer.h"

namespace designer {

// Each writes the inside of the item without its place, size and style.
void WriteChart(DesignWriter& writer, int element);
void WriteGaugePanel(DesignWriter& writer, int element);

// Whether the item has the value of a bar code.
bool IsBarcode(const DesignWriter& writer, int element);
void WriteBarcode(DesignWriter& writer, int element);

// Writes the data set that the charts show.
void WriteChartRows(DesignWriter& writer);

}  // namespace designer
