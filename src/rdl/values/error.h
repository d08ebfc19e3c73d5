// SPDX-License-Identifier: GPL-3.0-or-later
// The exception of the report engine: what is wrong, and where in the report.
#pragma once

#include <stdexcept>
#include <string>

namespace rdl {

// The text is for users: it names the element and the item, never contains ' and has no full stop.
class Error : public std::runtime_error {
 public:
    explicit Error(const std::string& text) : std::runtime_error(text) {}
};

}  // namespace rdl
