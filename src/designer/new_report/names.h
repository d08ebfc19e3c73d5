// SPDX-License-Identifier: GPL-3.0-or-later
// Names of the parts of a report that is made, and captions for readers.
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

// Returns the words of a column's name: "Order date" for order_date, "Customer Name" for CustomerName.
std::string CaptionOf(std::string_view column);

}  // namespace designer
