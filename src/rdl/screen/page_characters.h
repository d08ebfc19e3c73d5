// The texts of a page as a reader goes over them.
#pragma once

#include <vector>

#include "rdl/api/pages.h"
#include "rdl/layout/model/page.h"

namespace rdl::screen {

// Line by line from the top, each from the left; texts that stand apart have a blank between them. A text
// that is turned is a line of its own.
std::vector<PageCharacter> CharactersOf(const layout::Page& page);

}  // namespace rdl::screen
