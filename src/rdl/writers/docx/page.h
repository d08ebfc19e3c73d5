// SPDX-License-Identifier: GPL-3.0-or-later
// The properties of a section: paper, margins, columns, header and footer (ECMA-376 Part 1, 17.6).
#pragma once

#include <string>

#include "rdl/layout/model/instance.h"

namespace rdl::writers {

// The relationships of the parts that a section has at its margins.
struct DocxMargins {
    std::string header, footer, firstHeader, firstFooter;  // empty: none
};

// Returns the element w:sectPr.
std::string SectionProperties(const layout::PageSetup& page, const DocxMargins& margins);

}  // namespace rdl::writers
