// Texts marked up with HTML tags, as a text run may hold them: what of HTML a report can show.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "rdl/layout/model/instance.h"

namespace rdl::layout {

// A stretch of text in one style. What a tag does not say stays as the text run has it.
struct MarkupRun {
    std::string text;
    bool bold = false, italic = false;
    std::optional<Decoration> decoration;
    std::optional<Color> color;
    std::string family;     // empty: the run's
    float sizeFactor = 1;   // headings, against the run's size
    std::string hyperlink;  // as written; the caller decides whether it may lead there
};

struct MarkupParagraph {
    std::vector<MarkupRun> runs;
    enum class List : std::uint8_t { None, Bulleted, Numbered } list = List::None;
    int listLevel = 0;  // 1 for the outermost list
};

// b strong i em u s strike del, a href, font color and face, span; br p div h1 to h6, ul ol li; entities.
// Other tags are left out and their text kept, but for script, style, title and comments. Blanks run together
// as in HTML. Whatever the text is, this ends and raises nothing; depth counts for nothing here. At least one
// paragraph.
std::vector<MarkupParagraph> ParseMarkup(std::string_view html);

// `source` with the runs that `isMarkup` tells (one entry for each) read as HTML: a paragraph for each of
// theirs. Links that may not be followed are left out.
std::vector<ParagraphInstance> ExpandMarkup(const ParagraphInstance& source,
                                            const std::vector<bool>& isMarkup);

}  // namespace rdl::layout
