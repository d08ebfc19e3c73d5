// SPDX-License-Identifier: GPL-3.0-or-later
// How a text box looks on the page, for the editor in which its text is typed. What an expression decides has
// its default.
#pragma once

#include <QColor>
#include <QFont>
#include <QMarginsF>
#include <Qt>
#include <vector>

#include "designer/document/document.h"

namespace designer {

// The font has its size on paper; the editor makes it bold, italic or underlined.
struct RunLook {
    QFont font;
    QColor colour;
};

struct TextLook {
    QColor paper = Qt::white;  // under the text: of the text box, or of what it is in
    QMarginsF padding;         // points
    Qt::AlignmentFlag vertical = Qt::AlignTop;
    std::vector<Qt::AlignmentFlag> paragraphs = {};  // across
    std::vector<std::vector<RunLook>> runs = {};     // by paragraphs; at least one
};

TextLook TextLookOf(const Document& document, ElementId box);

// Return the look of a run or a paragraph, counted from 0; for an index past the end, that of the first.
const RunLook& LookOfRun(const TextLook& look, int paragraph, int run);
Qt::AlignmentFlag AlignmentOfParagraph(const TextLook& look, int paragraph);

}  // namespace designer
