// SPDX-License-Identifier: GPL-3.0-or-later
// Texts for XML 1.0 documents (Extensible Markup Language 1.0, section 2.2).
#pragma once

#include <string>
#include <string_view>

namespace rdl::writers {

// Returns the text without the characters that XML does not have. A malformed byte becomes U+FFFD.
std::string XmlText(std::string_view text);

// Appends such a text, escaped for the content of an element or a quoted attribute.
void AppendXml(std::string_view text, std::string& out);

}  // namespace rdl::writers
