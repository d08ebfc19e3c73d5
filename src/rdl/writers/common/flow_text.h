// SPDX-License-Identifier: GPL-3.0-or-later
// What text documents (RTF, WordprocessingML) have in common: lengths, colours, the measures of paragraphs,
// page fields, bookmarks and addresses.
#pragma once

#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>

#include "rdl/layout/model/instance.h"

namespace rdl::writers {

// Returns the length in twips (1/20 point), at most 22 inches, the largest page of a word processor.
int Twips(double points);

// Returns the opaque colour that a colour has on white paper.
layout::Color OnPaper(layout::Color color);

// The position of a paragraph.
struct FlowPlace {
    int level = 0;                                   // nesting level of its table; 0: none
    bool keepNext = false;                           // keep on one page with the next paragraph
    bool rightToLeft = false;                        // of the table around it
    layout::Color background = layout::Transparent;  // of the body that it is in, without a table around it
};

// The measures of a paragraph, in points, as its lines see them: left is the side where a line that runs from
// left to right begins, whichever way the text is turned. The box's padding is part of its paragraphs:
// readers disagree about which side a cell's own is on.
struct FlowMeasures {
    layout::HAlign align = layout::HAlign::Left;
    double left = 0, right = 0, firstLine = 0, before = 0, after = 0;
    double lineHeight = 0;  // exact; 0: that of the font
    bool rightToLeft = false;
    std::string mark;  // of a list, with the tab after it; else empty
    bool operator==(const FlowMeasures&) const = default;
};
FlowMeasures MeasuresOf(const layout::Instance& item, const layout::ParagraphInstance& paragraph);

// Returns the style with which the paragraph begins; null if it has none.
const layout::CharStyle* FirstStyle(const layout::ParagraphInstance& paragraph);

// Whether a text may have characters of a script that runs from right to left, or of another one for which
// word processors keep separate looks: those of U+0580 to U+1FFF and of U+FB00 to U+FEFF.
bool HasComplexScript(std::string_view text);
// The same for a paragraph and the place where it is.
bool NeedsBothDirections(const layout::Instance& item, const layout::ParagraphInstance& paragraph,
                         const FlowPlace& place);

// Passes the parts of a text in order: texts to `take`, and the fields for its page numbers, PAGE and
// NUMPAGES, to `field`.
void SplitFields(std::string_view text, const std::function<void(std::string_view)>& take,
                 const std::function<void(const char*)>& field);

// Returns the address of a link; empty unless it is a web, mail or FTP address. Relative references would
// refer to the reader's machine. All characters but plain ones are percent-encoded.
std::string DocumentAddress(const std::string& link);

// The bookmarks of one document. Those of a report may be any text, documents allow few characters: they get
// numbered names.
class FlowBookmarks {
 public:
    std::string NameOf(const std::string& bookmark);
    // Returns the name if this is the bookmark's first place; else, and for no bookmark, an empty text.
    std::string Place(const std::string& bookmark);

 private:
    std::map<std::string, int> m_numbers;
    std::set<int> m_placed;
};

// Returns the page setup of a section. A document that flows does not continue at the right of its pages, so
// the paper is as wide as its content needs, up to the widest that word processors know.
layout::PageSetup PaperOf(const layout::SectionInstance& section);

// Whether the first page of a section has another header or footer than the others.
bool HasTitlePage(const layout::PageSetup& page);

}  // namespace rdl::writers
