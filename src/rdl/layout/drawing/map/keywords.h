// SPDX-License-Identifier: GPL-3.0-or-later
// Keywords in the texts of a map: fields of shapes (#NAME) and the ends of a bucket (#FROMVALUE{N0}).
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "rdl/format/format.h"

namespace rdl::layout {

// Sets the value of a keyword, which is without # and in its own spelling; returns false if there is none.
using MapKeyword = std::function<bool(std::string_view word, Value& value)>;

// Returns the text with each known keyword replaced by its value; a format in braces may follow, after
// blanks. The longest name that is known counts. Other text stays as it is.
std::string WithMapKeywords(const std::string& text, const MapKeyword& find, const Culture& culture);

}  // namespace rdl::layout
