// A body wider than a page, cut into the pages that stand side by side.
#pragma once

#include <deque>

#include "rdl/layout/model/page.h"

namespace rdl::layout {

// Cuts `wide` at multiples of `width` to the right of `left` and adds the pages to `pages`. What crosses an
// edge is cut; links and anchors go where they begin.
void CutPages(const Page& wide, double left, double width, int count, std::deque<Page>& pages);

}  // namespace rdl::layout
