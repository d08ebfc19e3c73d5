// Rows out of a JSON document, told by a path: $.customers[*].orders[*].
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "rdl/data/common/cursor.h"

namespace rdl::data {

// Path steps: .name, ["name"], [n] (negative from the end), [*], .* and ..name. An empty path is $. An array
// at the path's end stands for its elements; an object is a row, its inner objects columns as address.city; a
// plain value is a row with the column value. Raises rdl::Error.
std::unique_ptr<Cursor> OpenJson(std::string_view bytes, std::string_view path);

}  // namespace rdl::data
