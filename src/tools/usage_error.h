// SPDX-License-Identifier: GPL-3.0-or-later
// The error of a command line.
#pragma once

#include <stdexcept>
#include <string>

namespace tools {

// The arguments cannot be used. The text says why.
class UsageError : public std::runtime_error {
 public:
    using std::runtime_error::runtime_error;
};

// Returns the value of an option that needs a name. Raises UsageError if it is empty.
inline const std::string& NonEmpty(const std::string& option, const std::string& value) {
    if (value.empty()) {
        throw UsageError(option + " needs a name");
    }
    return value;
}

}  // namespace tools
