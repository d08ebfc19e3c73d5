// SPDX-License-Identifier: GPL-3.0-or-later
// The page of a report: its paper, margins and columns (MS-RDL, Page; in 2003 and 2005 of the Report and its
// Body). Of a report with several sections that of the first.
#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>

#include "designer/document/document.h"

namespace designer {

enum PageValue {
    PageWidth,
    PageHeight,
    LeftMargin,
    RightMargin,
    TopMargin,
    BottomMargin,
    Columns,
    ColumnSpacing
};
inline constexpr std::size_t PageValues = 8;

// Texts as files have them, by PageValue: "21cm".
using PageSetup = std::array<std::string, PageValues>;

struct Paper {
    std::string_view name;
    double width = 0, height = 0;  // points, upright
};
// Returns the usual papers.
std::span<const Paper> Papers();

// What is not in the file has the value that the engine takes for it.
PageSetup PageSetupOf(const Document& document);
// Writes what differs from PageSetupOf. Edits of the step that is open.
void PutPageSetup(Document& document, const PageSetup& setup);

}  // namespace designer
