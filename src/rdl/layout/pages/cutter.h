// SPDX-License-Identifier: GPL-3.0-or-later
// Cuts a body wider than a page into pages side by side.
#pragma once

#include <deque>

#include "rdl/layout/model/page.h"

namespace rdl::layout {

// Cuts `wide` at multiples of `width` from `left` and appends `count` pages to `pages`. Objects that cross an
// edge are clipped; links and anchors belong to the page where they begin. Clips of `wide` stand in pairs;
// only the pages that draw in one have it. `count` is at least 1.
void CutPages(const Page& wide, double left, double width, int count, std::deque<Page>& pages);

// Ends lines and filled areas at x = `right`, and removes those that begin after it. Texts and images stay.
void EndLinesAt(double right, Page& page);

}  // namespace rdl::layout
