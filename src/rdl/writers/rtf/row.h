// A row of a table as RTF defines it: everything about its cells but what is in them.
#pragma once

#include <string>
#include <vector>

#include "rdl/layout/model/instance.h"
#include "rdl/writers/rtf/styles.h"

namespace rdl::writers {

// The most cells that a row may have; a word processor calls a document with more damaged.
inline constexpr std::size_t RtfMostCells = 63;

struct RtfCell {
    double left = 0, right = 0;                                       // points
    enum class Merge { None, First, Continued } merge = Merge::None;  // with the row below, above
    layout::Border leftBorder, topBorder, rightBorder, bottomBorder;
    enum class Diagonal { None, Down, Up } diagonal = Diagonal::None;
    layout::Border diagonalBorder;
    layout::Color background = layout::Transparent;
    layout::VAlign vAlign = layout::VAlign::Top;
    layout::WritingMode writingMode = layout::WritingMode::Horizontal;
    std::vector<const layout::Instance*> content;  // one below the other; none where it is continued

    void Take(const layout::BoxStyle& box);  // its borders, background and directions
};

struct RtfRow {
    std::string item;  // that it is a row of, or the first in it: for errors
    double height = 0;
    bool exact = false;     // no higher whatever is in it
    bool heading = false;   // stands again at the top of each page
    bool keep = true;       // not over two pages
    bool keepNext = false;  // on one page with the row behind
    bool rightToLeft = false;
    std::vector<RtfCell> cells;  // side by side without gaps
};

// Raises rdl::Error when it has too many cells.
void AppendRowDefinition(const RtfRow& row, RtfStyles& styles, std::string& out);

}  // namespace rdl::writers
