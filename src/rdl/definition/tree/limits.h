// SPDX-License-Identifier: GPL-3.0-or-later
// The limits on a report file.
#pragma once

#include <cstddef>

namespace rdl {

// Limits on untrusted report files: they bound memory and recursion.
struct DefinitionLimits {
    std::size_t bytes = 64u << 20;
    std::size_t wholeBytes =
        1u << 20;     // of a file whose rows become part of the tree; else they are read apart
    int depth = 200;  // of nested elements
    int elements = 1'000'000;
    std::size_t attributes = 256;  // of one element
    int items = 200'000;           // report items, including those created for a matrix's totals
};

}  // namespace rdl
