// SPDX-License-Identifier: GPL-3.0-or-later
// The logical structure that goes along with what a painter draws. Without a structure every element is 0.
#pragma once

#include <cstddef>
#include <map>
#include <utility>
#include <vector>

#include "rdl/layout/model/instance.h"
#include "rdl/layout/model/structure.h"

namespace rdl::layout {

class Tags {
 public:
    // The structure must outlive its use; null: none is wanted.
    void Describe(Structure* structure) { m_structure = structure; }
    bool IsWanted() const { return m_structure != nullptr; }
    // The element to which belongs what is drawn now.
    ElementId Current() const { return m_current; }
    // Begins an element within the current one.
    ElementId Begin(Element element);
    ElementId Begin(Role role);
    // Ends the element and sets it to 0; ignores 0.
    void End(ElementId& element);

    // The paragraphs of the element, which holds no text itself, are its elements from now on until EndLists:
    // those of lists are items of lists. They go on when the text continues on the next page.
    void BeginLists(ElementId element) { m_lists[element]; }
    void EndLists(ElementId element);
    // The elements of a paragraph of the current element: of its mark, and of its text. Both are the current
    // one where no lists are begun.
    struct ParagraphTags {
        ElementId label, text;
    };
    ParagraphTags OfParagraph(std::size_t index, const ParagraphInstance& paragraph);

    // While it lives, what is drawn belongs to an element; to none if it is decoration.
    class Within {
     public:
        Within(Tags& tags, ElementId element) : m_tags(tags), m_before(tags.m_current) {
            tags.m_current = tags.m_structure ? element : 0;
        }
        ~Within() { m_tags.m_current = m_before; }
        Within(const Within&) = delete;
        Within& operator=(const Within&) = delete;

     private:
        Tags& m_tags;
        const ElementId m_before;
    };
    // While it lives, what is drawn is decoration and begins no elements.
    class Decoration {
     public:
        explicit Decoration(Tags& tags)
            : m_tags(tags), m_before(std::exchange(tags.m_structure, nullptr)), m_within(tags, 0) {}
        ~Decoration() { m_tags.m_structure = m_before; }
        Decoration(const Decoration&) = delete;
        Decoration& operator=(const Decoration&) = delete;

     private:
        Tags& m_tags;
        Structure* const m_before;
        const Within m_within;
    };

 private:
    struct OpenList {
        int level;
        bool isNumbered;
        ElementId list, item, body;
    };
    struct Lists {
        std::vector<OpenList> open;  // outermost first
        std::size_t paragraph = static_cast<std::size_t>(-1);
        ElementId plain = 0, label = 0;  // of the paragraph, 0: none
    };
    void Move(Lists& lists, const ParagraphInstance& paragraph);
    void CloseLists(Lists& lists, int level);

    Structure* m_structure = nullptr;
    ElementId m_current = 0;
    std::map<ElementId, Lists> m_lists;
};

// The elements of one item, each within the one before it.
struct ItemTags {
    ElementId cell = 0, item = 0, link = 0;
    ElementId Content() const { return link ? link : item ? item : cell; }
};
// A text, image or drawing that stands by itself.
ItemTags BeginItem(Tags& tags, const Instance& item);
// The same as the content of a cell, which may be the heading of its row's group.
ItemTags BeginCell(Tags& tags, const Element& cell, const Instance& content, bool isHeading);
void EndItem(Tags& tags, ItemTags& item);

}  // namespace rdl::layout
