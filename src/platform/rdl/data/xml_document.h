// An XML document of any kind as a flat list of elements. Prefixes are dropped: paths over report data do not
// ask for namespaces.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace rdl::data {

struct XmlNode {
    std::string name;
    std::string text;  // its own, that of its children left out
    std::vector<std::pair<std::string, std::string>> attributes;
    std::vector<std::size_t> children;  // positions in XmlDocument::nodes
    bool nil = false;                   // xsi:nil="true"
    bool IsLeaf() const { return children.empty(); }
};

struct XmlDocument {
    std::vector<XmlNode> nodes;  // the root first
    const XmlNode& Root() const { return nodes.front(); }
    // The first child of that name; null: there is none.
    const XmlNode* Child(const XmlNode& parent, std::string_view name) const;
    std::string ChildText(const XmlNode& parent, std::string_view name) const;
};

// Raises rdl::Error with line and column; depth and size are bounded, document types refused.
XmlDocument ParseXml(std::string_view bytes);

}  // namespace rdl::data
