// A report file as a tree of elements. Elements of other namespaces (designers keep their state in the file)
// are left out, but for the few that say something about the report.
#pragma once

#include <string>
#include <string_view>

#include "rdl/definition/parse.h"
#include "rdl/xml/element.h"

namespace rdl {

using XmlElement = xml::Element;
using xml::Trimmed;

// The root element is a Report of a known namespace. A text is empty when it is nothing but blanks that
// nobody asked to keep. Raises rdl::Error as ParseDefinition does.
xml::Document ReadXmlTree(std::string_view bytes, const std::string& fileName,
                          const DefinitionLimits& limits);

}  // namespace rdl
