// SPDX-License-Identifier: GPL-3.0-or-later
// Characters of a text box as runs of the report, so that they have properties of their own (MS-RDL,
// TextRun).
#pragma once

#include <optional>
#include <vector>

#include "designer/model/design_model.h"

namespace designer {

// Places in a paragraph count UTF-16 units; a placeholder is one.
struct TextPart {
    int paragraph = 0, from = 0;    // of its first character
    int lastParagraph = 0, to = 0;  // after its last character
    bool operator==(const TextPart&) const = default;
};

// Cuts the runs at the ends of the part and returns the runs within it; none if the text box has no runs.
// Edits of the step that is open.
std::vector<ElementId> CutTextPart(Document& document, ElementId item, const TextPart& part);

// Returns the part that the runs and paragraphs are, from the first to the last of them; nullopt if they are
// not of the text box.
std::optional<TextPart> TextPartOf(const Document& document, ElementId item,
                                   const std::vector<ElementId>& ids);

// Returns what commands on the look of the selection change: the selected items, else the selected parts of
// an item. Runs come after their paragraphs, so that alignment and lists are changed, too.
std::vector<ElementId> StyledElements(const DesignModel& model);

}  // namespace designer
