// SPDX-License-Identifier: GPL-3.0-or-later
// The error of a command line.
#pragma once

#include <stdexcept>

namespace tools {

// The arguments cannot be used. The text says why.
class UsageError : public std::runtime_error {
 public:
    using std::runtime_error::runtime_error;
};

}  // namespace tools
