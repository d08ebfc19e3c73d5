// A report file as a tree of elements. Elements of other namespaces (designers keep their state in the file)
// are left out, but for the few that say something about the report.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/rdl/definition/parse.h"

namespace rdl {

struct XmlElement {
    std::string name;           // without prefix
    std::string nameAttribute;  // Name="..."
    std::string fileAttribute;  // File="..."
    std::string text;           // empty when it is nothing but blanks that nobody asked to keep
    std::vector<XmlElement> children;
    int line = 0;
    bool nil = false;  // xsi:nil="true"

    // The first child of that name; null when there is none.
    const XmlElement* Child(std::string_view childName) const;
    // Along a path of children: Find({"Query", "CommandText"}).
    const XmlElement* Find(std::initializer_list<std::string_view> path) const;
    // The child's text without blanks around it; empty when there is none.
    std::string ChildText(std::string_view childName) const;
};

// The root element, which is a Report of a known namespace. Raises rdl::Error as ParseDefinition does.
// Document types are refused as such: no entity is ever declared, so none can be expanded.
XmlElement ReadXmlTree(std::string_view bytes, const std::string& fileName, const DefinitionLimits& limits);

std::string_view Trimmed(std::string_view text);

}  // namespace rdl
