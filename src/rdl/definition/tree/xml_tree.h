// SPDX-License-Identifier: GPL-3.0-or-later
// A report file as a tree of elements. Elements of foreign namespaces (designers store their state in the
// file) are dropped, except the few that affect the report and the rows that a data set holds.
#pragma once

#include <string>
#include <string_view>

#include "rdl/definition/tree/limits.h"
#include "rdl/xml/element.h"

namespace rdl {

using XmlElement = xml::Element;

// Raises rdl::Error if the bytes, or the first ones of a long file, are something other than XML.
void CheckIsXml(std::string_view bytes, const std::string& fileName);

// Checks the root of a tree and drops what ReadXmlTree drops. Raises rdl::Error.
void KeepReport(xml::Document& document, const std::string& fileName);

// Empties texts of nothing but white space in elements that are rows, unless xml:space keeps them.
void DropBlanks(XmlElement& root);

// Whether the element of a value says that the value is Null: xsi:nil, with its prefix or without.
bool IsNull(const XmlElement& value);

// Checks that the root is a Report of a known namespace. White-space-only text becomes empty unless xml:space
// keeps it. Raises rdl::Error as ParseDefinition does.
xml::Document ReadXmlTree(std::string_view bytes, const std::string& fileName,
                          const DefinitionLimits& limits);

}  // namespace rdl
