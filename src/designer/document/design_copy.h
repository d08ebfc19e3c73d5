// SPDX-License-Identifier: GPL-3.0-or-later
// The report that the engine lays out to show a design. It has the items of the document at their places,
// with placeholders for values; no data but rows of its own, one instance of each group; nothing hidden,
// broken over pages or grown. So what a canvas shows is drawn by the engine itself, and lies where
// ReadReportItems says.
#pragma once

#include <cstddef>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "designer/document/document.h"
#include "designer/document/report_items.h"

namespace designer {

struct DesignOptions {
    std::filesystem::path folder;    // of the report, for pictures in files; empty: they are shown as boxes
    std::set<ElementId> boxes;       // items that are shown as plain boxes, as the engine refuses them
    std::set<std::string> pictures;  // embedded pictures that the engine refuses: images of them are boxes
};

// Where a band of the document is in the copy.
struct DesignBand {
    int page = 1;  // of rdl::Pages
    Rect place;    // points from the page's top left corner
};

struct DesignCopy {
    std::string text;               // of the report file, in UTF-8
    std::vector<DesignBand> bands;  // those of ReadReportItems, in its order
};

// A section is a page without margins: page header, body and page footer below each other, each as large as
// its items need. Its text may still be one that the engine refuses: an invalid enumeration or size stays
// as it is.
DesignCopy MakeDesignCopy(const Document& document, const DesignOptions& options = {});

// Returns the item that a message of the engine names as Textbox Total or as Image "Logo", or NoElement.
ElementId ItemNamedIn(const Document& document, const std::string& message);
// Returns the name of the embedded picture that a message of the engine names, or an empty text.
std::string PictureNamedIn(const Document& document, const std::string& message);

}  // namespace designer
