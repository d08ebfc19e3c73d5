// SPDX-License-Identifier: GPL-3.0-or-later
// The text of a text box with its paragraphs and runs, as it is typed (MS-RDL, Paragraph and TextRun).
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "designer/document/document.h"

namespace designer {

struct RichRun {
    std::string text = {};         // an expression begins with =
    int paragraph = -1, run = -1;  // the run of the report whose other properties it has; -1: none
    bool isBold = false, isItalic = false, isUnderlined = false;
    bool operator==(const RichRun&) const = default;
};

struct RichParagraph {
    int like = -1;  // the number of the paragraph of the report that it is, or is a copy of
    std::vector<RichRun> runs = {};
    bool operator==(const RichParagraph&) const = default;
};

using RichText = std::vector<RichParagraph>;

// Returns nullopt for an item that is no text box, and in the schemas of 2003 and 2005, whose texts have no
// runs.
std::optional<RichText> RichTextOf(const Document& document, ElementId item);

// Writes the text as one step. Paragraphs and runs that are as they were stay byte for byte.
void PutRichText(Document& document, ElementId item, const RichText& text);

}  // namespace designer
