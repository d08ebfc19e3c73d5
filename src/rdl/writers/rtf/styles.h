// SPDX-License-Identifier: GPL-3.0-or-later
// The font table and colour table of one RTF document (RTF 1.9.1, Font Table, Color Table). They precede the
// text that uses them, so the header is written last.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "rdl/layout/model/style.h"

namespace rdl::writers {

class RtfStyles {
 public:
    RtfStyles();
    // Appends font, size, weight, decoration and colour as control words; null: the default style.
    // `bothDirections`: also the font, size and weight of texts that run from right to left, which word
    // processors keep separately.
    void AppendCharStyle(const layout::CharStyle* style, bool bothDirections, std::string& out);
    // Returns an index from 1, or 0, the reader's default colour, for a transparent colour.
    int Color(layout::Color color);
    // Returns font table and colour table.
    std::string Tables() const;

 private:
    int Font(const std::string& family);

    std::map<std::string, int> m_fonts;
    std::vector<std::string> m_families;
    std::map<layout::Color, int> m_colors;
    std::vector<layout::Color> m_palette;
};

}  // namespace rdl::writers
