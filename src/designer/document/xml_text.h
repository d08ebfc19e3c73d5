// SPDX-License-Identifier: GPL-3.0-or-later
// Names, references, escapes and elements of XML 1.0.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace designer {

// Returns the number of bytes of the name at the beginning of the text (production Name, section 2.3); 0 if
// there is none.
std::size_t NameLength(std::string_view text);

// Returns the text with its references resolved and its line ends as line feeds. References to other entities
// stay as they are written.
std::string Resolved(std::string_view written);
// The same for the value of an attribute, in which blanks of every kind are spaces (section 3.3.3).
std::string ResolvedValue(std::string_view written);

// Returns the text as character data that reads back as the same text. Line feeds become `lineEnd`.
// Characters that XML does not have, and bytes that are not UTF-8, are left out.
std::string EscapedText(std::string_view text, std::string_view lineEnd);
// The same for the value of an attribute within these quotes.
std::string EscapedValue(std::string_view text, char quote);

// Returns an element with this content, which is XML, or with this text.
std::string ElementXml(std::string_view name, std::string_view content);
std::string LeafOf(std::string_view name, std::string_view text);

// Returns the text with `lineEnd` in place of each line feed that no carriage return precedes; an empty one
// leaves the text as it is.
std::string WithLineEnds(std::string_view text, std::string_view lineEnd);

// Whether the text is blanks only, or nothing.
bool IsBlank(std::string_view text);

}  // namespace designer
