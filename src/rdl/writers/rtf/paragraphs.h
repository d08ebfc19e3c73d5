// SPDX-License-Identifier: GPL-3.0-or-later
// Writes text boxes, images and empty space as paragraphs of a cell (RTF 1.9.1, Paragraph Text, Fields,
// Bookmarks). Each function appends to `out`; the last paragraph stays open, without \par or \cell.
#pragma once

#include <string>

#include "rdl/layout/model/instance.h"
#include "rdl/writers/common/flow_text.h"
#include "rdl/writers/rtf/picture.h"
#include "rdl/writers/rtf/styles.h"

namespace rdl::writers {

class RtfParagraphs {
 public:
    explicit RtfParagraphs(RtfStyles& styles) : m_styles(styles) {}

    // Appends the paragraphs of a text box.
    void Box(const layout::Instance& item, const FlowPlace& place, std::string& out);
    // Appends one paragraph with the image. Raises rdl::Error naming the item if it cannot be shown.
    void Picture(const layout::Instance& item, const FlowPlace& place, std::string& out);
    // Appends the message of a table without rows as one paragraph.
    void Message(const layout::TableInstance& table, const FlowPlace& place, std::string& out);
    // Appends an empty paragraph of exactly `height` points.
    void Blank(double height, const FlowPlace& place, std::string& out);
    // Appends the item's bookmark, if any, before the text that follows.
    void Bookmark(const layout::Instance& item, std::string& out);

 private:
    void AppendPlace(const FlowPlace& place, std::string& out);
    void Paragraph(const layout::Instance& item, const layout::ParagraphInstance& paragraph,
                   const FlowPlace& place, std::string& out);
    void Format(const FlowMeasures& measures, const FlowPlace& place, std::string& out);
    // `looksAsParagraph`: the run's style is the one that the paragraph begins with. `isLinked`: a link of
    // the item encloses the run.
    struct RunPlace {
        bool looksAsParagraph = false, isLinked = false, bothDirections = false;
    };
    void Run(const layout::RunInstance& run, const RunPlace& place, std::string& out);
    bool OpenLink(const layout::Instance& item, std::string& out);
    bool OpenLink(const std::string& link, std::string& out);

    RtfStyles& m_styles;
    RtfPictures m_pictures;
    FlowBookmarks m_bookmarks;
};

}  // namespace rdl::writers
