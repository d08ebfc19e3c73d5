// SPDX-License-Identifier: GPL-3.0-or-later
// HTML text runs: the subset of HTML that a report can show (MS-RDL, MarkupType).
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "rdl/layout/model/instance.h"

namespace rdl::layout {

// Text in one style. Attributes that no tag sets keep those of the text run.
struct MarkupRun {
    std::string text;
    bool bold = false, italic = false;
    std::optional<Decoration> decoration;
    std::optional<Color> color;
    std::string family;     // empty: that of the run
    float sizeFactor = 1;   // relative to the run's size, for headings
    std::string hyperlink;  // as written; the caller checks whether it is allowed
};

struct MarkupParagraph {
    std::vector<MarkupRun> runs;
    enum class List : std::uint8_t { None, Bulleted, Numbered } list = List::None;
    int listLevel = 0;  // 1 for the outermost list
};

// Supports b strong i em u s strike del, a href, font color and face, span; br p div h1 to h6, ul ol li;
// entities. Other tags are dropped and their text is kept, except for script, style, title and comments.
// White space collapses as in HTML. Never fails, needs no stack for nesting, and returns at least one
// paragraph.
std::vector<MarkupParagraph> ParseMarkup(std::string_view html);

// Replaces the runs marked in `isMarkup` (one entry per run) by their paragraphs. Links that are not allowed
// are dropped.
std::vector<ParagraphInstance> ExpandMarkup(const ParagraphInstance& source,
                                            const std::vector<bool>& isMarkup);

}  // namespace rdl::layout
