// SPDX-License-Identifier: GPL-3.0-or-later
// An element path: which elements of an XML document are rows and which parts of them are columns.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "rdl/data/common/field_type.h"

namespace rdl::data {

struct PathField {
    std::string name;  // empty: the element's text
    bool attribute = false;
    FieldType type = FieldType::Text;
};

// How an element's text encodes an embedded document.
enum class PathEncoding { None, Html, Base64 };

struct PathLevel {
    std::string element;
    bool hasList = false;
    std::vector<PathField> fields;
    PathEncoding encoding = PathEncoding::None;
};

// Parses a path. Raises rdl::Error with the position. An empty text and * give no levels: the document's
// structure decides.
std::vector<PathLevel> ParseElementPath(std::string_view text);

}  // namespace rdl::data
