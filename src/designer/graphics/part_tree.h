// SPDX-License-Identifier: GPL-3.0-or-later
// The parts of items that have properties of their own: of charts and gauges series, axes, legends, scales,
// pointers and so on, of text boxes paragraphs and runs (MS-RDL, Chart, GaugePanel and Paragraph).
#pragma once

#include <string>
#include <vector>

#include "designer/document/document.h"

namespace designer {

struct GraphicPart {
    ElementId id = NoElement;
    ElementId container = NoElement;  // another part, or the item
    std::string text;                 // for users: "Series Amount"
};

// Returns the parts of a Chart or GaugePanel, or of a text box with several runs, in document order, at most
// a thousand; none for any other item.
std::vector<GraphicPart> PartsOf(const Document& document, ElementId item);

// Returns the Chart, GaugePanel or text box that the element is a part of; NoElement if it is none.
ElementId OwnerOfPart(const Document& document, ElementId id);

struct ChartGroupPart {
    ElementId member = NoElement;  // the part that has it
    std::string name;              // empty if it has none
    std::string expression;        // the first one
    bool isCategory = false;       // of the categories, else of the series
    int depth = 0;                 // of groups around it
};

// Returns the groups of a Chart in document order; those within others come after them. None for any other
// item.
std::vector<ChartGroupPart> ChartGroupsOf(const Document& document, ElementId chart);

// Returns paths from a part to the elements whose properties are shown with its own: the Group of a
// ChartMember.
std::vector<std::string> PathsOfPart(const Document& document, ElementId part);

}  // namespace designer
