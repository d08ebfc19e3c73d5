// From the bytes of an XML file to a tree.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "rdl/values/error.h"
#include "rdl/xml/element.h"

namespace rdl::xml {

// What a file may come to at most: files come from anywhere, so memory and depth have an end.
struct Limits {
    int depth = 0;               // of nested elements
    int elements = 0;            // all in all
    std::size_t attributes = 0;  // of one element, declarations of namespaces included
};

// What is wrong with a file, and in which line, from 1. The text names no file.
class Flaw : public Error {
 public:
    Flaw(std::size_t line, const std::string& what) : Error(what), m_line(line) {}
    std::size_t Line() const { return m_line; }

 private:
    std::size_t m_line;
};

// Raises Flaw for a text that is not well-formed as far as anything of it could be lost or be taken for
// something else, and past a limit. Document types are refused as such: no entity is ever declared, so none
// can be expanded.
Document Parse(std::string_view bytes, const Limits& limits);

}  // namespace rdl::xml
