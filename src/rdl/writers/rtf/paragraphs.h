// Text boxes, pictures and empty places as the paragraphs of a cell. Each appends to `out`.
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

    // What a paragraph says about where it stands.
    struct Place {
        int level = 0;          // of the table that it is in; 0: none
        bool keepNext = false;  // on one page with the next paragraph
    };

    // The paragraphs of a text box, the last one without its end.
    void Box(const layout::Instance& item, const Place& place, std::string& out);
    // One paragraph with the picture, likewise.
    void Picture(const layout::Instance& item, const Place& place, std::string& out);
    // One paragraph in the default letters, likewise.
    void Message(const layout::TableInstance& table, const Place& place, std::string& out);
    // A paragraph of nothing, exactly so high, likewise.
    static void Blank(double height, const Place& place, std::string& out);
    // The item's bookmark, where it has one, at what follows.
    void Bookmark(const layout::Instance& item, std::string& out);

 private:
    void Paragraph(const layout::Instance& item, const layout::ParagraphInstance& paragraph,
                   const Place& place, std::string& out);
    void Format(const layout::Instance& item, const layout::ParagraphInstance& paragraph, const Place& place,
                std::string& out);
    void Run(const layout::RunInstance& run, bool asParagraph, bool linked, std::string& out);
    bool OpenLink(const layout::Instance& item, std::string& out);
    bool OpenLink(const std::string& link, std::string& out);
    // Bookmarks are any text, their names in the document letters and digits: they get numbers.
    std::string NameOf(const std::string& bookmark);

    RtfStyles& m_styles;
    RtfPictures m_pictures;
    std::map<std::string, int> m_bookmarks;
    std::set<int> m_placed;
};

}  // namespace rdl::writers
