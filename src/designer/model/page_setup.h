// SPDX-License-Identifier: GPL-3.0-or-later
// The pages of a report: paper, margins and columns of each section (MS-RDL, Page; in 2003 and 2005 of the
// Report and its Body). Sections are numbered from 0; a report before 2010 is one.
#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>

#include "designer/document/document.h"
#include "designer/model/design_model.h"

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
inline constexpr int MostPageColumns = 1000;  // that the engine takes

// Texts as files have them, by PageValue: "21cm".
using PageSetup = std::array<std::string, PageValues>;

struct Paper {
    std::string_view name;
    double width = 0, height = 0;  // points, upright
};
// Returns the usual papers.
std::span<const Paper> Papers();

// What is not in the file has the value that the engine takes for it; of a section that has neither body nor
// page, that of a new report.
PageSetup PageSetupOf(const Document& document, std::size_t section);
// The same of the element of a section; NoElement: of one that is missing.
PageSetup PageSetupIn(const Document& document, ElementId section);
// Writes what differs from PageSetupOf, and what else the section must have. Edits of the step that is open.
void PutPageSetup(Document& document, std::size_t section, const PageSetup& setup);

// Returns how wide a body may be, in points, so that its page needs no further ones at its right. Not above 0
// if the margins leave nothing.
double WidestBodyOf(const PageSetup& setup);

// Makes what the section must have by its schema and lacks: itself, Body, Width and Page. Returns the
// element of the section. Edits of the step that is open.
ElementId CompleteSection(Document& document, std::size_t section);

// Returns the section of the leader of the selection, the first one without a selection.
std::size_t SectionOfSelection(const DesignModel& model);

}  // namespace designer
