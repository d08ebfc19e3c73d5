// SPDX-License-Identifier: GPL-3.0-or-later
// Parses XML 1.0 with namespaces into a tree: texts (XML 1.0, sections 2.4, 2.7 and 2.11), values of
// attributes (3.3.3), references to characters (4.1 and 4.6), prefixes (Namespaces in XML 1.0, sections 3 to
// 6).
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "rdl/values/error.h"
#include "rdl/xml/element.h"

namespace rdl::xml {

// Limits on untrusted files: they bound memory and recursion.
struct Limits {
    int depth = 0;               // of nested elements
    int elements = 0;            // in total
    std::size_t attributes = 0;  // of one element, including namespace declarations
};

// An error in a file and its line, counted from 1. The text does not name the file.
class Flaw : public Error {
 public:
    Flaw(std::size_t line, const std::string& what) : Error(what), m_line(line) {}
    std::size_t Line() const { return m_line; }

 private:
    std::size_t m_line;
};

// Returns the tree of `bytes`, which need not outlive it. Raises Flaw if the text is not well-formed in a way
// that could lose or change content, or exceeds a limit. Document type declarations are refused: no entity is
// declared, so none can be expanded.
Document Parse(std::string_view bytes, const Limits& limits);

// The same for a text in UTF-8 that holds nothing but characters of XML, and marks that the caller has put
// in.
Document ParseUtf8(std::string_view text, const Limits& limits);

}  // namespace rdl::xml
