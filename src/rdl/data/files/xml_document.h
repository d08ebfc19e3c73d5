// SPDX-License-Identifier: GPL-3.0-or-later
// XML documents with report data.
#pragma once

#include <string_view>

#include "rdl/xml/element.h"

namespace rdl::data {

// Parses a document with limits on depth and size. Raises rdl::Error with the line, also for document type
// declarations.
xml::Document ParseXml(std::string_view bytes);

}  // namespace rdl::data
