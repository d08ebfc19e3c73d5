// SPDX-License-Identifier: GPL-3.0-or-later
// The report items of a document and where they are on its bands, with one instance of each group: what a
// canvas shows and what can be selected on it.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "designer/document/document.h"
#include "designer/document/tablix_grid.h"

namespace designer {

enum class BandKind { PageHeader, Body, PageFooter };

// A page header, the body or a page footer of a section. Files before 2010 have one section.
struct ReportBand {
    BandKind kind = BandKind::Body;
    std::size_t section = 0;
    ElementId element = NoElement;
    double width = 0, height = 0;  // points, as written
};

struct ReportItem {
    ElementId id = NoElement;
    std::string kind;  // name of the element: "Textbox"
    std::string name;  // empty if it has none
    // The item or band that it belongs to. Of an item in a cell that is the region; `cell` is the cell's
    // element, and the item has the size of the cell.
    ElementId container = NoElement;
    ElementId cell = NoElement;
    std::size_t band = 0;  // index in ReportItems::bands
    Rect place;  // in points from the top left corner of the band; of a line it may have negative sizes
    int zIndex = 0;
    int depth = 0;  // of items around it
};

struct ReportItems {
    std::vector<ReportBand> bands;  // of each section page header, body and page footer, those that there are
    std::vector<ReportItem> items;  // in document order; those of a region by the order of its cells
};

// A place or size that is missing counts as the engine reads it: 0, or what its container leaves. A table,
// matrix or Tablix is as large as its parts.
ReportItems ReadReportItems(const Document& document);

// Returns the ReportSection elements; of a report without ReportSections, which files before 2010 are, the
// report itself. Empty if the report has none of what it should have.
std::vector<ElementId> SectionsOf(const Document& document);

// Returns the Body of the first section, or NoElement. Of files before 2010 it is that of the report.
ElementId BodyOf(const Document& document);

}  // namespace designer
