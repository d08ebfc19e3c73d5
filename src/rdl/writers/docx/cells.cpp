// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/docx/cells.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "rdl/writers/docx/text.h"

namespace rdl::writers {
namespace {

using layout::Border;
using layout::LineStyle;
using layout::VAlign;
using layout::WritingMode;

constexpr double Farthest = 1e6;     // points
constexpr int NarrowestColumn = 10;  // twips: a column without any width is an error to readers
constexpr double LowestRow = 0.05;   // points: a height of 0 means any
constexpr double NarrowestBorder = 0.25, WidestBorder = 12;  // points

const char* BorderName(LineStyle style) {
    switch (style) {
        case LineStyle::Dotted:
            return "dotted";
        case LineStyle::Dashed:
            return "dashed";
        case LineStyle::Double:
            return "double";
        case LineStyle::DashDot:
            return "dotDash";
        case LineStyle::DashDotDot:
            return "dotDotDash";
        case LineStyle::Groove:
            return "threeDEngrave";
        case LineStyle::Ridge:
            return "threeDEmboss";
        case LineStyle::Inset:
        case LineStyle::WindowInset:
            return "inset";
        case LineStyle::Outset:
            return "outset";
        case LineStyle::None:
        case LineStyle::Solid:
            break;
    }
    return "single";
}

// The width is in eighths of a point; that of a double border is of one of its lines.
void AppendBorder(const char* side, const Border& border, std::string& out) {
    if (!IsVisible(border)) {
        return;
    }
    const double width = static_cast<double>(border.width) / (border.style == LineStyle::Double ? 3 : 1);
    const double bounded = std::isfinite(width) ? std::clamp(width, NarrowestBorder, WidestBorder) : 1;
    out += std::string("<w:") + side + " w:val=\"" + BorderName(border.style) + "\"";
    AppendAttribute("w:sz", static_cast<int>(std::lround(bounded * 8)), out);
    out += " w:space=\"0\" w:color=\"" + DocxColor(border.color) + "\"/>";
}

void AppendBorders(const FlowCell& cell, std::string& out) {
    std::string borders;
    AppendBorder("top", cell.topBorder, borders);
    AppendBorder("left", cell.leftBorder, borders);
    AppendBorder("bottom", cell.bottomBorder, borders);
    AppendBorder("right", cell.rightBorder, borders);
    if (cell.diagonal != FlowCell::Diagonal::None) {
        AppendBorder(cell.diagonal == FlowCell::Diagonal::Down ? "tl2br" : "tr2bl", cell.diagonalBorder,
                     borders);
    }
    out += borders.empty() ? "" : "<w:tcBorders>" + borders + "</w:tcBorders>";
}

int EdgeOf(double line) {
    return static_cast<int>(
        std::lround((std::isfinite(line) ? std::clamp(line, -Farthest, Farthest) : 0.0) * 20));
}

}  // namespace

DocxColumns::DocxColumns(const std::vector<double>& lines) {
    for (const double line : lines) {
        const int least = m_edges.empty() ? EdgeOf(line) : m_edges.back() + NarrowestColumn;
        m_edges.push_back(std::max(EdgeOf(line), least));
    }
}

void DocxColumns::AppendTable(bool rightToLeft, std::string& out) const {
    out += "<w:tbl><w:tblPr>";
    out += rightToLeft ? "<w:bidiVisual/>" : "";
    out += "<w:tblW w:w=\"" + std::to_string(m_edges.back() - m_edges.front()) +
           "\" w:type=\"dxa\"/><w:tblInd w:w=\"" + std::to_string(m_edges.front()) +
           "\" w:type=\"dxa\"/><w:tblLayout w:type=\"fixed\"/><w:tblCellMar>";
    for (const char* side : {"top", "left", "bottom", "right"}) {
        out += std::string("<w:") + side + " w:w=\"0\" w:type=\"dxa\"/>";
    }
    out += "</w:tblCellMar></w:tblPr><w:tblGrid>";
    for (std::size_t i = 1; i < m_edges.size(); ++i) {
        out += "<w:gridCol w:w=\"" + std::to_string(m_edges[i] - m_edges[i - 1]) + "\"/>";
    }
    out += "</w:tblGrid>\n";
}

void AppendRowProperties(const FlowRow& row, std::string& out) {
    out += "<w:trPr>";
    out += row.keep ? "<w:cantSplit/>" : "";
    out += "<w:trHeight";
    AppendTwipsAttribute("w:val", std::max(row.height, LowestRow), out);
    out += row.exact ? " w:hRule=\"exact\"/>" : " w:hRule=\"atLeast\"/>";
    out += row.heading ? "<w:tblHeader/></w:trPr>" : "</w:trPr>";
}

void AppendCellProperties(const FlowCell& cell, const DocxColumns& columns, std::string& out) {
    out += "<w:tcPr><w:tcW w:w=\"" + std::to_string(columns.Width(cell)) + "\" w:type=\"dxa\"/>";
    if (const std::size_t span = cell.endColumn - cell.firstColumn; span > 1) {
        out += "<w:gridSpan w:val=\"" + std::to_string(span) + "\"/>";
    }
    if (cell.merge != FlowCell::Merge::None) {
        out += cell.merge == FlowCell::Merge::First ? "<w:vMerge w:val=\"restart\"/>" : "<w:vMerge/>";
    }
    AppendBorders(cell, out);
    if (layout::IsVisible(cell.background)) {
        out += "<w:shd w:val=\"clear\" w:color=\"auto\" w:fill=\"" + DocxColor(cell.background) + "\"/>";
    }
    if (cell.writingMode != WritingMode::Horizontal) {
        out += cell.writingMode == WritingMode::Vertical ? "<w:textDirection w:val=\"tbRl\"/>"
                                                         : "<w:textDirection w:val=\"btLr\"/>";
    }
    if (cell.vAlign != VAlign::Top) {
        out +=
            cell.vAlign == VAlign::Middle ? "<w:vAlign w:val=\"center\"/>" : "<w:vAlign w:val=\"bottom\"/>";
    }
    out += "</w:tcPr>";
}

}  // namespace rdl::writers
