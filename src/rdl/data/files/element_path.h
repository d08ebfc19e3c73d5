// An element path: which elements of an XML document are rows, and what of them are columns.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "rdl/data/common/field_type.h"

namespace rdl::data {

struct PathField {
    std::string name;  // empty: the element's own text
    bool attribute = false;
    FieldType type = FieldType::Text;
};

// How a whole document stands in an element's text.
enum class PathEncoding { None, Html, Base64 };

struct PathLevel {
    std::string element;
    bool hasList = false;
    std::vector<PathField> fields;
    PathEncoding encoding = PathEncoding::None;
};

// Raises rdl::Error naming the position. An empty text and * give no level: the document's own shape decides.
std::vector<PathLevel> ParseElementPath(std::string_view text);

}  // namespace rdl::data
