// A chart as vector drawing: the objects of a page of the item's own size. Pages take them over; formats
// without vectors show them as a picture.
#pragma once

#include <string>

#include "rdl/layout/model/page.h"

namespace rdl::layout {

struct DrawingInstance {
    Page content;                    // its width and height are the item's
    Color background = Transparent;  // of the item's box; pages fill it themselves
    std::string description;         // for those who cannot see it: the chart's titles
};

// Puts everything of `from` onto `page`, so far from its top left corner.
void AppendMoved(const Page& from, double x, double y, Page& page);

}  // namespace rdl::layout
