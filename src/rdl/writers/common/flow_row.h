// SPDX-License-Identifier: GPL-3.0-or-later
// A row of a table in a text document, without the look of its content. Lengths are points.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "rdl/layout/model/instance.h"

namespace rdl::writers {

// The most cells of a row; word processors reject documents with more.
inline constexpr std::size_t FlowMostCells = 63;

struct FlowCell {
    double left = 0, right = 0;                  // points
    std::size_t firstColumn = 0, endColumn = 0;  // of the table
    enum class Merge {
        None,
        First,
        Continued
    } merge = Merge::None;  // vertical merge with the row below or above
    layout::Border leftBorder, topBorder, rightBorder, bottomBorder;
    enum class Diagonal { None, Down, Up } diagonal = Diagonal::None;
    layout::Border diagonalBorder;
    layout::Color background = layout::Transparent;
    layout::VAlign vAlign = layout::VAlign::Top;
    layout::WritingMode writingMode = layout::WritingMode::Horizontal;
    std::vector<const layout::Instance*> content;  // from top to bottom; empty in a continued cell
    std::vector<const layout::Instance*> marks;    // open rectangles that begin here, and lines

    void Take(const layout::BoxStyle& box);  // copies borders, background and directions
};

struct FlowRow {
    std::string item;  // name of its item, or of the first item in it, for errors
    double height = 0;
    bool exact = false;     // fixed height
    bool heading = false;   // repeats at the top of each page
    bool keep = true;       // do not split over pages
    bool keepNext = false;  // keep on one page with the next row
    bool rightToLeft = false;
    std::vector<FlowCell> cells;  // adjacent, from left to right
};

}  // namespace rdl::writers
