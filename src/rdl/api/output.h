// SPDX-License-Identifier: GPL-3.0-or-later
// The destination of a document.
#pragma once

#include <cstddef>
#include <string_view>

namespace rdl {

class Output {
 public:
    virtual ~Output() = default;
    // Receives the next `size` bytes of the document. May raise an error of its own; it ends the run and
    // reaches the caller unchanged.
    virtual void Write(const char* data, std::size_t size) = 0;
    void Write(std::string_view text) { Write(text.data(), text.size()); }
};

}  // namespace rdl
