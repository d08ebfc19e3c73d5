// SPDX-License-Identifier: GPL-3.0-or-later
// Recognizes files that are not reports.
#pragma once

#include <string>
#include <string_view>

namespace rdl {

// Returns "is empty", "is a compound binary document, ..." and so on; empty if the bytes may be XML.
std::string DescribeIfNotXml(std::string_view bytes);

}  // namespace rdl
