// Texts, numbers and bytes as HTML and CSS take them. Each appends to `out`.
#pragma once

#include <string>
#include <string_view>

namespace rdl::writers {

// For element content and attribute values alike; characters that HTML does not know are left out.
void AppendHtml(std::string_view text, std::string& out);
// A length in points, as short as two decimals allow: 12.5pt.
void AppendPoints(double points, std::string& out);
void AppendBase64(std::string_view bytes, std::string& out);

}  // namespace rdl::writers
