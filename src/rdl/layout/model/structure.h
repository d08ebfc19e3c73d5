// SPDX-License-Identifier: GPL-3.0-or-later
// The logical structure of a report while its pages are laid out: which texts are paragraphs, headings or
// cells, in reading order. Objects of a page name the element that they belong to; those of element 0 are
// decoration: backgrounds, borders, page headers and footers, headings that are repeated.
#pragma once

#include <cstdint>
#include <string>

namespace rdl::layout {

using ElementId = std::uint32_t;

enum class Role : unsigned char {
    Paragraph,
    Heading,
    Table,
    TableHead,  // the leading rows of column headers
    TableBody,  // the rows below a head
    Row,
    ColumnHeader,
    RowHeader,
    Cell,
    Figure,
    Link,
    Group,     // paragraphs and lists of one item
    List,      // within a group, a cell or the body of an outer list's item
    ListItem,  // its label, then its body
    ListLabel,
    ListBody
};

struct Element {
    Role role = Role::Paragraph;
    ElementId parent = 0;  // 0: the document
    int level = 0;         // of a heading, 0 is outermost
    int columnSpan = 1, rowSpan = 1;
    bool isNumbered = false;  // of a list: its labels are numbers, else bullets
    std::string description;  // of a figure, for those who do not see it
};

// Receives the elements in reading order, before the page on which they begin.
class Structure {
 public:
    virtual ~Structure() = default;
    // Returns the number of the element, not 0. Numbers of ended elements may be used again for elements
    // that begin on later pages.
    virtual ElementId Begin(const Element& element) = 0;
    // After the pages that are laid out by now, nothing more belongs to the element.
    virtual void End(ElementId element) = 0;
};

}  // namespace rdl::layout
