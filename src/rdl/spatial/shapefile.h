// SPDX-License-Identifier: GPL-3.0-or-later
// Shapefiles (ESRI Shapefile Technical Description, July 1998) and their tables of fields (dBASE III).
#pragma once

#include <string_view>

#include "rdl/spatial/geometry.h"

namespace rdl::spatial {

// Returns the shapes of the bytes of a .shp file with the fields of its .dbf file, which may be empty. A
// shape without a row has no values, a null shape an empty geometry. Heights and measures are skipped;
// multipatches are an error. Raises rdl::Error that says what is wrong with the file.
Shapes ReadShapefile(std::string_view shapes, std::string_view table, Allowance& allowance);

}  // namespace rdl::spatial
