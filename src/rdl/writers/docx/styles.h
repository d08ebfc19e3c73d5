// SPDX-License-Identifier: GPL-3.0-or-later
// The styles of one document (ECMA-376 Part 1, 17.7). Every look that paragraphs have becomes a paragraph
// style: the document stays small, and a user changes a look in one place.
#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "rdl/layout/model/style.h"

namespace rdl::writers {

// Whether the run properties also say what a run is not, which a paragraph with another look needs.
enum class Overrides { No, Yes };
// Appends font, size, weight, decoration and colour as run properties (17.3.2); null: the default style.
void AppendCharStyle(const layout::CharStyle* style, Overrides overriding, std::string& out);

class DocxStyles {
 public:
    // Returns the id of the paragraph style with these paragraph and run properties; an empty text when the
    // document has as many styles as it can have.
    std::string Paragraph(const std::string& paragraph, const std::string& run);
    // Returns the part of the styles. `language` is that of the report, or empty.
    std::string Part(const std::string& language) const;

 private:
    std::unordered_map<std::string, std::string> m_ids;  // by the properties
    std::vector<std::string> m_looks;                    // the same properties in order
};

}  // namespace rdl::writers
