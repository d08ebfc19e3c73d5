// SPDX-License-Identifier: GPL-3.0-or-later
// From marked-up texts to paragraphs as they are drawn.
#include <algorithm>

#include "rdl/layout/model/links.h"
#include "rdl/layout/model/markup.h"

namespace rdl::layout {
namespace {

CharStylePtr StyleOf(const MarkupRun& markup, const CharStylePtr& base) {
    auto style = base ? std::make_shared<CharStyle>(*base) : std::make_shared<CharStyle>();
    if (markup.bold) {
        style->bold = true;
        style->weight = std::max(style->weight, 700);
    }
    style->italic = style->italic || markup.italic;
    style->decoration = markup.decoration.value_or(style->decoration);
    style->color = markup.color.value_or(style->color);
    style->size *= markup.sizeFactor;
    if (!markup.family.empty()) {
        style->family = markup.family.substr(0, 200);
    }
    return style;
}

void TakeList(const MarkupParagraph& markup, ParagraphInstance& paragraph) {
    if (markup.list != MarkupParagraph::List::None) {
        paragraph.bulleted = markup.list == MarkupParagraph::List::Bulleted;
        paragraph.listNumber = paragraph.bulleted ? 0 : 1;
        paragraph.listLevel = markup.listLevel;
    }
}

}  // namespace

std::vector<ParagraphInstance> ExpandMarkup(const ParagraphInstance& source,
                                            const std::vector<bool>& isMarkup) {
    ParagraphInstance bare = source;
    bare.runs.clear();
    std::vector<ParagraphInstance> paragraphs{bare};
    const auto endParagraph = [&](const RunInstance& run) {
        if (paragraphs.back().runs.empty()) {
            paragraphs.back().runs.push_back({{}, run.style, {}});  // an empty line is as high as its font
        }
    };
    for (std::size_t i = 0; i < source.runs.size(); ++i) {
        const RunInstance& run = source.runs[i];
        if (!isMarkup[i]) {
            paragraphs.back().runs.push_back(run);
            continue;
        }
        bool isFirst = true;
        for (const MarkupParagraph& markup : ParseMarkup(run.text)) {
            if (!isFirst) {
                endParagraph(run);
                paragraphs.push_back(bare);
            }
            isFirst = false;
            TakeList(markup, paragraphs.back());
            for (const MarkupRun& piece : markup.runs) {
                const bool leads = !piece.hyperlink.empty() && IsHarmlessLink(piece.hyperlink);
                paragraphs.back().runs.push_back(
                    {piece.text, StyleOf(piece, run.style), leads ? piece.hyperlink : run.hyperlink});
            }
        }
        endParagraph(run);
    }
    return paragraphs;
}

}  // namespace rdl::layout
