// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/layout/pages/tags.h"

#include <algorithm>
#include <utility>

#include "rdl/layout/drawing/drawing.h"

namespace rdl::layout {
namespace {

bool IsLink(const Instance& item) {
    return !item.hyperlink.empty() || !item.bookmarkLink.empty();
}

bool IsPicture(const Instance& item) {
    return item.kind == InstanceKind::Image || item.kind == InstanceKind::Drawing;
}

bool HasText(const Instance& item) {
    return std::any_of(item.paragraphs.begin(), item.paragraphs.end(),
                       [](const ParagraphInstance& paragraph) {
                           return std::any_of(paragraph.runs.begin(), paragraph.runs.end(),
                                              [](const RunInstance& run) { return !run.text.empty(); });
                       });
}

void AddFigure(Tags& tags, const Instance& item, ItemTags& begun) {
    Element figure;
    figure.role = Role::Figure;
    figure.description = item.toolTip;
    if (figure.description.empty() && item.drawing) {
        figure.description = item.drawing->description;
    }
    if (figure.description.empty()) {
        figure.description = item.name;
    }
    begun.item = tags.Begin(figure);
}

void AddLink(Tags& tags, const Instance& item, ItemTags& begun) {
    if (IsLink(item)) {
        const Tags::Within within(tags, begun.Content());
        begun.link = tags.Begin(Role::Link);
    }
}

}  // namespace

ElementId Tags::Begin(Element element) {
    element.parent = m_current;
    return m_structure ? m_structure->Begin(element) : 0;
}

ElementId Tags::Begin(Role role) {
    Element element;
    element.role = role;
    return Begin(std::move(element));
}

void Tags::End(ElementId& element) {
    if (m_structure && element) {
        m_structure->End(element);
    }
    element = 0;
}

ItemTags BeginItem(Tags& tags, const Instance& item) {
    ItemTags begun;
    if (!tags.IsWanted()) {
        return begun;
    }
    if (IsPicture(item)) {
        AddFigure(tags, item, begun);
    } else if (HasText(item) || IsLink(item)) {
        begun.item = tags.Begin(item.documentMapLabel.empty() ? Role::Paragraph : Role::Heading);
    }
    AddLink(tags, item, begun);
    return begun;
}

ItemTags BeginCell(Tags& tags, const Element& cell, const Instance& content, bool isHeading) {
    ItemTags begun;
    begun.cell = tags.Begin(cell);
    const Tags::Within within(tags, begun.cell);
    if (IsPicture(content)) {
        AddFigure(tags, content, begun);
    } else if (content.kind == InstanceKind::Text) {
        if (isHeading || !content.documentMapLabel.empty()) {
            Element heading;
            heading.role = Role::Heading;
            heading.level = isHeading ? cell.level : 0;
            begun.item = tags.Begin(heading);
        }
    } else {
        return begun;
    }
    AddLink(tags, content, begun);
    return begun;
}

void EndItem(Tags& tags, ItemTags& item) {
    tags.End(item.link);
    tags.End(item.item);
    tags.End(item.cell);
}

}  // namespace rdl::layout
