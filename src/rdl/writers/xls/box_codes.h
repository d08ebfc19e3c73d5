// SPDX-License-Identifier: GPL-3.0-or-later
// Borders and alignment of cells as both workbook formats number them (MS-XLS, 2.5.11 BorderStyle, 2.5.132
// HorizAlign, 2.5.342 VertAlign).
#pragma once

#include "rdl/layout/model/style.h"

namespace rdl::writers {

unsigned BorderCode(const layout::Border& border);

struct AlignmentCodes {
    unsigned horizontal, vertical;
};
// A turned text's lines run down or up, so where they begin is a place from top to bottom, and the place of
// the lines side by side is one from left to right.
AlignmentCodes AlignmentOf(const layout::BoxStyle& box, layout::HAlign align);
// Returns the levels of indent, 0 to 15, for the padding at the side at which the text begins.
unsigned IndentCode(const layout::BoxStyle& box, layout::HAlign align);

}  // namespace rdl::writers
