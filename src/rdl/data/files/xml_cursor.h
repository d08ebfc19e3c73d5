// Rows out of an XML document, told by an element path: Customers {}/Customer {@ID, Name(String)}/Order.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "rdl/data/common/cursor.h"

namespace rdl::data {

// The query of the providers XML and ENTERDATA: an element path, or a Query element with the path and, in
// XmlData, the data itself. `file` (machine path) is read when the query holds no data; empty: there is none.
// A level with a list in { } gives those fields, {} none, and one without a list its attributes and the
// texts of its leaf elements; levels above repeat in each row. Raises rdl::Error.
std::unique_ptr<Cursor> OpenXml(std::string_view query, const std::string& file);

// The rows of a file (machine path) that a data set takes as they are: each child of the root is a row, its
// attributes and leaf elements are the columns. Raises rdl::Error.
std::unique_ptr<Cursor> OpenXmlRows(const std::string& file);

}  // namespace rdl::data
