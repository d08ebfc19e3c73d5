// SPDX-License-Identifier: GPL-3.0-or-later
// An XML document as a tree of elements. Texts are views into storage owned by the document: a tree of a
// million elements costs little more than its source.
#pragma once

#include <initializer_list>
#include <list>
#include <string>
#include <string_view>
#include <vector>

namespace rdl::xml {

// Indexes into Document::spaces.
inline constexpr int NoSpace = 0;
inline constexpr int XmlSpace = 1;  // the namespace of the prefix xml

struct Attribute {
    std::string_view name;  // without prefix
    std::string_view value;
    int space = NoSpace;  // index of its namespace; the default namespace does not apply to attributes
};

struct Element {
    std::string_view name;              // without prefix
    std::string_view text;              // its own character data, without that of its children
    std::vector<Attribute> attributes;  // without namespace declarations
    std::vector<Element> children;
    int line = 0;
    int space = NoSpace;

    // Returns the value of the attribute without prefix; empty if there is none.
    std::string_view AttributeOf(std::string_view attribute) const;
    // xsi:nil="true"
    bool IsNil() const;
    bool IsLeaf() const { return children.empty(); }
    // Returns the first child named `childName`, or null. The element owns it.
    const Element* Child(std::string_view childName) const;
    // Follows a path of child names, Find({"Query", "CommandText"}). Returns null if a step is missing.
    const Element* Find(std::initializer_list<std::string_view> path) const;
    // Returns the child's text without surrounding white space; empty if there is no such child.
    std::string ChildText(std::string_view childName) const;
};

// Movable only: in a copy the views would still refer to the original.
struct Document {
    Document() = default;
    Document(Document&&) = default;
    Document& operator=(Document&&) = default;
    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;

    Element root;
    std::vector<std::string_view> spaces;  // namespace URIs
    std::list<std::string> texts;          // storage that the views refer to

    // Takes over the storage of `other` and returns its root, which may then become part of this tree.
    Element Adopt(Document&& other);
};

}  // namespace rdl::xml
