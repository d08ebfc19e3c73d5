// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/rtf/row.h"

#include <algorithm>

#include "rdl/writers/rtf/text.h"

namespace rdl::writers {
namespace {

using layout::Border;
using layout::LineStyle;
using layout::VAlign;
using layout::WritingMode;

constexpr double WidestBorder = 6;     // points
constexpr double NarrowestCell = 0.5;  // a cell without any width is an error to readers
constexpr double LowestRow = 0.05;     // a height of 0 means any

const char* BorderWord(LineStyle style) {
    switch (style) {
        case LineStyle::Dotted:
            return "\\brdrdot";
        case LineStyle::Dashed:
            return "\\brdrdash";
        case LineStyle::Double:
            return "\\brdrdb";
        case LineStyle::DashDot:
            return "\\brdrdashd";
        case LineStyle::DashDotDot:
            return "\\brdrdashdd";
        case LineStyle::Groove:
            return "\\brdrengrave";
        case LineStyle::Ridge:
            return "\\brdremboss";
        case LineStyle::Inset:
        case LineStyle::WindowInset:
            return "\\brdrinset";
        case LineStyle::Outset:
            return "\\brdroutset";
        case LineStyle::None:
        case LineStyle::Solid:
            break;
    }
    return "\\brdrs";
}

void AppendBorder(const char* side, const Border& border, RtfStyles& styles, std::string& out) {
    if (!IsVisible(border)) {
        return;
    }
    double width = std::clamp(static_cast<double>(border.width), 0.1, WidestBorder);
    if (border.style == LineStyle::Double) {
        width = std::max(width / 3, 0.25);  // of one of the lines
    }
    out += side;
    out += BorderWord(border.style);
    AppendTwips("\\brdrw", width, out);
    AppendWord("\\brdrcf", styles.Color(border.color), out);
}

void AppendCell(const FlowCell& cell, double right, RtfStyles& styles, std::string& out) {
    if (cell.merge != FlowCell::Merge::None) {
        out += cell.merge == FlowCell::Merge::First ? "\\clvmgf" : "\\clvmrg";
    }
    AppendBorder("\\clbrdrt", cell.topBorder, styles, out);
    AppendBorder("\\clbrdrl", cell.leftBorder, styles, out);
    AppendBorder("\\clbrdrb", cell.bottomBorder, styles, out);
    AppendBorder("\\clbrdrr", cell.rightBorder, styles, out);
    if (cell.diagonal != FlowCell::Diagonal::None) {
        AppendBorder(cell.diagonal == FlowCell::Diagonal::Down ? "\\cldglu" : "\\cldgll", cell.diagonalBorder,
                     styles, out);
    }
    out += cell.vAlign == VAlign::Top      ? "\\clvertalt"
           : cell.vAlign == VAlign::Middle ? "\\clvertalc"
                                           : "\\clvertalb";
    if (cell.writingMode != WritingMode::Horizontal) {
        out += cell.writingMode == WritingMode::Vertical ? "\\cltxtbrl" : "\\cltxbtlr";
    }
    if (layout::IsVisible(cell.background)) {
        AppendWord("\\clcbpat", styles.Color(cell.background), out);
    }
    AppendTwips("\\clftsWidth3\\clwWidth", right - cell.left, out);
    AppendTwips("\\cellx", right, out);
}

}  // namespace

void AppendRowDefinition(const FlowRow& row, RtfStyles& styles, std::string& out) {
    const double left = row.cells.empty() ? 0 : row.cells.front().left;
    out += "\\trowd\\trgaph0";
    AppendTwips("\\trleft", left, out);
    const double height = std::max(row.height, LowestRow);
    AppendTwips("\\trrh", row.exact ? -height : height, out);
    out += row.heading ? "\\trhdr" : "";
    out += row.rightToLeft ? "\\rtlrow" : "";
    out += row.keep ? "\\trkeep" : "";
    out += "\\trpaddfl3\\trpaddl0\\trpaddfr3\\trpaddr0\\trpaddft3\\trpaddt0\\trpaddfb3\\trpaddb0";
    double reached = left;
    for (const FlowCell& cell : row.cells) {
        reached = std::max(cell.right, reached + NarrowestCell);
        AppendCell(cell, reached, styles, out);
    }
    out += '\n';
}

}  // namespace rdl::writers
