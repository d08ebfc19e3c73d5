// The texts of a page as a reader goes over them.
#pragma once

#include <vector>

#include "platform/rdl/layout/page.h"
#include "platform/report_view.h"

namespace rdl::screen {

// Line by line from the top, each from the left; texts that stand apart have a blank between them. A text
// that is turned is a line of its own.
std::vector<report::Letter> LettersOf(const layout::Page& page);

}  // namespace rdl::screen
