// The one exception of the report engine: what is wrong, and where in the report.
#pragma once

#include <stdexcept>
#include <string>

namespace rdl {

// The text is for a person: it names the element and item, never contains ' and ends without a full stop.
class Error : public std::runtime_error {
 public:
    explicit Error(const std::string& text) : std::runtime_error(text) {}
};

}  // namespace rdl
