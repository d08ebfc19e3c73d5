// SPDX-License-Identifier: GPL-3.0-or-later
// Names of the parts of a report that is made.
#pragma once

#include <set>
#include <string>
#include <string_view>

namespace designer {

// The names of one collection: identifiers, of which no two are equal without regard to case.
class Names {
 public:
    // Returns `wanted` with _ for each run of characters that a name cannot have, and with a number at its
    // end if the name is taken.
    std::string Add(std::string_view wanted);

 private:
    std::set<std::string> m_taken;  // in lower case
};

}  // namespace designer
