// A text with places: "{0:N2} of {1,8}".
#pragma once

#include <string_view>

#include "rdl/format/format.h"

namespace rdl::expr {

// {index[,width][:format]}; {{ and }} stand for the marks. An error where a place names no value.
Value FormatComposite(std::string_view pattern, const ValueList& values, const Culture& culture);

}  // namespace rdl::expr
