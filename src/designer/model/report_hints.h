// SPDX-License-Identifier: GPL-3.0-or-later
// What a report runs with, and its author most likely did not want.
#pragma once

#include <string>
#include <vector>

#include "designer/document/document.h"

namespace designer {

// Returns a sentence for each section whose columns do not fit between the margins of its page: what is to
// their right goes to pages of its own. Then one for each item of a body that reaches over the report and the
// room of its page; it begins with the kind and name of the item, as messages of the engine do.
std::vector<std::string> HintsOf(const Document& document);

}  // namespace designer
