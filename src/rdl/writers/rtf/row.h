// SPDX-License-Identifier: GPL-3.0-or-later
// A table row in RTF (RTF 1.9.1, Table Definitions): the definitions of its cells without their content.
// Lengths are points.
#pragma once

#include <string>
#include <vector>

#include "rdl/layout/model/instance.h"
#include "rdl/writers/rtf/styles.h"

namespace rdl::writers {

// The maximum number of cells in a row; word processors reject documents with more.
inline constexpr std::size_t RtfMostCells = 63;

struct RtfCell {
    double left = 0, right = 0;  // points
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

    void Take(const layout::BoxStyle& box);  // copies borders, background and directions
};

struct RtfRow {
    std::string item;  // name of its item, or of the first item in it, for errors
    double height = 0;
    bool exact = false;     // fixed height
    bool heading = false;   // repeats at the top of each page
    bool keep = true;       // do not split over pages
    bool keepNext = false;  // keep on one page with the next row
    bool rightToLeft = false;
    std::vector<RtfCell> cells;  // adjacent, from left to right
};

// Appends the row definition. Raises rdl::Error naming the item if the row has too many cells.
void AppendRowDefinition(const RtfRow& row, RtfStyles& styles, std::string& out);

}  // namespace rdl::writers
