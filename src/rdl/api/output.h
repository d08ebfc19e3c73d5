// Where a document goes.
#pragma once

#include <cstddef>
#include <string_view>

namespace rdl {

class Output {
 public:
    virtual ~Output() = default;
    // Takes the next bytes of the document. Raises an error of its own when it cannot; the run ends with
    // that.
    virtual void Write(const char* data, std::size_t size) = 0;
    void Write(std::string_view text) { Write(text.data(), text.size()); }
};

}  // namespace rdl
