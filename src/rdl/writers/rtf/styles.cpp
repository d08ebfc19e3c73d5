// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/rtf/styles.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "rdl/writers/common/flow_text.h"
#include "rdl/writers/rtf/text.h"

namespace rdl::writers {
namespace {

using layout::CharStyle;
using layout::Decoration;

constexpr std::size_t MostFonts = 1000, MostColors = 30000;
constexpr int SemiBold = 600;

// What separates the fonts of the table is no part of a name.
std::string FontName(const std::string& family) {
    std::string name = family;
    std::erase(name, ';');
    return name.empty() ? "Arial" : name;
}

}  // namespace

RtfStyles::RtfStyles() {
    Font(CharStyle().family);
}

int RtfStyles::Font(const std::string& family) {
    const std::string name = FontName(family);
    const auto known = m_fonts.find(name);
    if (known != m_fonts.end()) {
        return known->second;
    }
    if (m_families.size() >= MostFonts) {
        return 0;
    }
    const int number = static_cast<int>(m_families.size());
    m_families.push_back(name);
    m_fonts.emplace(name, number);
    return number;
}

int RtfStyles::Color(layout::Color color) {
    if (!layout::IsVisible(color)) {
        return 0;
    }
    const layout::Color opaque = OnPaper(color);
    const auto known = m_colors.find(opaque);
    if (known != m_colors.end()) {
        return known->second;
    }
    if (m_palette.size() >= MostColors) {
        return 0;
    }
    m_palette.push_back(opaque);
    const int number = static_cast<int>(m_palette.size());
    m_colors.emplace(opaque, number);
    return number;
}

void RtfStyles::AppendCharStyle(const CharStyle* style, bool bothDirections, std::string& out) {
    static const CharStyle Default;
    const CharStyle& textStyle = style ? *style : Default;
    const int font = Font(textStyle.family);
    const float size = std::isfinite(textStyle.size) ? std::clamp(textStyle.size, 1.0F, 1638.0F) : 10.0F;
    const auto halfPoints = static_cast<int>(std::lround(size * 2));
    const bool bold = textStyle.bold || textStyle.weight >= SemiBold;
    if (bothDirections) {
        AppendWord("\\rtlch\\af", font, out);
        AppendWord("\\afs", halfPoints, out);
        out += bold ? "\\ab" : "";
        out += textStyle.italic ? "\\ai" : "";
        out += "\\ltrch";
    }
    AppendWord("\\f", font, out);
    AppendWord("\\fs", halfPoints, out);
    out += bold ? "\\b" : "";
    out += textStyle.italic ? "\\i" : "";
    out += textStyle.decoration == Decoration::Underline     ? "\\ul"
           : textStyle.decoration == Decoration::LineThrough ? "\\strike"
                                                             : "";
    AppendWord("\\cf", Color(textStyle.color), out);
}

std::string RtfStyles::Tables() const {
    std::string tables = "{\\fonttbl";
    for (std::size_t i = 0; i < m_families.size(); ++i) {
        AppendWord("{\\f", static_cast<int>(i), tables);
        tables += "\\fnil\\fcharset0 ";
        AppendRtfName(m_families[i], tables);
        tables += ";}";
    }
    tables += "}\n{\\colortbl;";
    for (const layout::Color color : m_palette) {
        AppendWord("\\red", static_cast<int>(color >> 16 & 0xFF), tables);
        AppendWord("\\green", static_cast<int>(color >> 8 & 0xFF), tables);
        AppendWord("\\blue", static_cast<int>(color & 0xFF), tables);
        tables += ';';
    }
    return tables + "}\n";
}

}  // namespace rdl::writers
