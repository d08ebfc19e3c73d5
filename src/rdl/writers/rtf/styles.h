// The fonts and colours of one RTF document, by the numbers that its text uses. They stand at the head of the
// document, so the head is written when all text is there.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "rdl/layout/model/style.h"

namespace rdl::writers {

class RtfStyles {
 public:
    RtfStyles();
    // Font, size, weight, decoration and colour as control words; null: the default.
    void AppendLetters(const layout::CharStyle* style, std::string& out);
    // 1 and on; 0, the reader's own colour, for none.
    int Color(layout::Color color);
    // Font table and colour table.
    std::string Tables() const;

 private:
    int Font(const std::string& family);

    std::map<std::string, int> m_fonts;
    std::vector<std::string> m_families;
    std::map<layout::Color, int> m_colors;
    std::vector<layout::Color> m_palette;
};

}  // namespace rdl::writers
