// Where a report may lead its reader.
#pragma once

#include <string_view>

namespace rdl::layout {

// Web, mail, telephone, file transfer and file addresses and places relative to the document; a script or a
// local program is no place to lead to.
bool IsHarmlessLink(std::string_view uri);

}  // namespace rdl::layout
