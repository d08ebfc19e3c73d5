// SPDX-License-Identifier: GPL-3.0-or-later
// Rows of a JSON document (RFC 8259), selected by a path: $.customers[*].orders[*].
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "rdl/data/common/cursor.h"

namespace rdl::data {

// Path steps: .name, ["name"], [n] (negative: from the end), [*], .* and ..name. An empty path is $. An array
// at the end of the path gives its elements; an object is a row, nested objects give columns such as
// address.city; a scalar is a row with the column value. Raises rdl::Error.
// A number in one of the columns `decimals` is a decimal number with the digits of the document; in others it
// is an integer or floating point.
std::unique_ptr<Cursor> OpenJson(std::string_view bytes, std::string_view path,
                                 const std::vector<std::string>& decimals = {});

}  // namespace rdl::data
