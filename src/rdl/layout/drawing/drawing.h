// SPDX-License-Identifier: GPL-3.0-or-later
// A chart, gauge or map as a vector drawing: the objects of a page of the item's size. Pages include them;
// formats without vectors show them as an image.
#pragma once

#include <string>
#include <vector>

#include "rdl/layout/model/page.h"
#include "rdl/values/value.h"

namespace rdl::layout {

// The values that a chart or map shows.
struct DrawingData {
    std::vector<std::string> columns;
    std::vector<std::vector<Value>> rows;  // as long as the columns
};

struct DrawingInstance {
    Page content;                    // has the item's width and height
    Color background = Transparent;  // of the item's box; drawn by the page
    std::string description;         // alternative text: the titles
    DrawingData data;                // of a chart or map that is asked for its data; else empty
};

// Appends the objects of `from` to `page`, moved by (x, y) points.
void AppendMoved(const Page& from, double x, double y, Page& page);

}  // namespace rdl::layout
