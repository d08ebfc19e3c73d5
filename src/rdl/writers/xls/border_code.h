// SPDX-License-Identifier: GPL-3.0-or-later
// Line styles of borders as both workbook formats number them.
#pragma once

#include "rdl/layout/model/style.h"

namespace rdl::writers {

unsigned BorderCode(const layout::Border& border);

}  // namespace rdl::writers
