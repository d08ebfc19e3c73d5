// SPDX-License-Identifier: GPL-3.0-or-later
// Elements of XML 1.0 that are built as a tree and printed with indentation.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace designer {

struct Xml {
    std::string name;  // empty: no element; a parent leaves it out
    std::vector<std::pair<std::string, std::string>> attributes = {};
    std::string text = {};  // of an element without children
    std::vector<Xml> children = {};
};

using XmlList = std::vector<Xml>;

// An element with children; those without a name are left out.
Xml Element(std::string_view name, XmlList children = {});
// The same with the attribute Name.
Xml Named(std::string_view name, std::string_view itemName, XmlList children = {});
// An element with a text.
Xml Text(std::string_view name, std::string_view text);

// Returns the document in UTF-8: the declaration, then a line for each element, two blanks for each level.
// Characters that XML does not allow become U+FFFD.
std::string Print(const Xml& root);

}  // namespace designer
