// What a file is that was taken for a report.
#pragma once

#include <string>
#include <string_view>

namespace rdl {

// "is empty", "is a compound binary document, ..." and so on; empty when it may well be XML.
std::string DescribeIfNotXml(std::string_view bytes);

}  // namespace rdl
