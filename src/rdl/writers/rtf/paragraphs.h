// SPDX-License-Identifier: GPL-3.0-or-later
// Writes text boxes, images and empty space as paragraphs of a cell (RTF 1.9.1, Paragraph Text, Fields,
// Bookmarks). Each function appends to `out`; the last paragraph stays open, without \par or \cell.
#pragma once

#include <map>
#include <set>
#include <string>

#include "rdl/layout/model/instance.h"
#include "rdl/writers/rtf/picture.h"
#include "rdl/writers/rtf/styles.h"

namespace rdl::writers {

class RtfParagraphs {
 public:
    explicit RtfParagraphs(RtfStyles& styles) : m_styles(styles) {}

    // The position of a paragraph.
    struct Place {
        int level = 0;             // nesting level of its table; 0: none
        bool keepNext = false;     // keep on one page with the next paragraph
        bool rightToLeft = false;  // of the table around it
    };

    // Appends the paragraphs of a text box.
    void Box(const layout::Instance& item, const Place& place, std::string& out);
    // Appends one paragraph with the image. Raises rdl::Error naming the item if it cannot be shown.
    void Picture(const layout::Instance& item, const Place& place, std::string& out);
    // Appends the message of a table without rows as one paragraph.
    void Message(const layout::TableInstance& table, const Place& place, std::string& out);
    // Appends an empty paragraph of exactly `height` points.
    static void Blank(double height, const Place& place, std::string& out);
    // Appends the item's bookmark, if any, before the text that follows.
    void Bookmark(const layout::Instance& item, std::string& out);

 private:
    void Paragraph(const layout::Instance& item, const layout::ParagraphInstance& paragraph,
                   const Place& place, std::string& out);
    void Format(const layout::Instance& item, const layout::ParagraphInstance& paragraph, const Place& place,
                std::string& out);
    // `looksAsParagraph`: the run's style is the one that the paragraph begins with. `isLinked`: a link of
    // the item encloses the run.
    struct RunPlace {
        bool looksAsParagraph = false, isLinked = false, bothDirections = false;
    };
    void Run(const layout::RunInstance& run, const RunPlace& place, std::string& out);
    bool OpenLink(const layout::Instance& item, std::string& out);
    bool OpenLink(const std::string& link, std::string& out);
    // Returns a numbered name for a bookmark: bookmarks of a report may be any text, RTF allows ASCII letters
    // and digits only.
    std::string NameOf(const std::string& bookmark);

    RtfStyles& m_styles;
    RtfPictures m_pictures;
    std::map<std::string, int> m_bookmarks;
    std::set<int> m_placed;
};

}  // namespace rdl::writers
