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

bool IsListed(const ParagraphInstance& paragraph) {
    return (paragraph.bulleted || paragraph.listNumber > 0) && !paragraph.runs.empty();
}

bool HasList(const Instance& item) {
    return std::any_of(item.paragraphs.begin(), item.paragraphs.end(), IsListed);
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

// Ends the lists that are deeper than `level`.
void Tags::CloseLists(Lists& lists, int level) {
    for (; !lists.open.empty() && lists.open.back().level > level; lists.open.pop_back()) {
        OpenList& open = lists.open.back();
        End(open.body);
        End(open.item);
        End(open.list);
    }
}

void Tags::EndLists(ElementId element) {
    const auto found = m_lists.find(element);
    if (found != m_lists.end()) {
        End(found->second.plain);
        End(found->second.label);
        CloseLists(found->second, 0);
        m_lists.erase(found);
    }
}

void Tags::Move(Lists& lists, const ParagraphInstance& paragraph) {
    const bool isNumbered = !paragraph.bulleted;
    const int level = IsListed(paragraph) ? std::max(paragraph.listLevel, 1) : 0;
    End(lists.plain);
    End(lists.label);
    CloseLists(lists, level);
    if (level == 0) {
        lists.plain = Begin(Role::Paragraph);
        return;
    }
    if (!lists.open.empty() && lists.open.back().level == level &&
        lists.open.back().isNumbered != isNumbered) {
        CloseLists(lists, level - 1);
    }
    if (lists.open.empty() || lists.open.back().level < level) {
        const Within within(*this, lists.open.empty() ? m_current : lists.open.back().body);
        Element list;
        list.role = Role::List;
        list.isNumbered = isNumbered;
        lists.open.push_back({level, isNumbered, Begin(list), 0, 0});
    }
    OpenList& open = lists.open.back();
    End(open.body);
    End(open.item);
    const Within list(*this, open.list);
    open.item = Begin(Role::ListItem);
    const Within item(*this, open.item);
    lists.label = Begin(Role::ListLabel);
    open.body = Begin(Role::ListBody);
}

Tags::ParagraphTags Tags::OfParagraph(std::size_t index, const ParagraphInstance& paragraph) {
    const auto found = m_lists.find(m_current);
    if (found == m_lists.end()) {
        return {m_current, m_current};
    }
    Lists& lists = found->second;
    if (std::exchange(lists.paragraph, index) != index) {
        Move(lists, paragraph);
    }
    return lists.plain ? ParagraphTags{lists.plain, lists.plain}
                       : ParagraphTags{lists.label, lists.open.back().body};
}

ItemTags BeginItem(Tags& tags, const Instance& item) {
    ItemTags begun;
    if (!tags.IsWanted()) {
        return begun;
    }
    if (IsPicture(item)) {
        AddFigure(tags, item, begun);
    } else if (HasList(item) && item.documentMapLabel.empty() && !IsLink(item)) {
        begun.item = tags.Begin(Role::Group);
        tags.BeginLists(begun.item);
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
        } else if (HasList(content) && !IsLink(content) && begun.cell) {
            tags.BeginLists(begun.cell);
        }
    } else {
        return begun;
    }
    AddLink(tags, content, begun);
    return begun;
}

void EndItem(Tags& tags, ItemTags& item) {
    tags.EndLists(item.Content());
    tags.End(item.link);
    tags.End(item.item);
    tags.End(item.cell);
}

}  // namespace rdl::layout
