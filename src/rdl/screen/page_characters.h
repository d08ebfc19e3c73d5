// SPDX-License-Identifier: GPL-3.0-or-later
// The characters of a page in reading order.
#pragma once

#include <vector>

#include "rdl/api/pages.h"
#include "rdl/layout/model/page.h"

namespace rdl::screen {

// Returns the characters line by line from the top, from left to right, with a blank between separate texts.
// A rotated text is a line of its own.
std::vector<PageCharacter> CharactersOf(const layout::Page& page);

}  // namespace rdl::screen
