// XML of any kind that holds a report's data.
#pragma once

#include <string_view>

#include "rdl/xml/element.h"

namespace rdl::data {

// Raises rdl::Error with the line; depth and size are bounded, document types refused.
xml::Document ParseXml(std::string_view bytes);

}  // namespace rdl::data
