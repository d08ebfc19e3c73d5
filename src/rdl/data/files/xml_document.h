// SPDX-License-Identifier: GPL-3.0-or-later
// XML documents with report data.
#pragma once

#include <string_view>

#include "rdl/xml/element.h"
#include "rdl/xml/parse.h"

namespace rdl::data {

// Bounds of a document that is data.
inline constexpr xml::Limits DataLimits{
    .depth = 100,
    .elements = 5'000'000,
    .attributes = 4'096,  // the columns of a row
};

// Parses a document with limits on depth and size. Raises rdl::Error with the line, also for document type
// declarations.
xml::Document ParseXml(std::string_view bytes);

}  // namespace rdl::data
