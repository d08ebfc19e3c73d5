// SPDX-License-Identifier: GPL-3.0-or-later
// Fields of text files (RFC 4180).
#pragma once

#include <string>
#include <string_view>

#include "rdl/values/value.h"

namespace rdl::writers {

// Appends a field, in quotation marks if it needs them. A text that begins with =, +, - or @ stays as it is:
// a file of values holds no formulas, and whoever reads it gets the value that the report has.
void AppendField(std::string& line, std::string_view text);

// Returns a value as programs read it: numbers with a point and without grouping, dates and times by
// ISO 8601 (a midnight as the date alone), true or false, bytes in base64, nothing for Null.
std::string PlainText(const Value& value);

}  // namespace rdl::writers
