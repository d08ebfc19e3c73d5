// SPDX-License-Identifier: GPL-3.0-or-later
// Writes charts, gauges, maps and bar codes as inline SVG (SVG 2), one user unit for each point. Texts stay
// texts: they can be read, found and copied.
#pragma once

#include <map>
#include <string>

#include "rdl/layout/drawing/drawing.h"
#include "rdl/writers/html/styles.h"

namespace rdl::writers {

class HtmlDrawings {
 public:
    explicit HtmlDrawings(HtmlStyles& styles) : m_styles(styles) {}

    // Appends the drawing as an svg element. `label` is its alternative text; if it is empty, readers get the
    // drawing's own texts. Raises rdl::Error naming the item of an image that cannot be shown.
    void Append(const layout::DrawingInstance& drawing, const std::string& label, std::string& out);

 private:
    HtmlStyles& m_styles;
    std::map<std::string, std::string> m_clips;  // ids of clip paths, by their areas
    std::map<std::string, std::string> m_ids;    // of small drawings, by their content: those recur in tables
};

}  // namespace rdl::writers
