// SPDX-License-Identifier: GPL-3.0-or-later
// Rows of an XML document, selected by an element path: Customers {}/Customer {@ID, Name(String)}/Order.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "rdl/data/common/cursor.h"

namespace rdl::data {

// Opens a query of the providers XML and ENTERDATA: an element path, or a Query element with the path and, in
// XmlData, the data. Otherwise the data is in `file` (machine path, may be empty). A level with a list in { }
// gives those fields, {} none; a level without a list gives its attributes and the texts of its leaf
// elements. Outer levels repeat in each row. Raises rdl::Error.
std::unique_ptr<Cursor> OpenXml(std::string_view query, const std::string& file);

// Returns the rows of a file (machine path): each child of the root is a row; its attributes and leaf
// elements are columns. Raises rdl::Error.
std::unique_ptr<Cursor> OpenXmlRows(const std::string& file);

}  // namespace rdl::data
