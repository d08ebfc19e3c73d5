// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/model/text_parts.h"

#include <algorithm>

#include "designer/document/editing.h"
#include "designer/document/placeholder_text.h"
#include "designer/graphics/part_tree.h"
#include "designer/tables/tablix_shape.h"

namespace designer {
namespace {

struct PlacedRun {
    ElementId id;
    int paragraph, from, to;
};

QString ValueOfRun(const Document& document, ElementId run) {
    return QString::fromStdString(document.TextAt(run, "Value").value_or(""));
}

std::vector<PlacedRun> PlacedRuns(const Document& document, ElementId item) {
    std::vector<PlacedRun> runs;
    int number = 0;
    const auto paragraphs = ChildrenNamed(document, item, "Paragraphs", "Paragraph");
    for (const ElementId paragraph : paragraphs) {
        const auto own = ChildrenNamed(document, paragraph, "TextRuns", "TextRun");
        // The only run of a text is typed as it is, also an expression.
        const bool isAlone = paragraphs.size() == 1 && own.size() == 1;
        int at = 0;
        for (const ElementId run : own) {
            const QString value = ValueOfRun(document, run);
            const bool isPlaceholder = !isAlone && IsExpression(value.toStdString());
            const int length = isPlaceholder ? 1 : static_cast<int>(value.size());
            runs.push_back({run, number, at, at + length});
            at += length;
        }
        ++number;
    }
    return runs;
}

// Cuts the run at the place, if it is within, and returns whether it is cut.
bool CutAt(Document& document, ElementId item, int paragraph, int at) {
    for (const PlacedRun& run : PlacedRuns(document, item)) {
        if (run.paragraph == paragraph && run.from < at && at < run.to) {
            const QString value = ValueOfRun(document, run.id);
            const ElementId rest = Duplicate(document, run.id);
            SetText(document, run.id, "Value", value.left(at - run.from).toStdString());
            SetText(document, rest, "Value", value.mid(at - run.from).toStdString());
            return true;
        }
    }
    return false;
}

ElementId ParagraphOfRun(const Document& document, ElementId run) {
    return document.Parent(document.Parent(run));
}

}  // namespace

std::vector<ElementId> CutTextPart(Document& document, ElementId item, const TextPart& part) {
    const StepGroup group(document, "Mark text");
    CutAt(document, item, part.lastParagraph, part.to);
    CutAt(document, item, part.paragraph, part.from);
    std::vector<ElementId> ids;
    for (const PlacedRun& run : PlacedRuns(document, item)) {
        const bool isAfter = std::pair(run.paragraph, run.from) >= std::pair(part.paragraph, part.from);
        const bool isBefore = std::pair(run.paragraph, run.to) <= std::pair(part.lastParagraph, part.to);
        if (isAfter && isBefore && run.from < run.to) {
            ids.push_back(run.id);
        }
    }
    return ids;
}

std::optional<TextPart> TextPartOf(const Document& document, ElementId item,
                                   const std::vector<ElementId>& ids) {
    std::optional<TextPart> part;
    for (const PlacedRun& run : PlacedRuns(document, item)) {
        const bool isOne = std::any_of(ids.begin(), ids.end(), [&](ElementId id) {
            return id == run.id || id == ParagraphOfRun(document, run.id);
        });
        if (isOne) {
            part = part.value_or(TextPart{run.paragraph, run.from});
            part->lastParagraph = run.paragraph;
            part->to = run.to;
        }
    }
    return part;
}

std::vector<ElementId> StyledElements(const DesignModel& model) {
    std::vector<ElementId> ids = model.SelectedItems();
    if (!ids.empty()) {
        return ids;
    }
    const Document& document = model.Source();
    std::vector<ElementId> parts;
    for (const ElementId id : model.Selection()) {
        if (OwnerOfPart(document, id) == NoElement) {
            continue;
        }
        if (document.Name(id) == "TextRun") {
            const ElementId paragraph = ParagraphOfRun(document, id);
            if (std::find(ids.begin(), ids.end(), paragraph) == ids.end()) {
                ids.push_back(paragraph);
            }
        }
        parts.push_back(id);
    }
    std::erase_if(ids,
                  [&](ElementId id) { return std::find(parts.begin(), parts.end(), id) != parts.end(); });
    ids.insert(ids.end(), parts.begin(), parts.end());
    return ids;
}

}  // namespace designer
