// SPDX-License-Identifier: GPL-3.0-or-later
// Draws boxes, texts, images and lines onto a page, in points from its top left corner.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "rdl/layout/drawing/drawing.h"
#include "rdl/layout/model/image_size.h"
#include "rdl/layout/model/instance.h"
#include "rdl/layout/model/page.h"
#include "rdl/layout/pages/backdrop.h"
#include "rdl/layout/pages/tags.h"
#include "rdl/layout/pages/text_layout.h"

namespace rdl::layout {

class Painter {
 public:
    // Draws onto `page` from now on; the body starts at `top`. The painter does not own the page.
    void Begin(Page& page, double top);

    // Whether the page has visible content, so that a page break has an effect.
    bool HasContent() const { return m_hasContent; }
    bool IsAtTop(double y) const { return y <= m_top + 0.01; }
    void SetContent() { m_hasContent = true; }
    double Extent() const { return m_extent; }  // right edge of what is drawn so far
    void ClearExtent() { m_extent = 0; }

    // Fill and FillReserved draw the background of a box; they raise rdl::Error if its image would repeat too
    // often.
    void Fill(const Rect& area, const BoxStyle& box);
    // Reserves a background whose height is known only after its content is drawn.
    std::size_t ReserveFill();
    void FillReserved(std::size_t place, const Rect& area, const BoxStyle& box);
    enum Sides : unsigned { Left = 1, Top = 2, Right = 4, Bottom = 8, All = 15 };
    void Borders(const Rect& area, const BoxStyle& box, unsigned sides = All);
    // Draws one side of a box; relief styles are lit from the top left.
    void Edge(Sides side, double x1, double y1, double x2, double y2, const Border& border);
    void BeginClip(const Rect& area);
    void EndClip();
    // A range of objects that were drawn one after the other and belong to one layer.
    struct Stretch {
        int layer;               // the lowest is drawn first
        std::size_t begin, end;  // values of Drawn(); the end is the next one's beginning
    };
    // Returns how many objects the page has now.
    std::size_t Drawn() const { return m_page->ops.size(); }
    // Puts the objects of the stretches, which adjoin in the order of the page, into the order of their
    // layers; in one layer the order stays. The stretches are sorted too, and their places are those of
    // before.
    void Restack(std::vector<Stretch>& stretches);
    void Line(double x1, double y1, double x2, double y2, const Border& border,
              LineOp::Edge edge = LineOp::Edge::Either);
    // Draws lines [first, last) of a text, the first one at the top of the content area as vAlign says.
    void Text(const Rect& area, const Instance& item, const LaidText& laid, std::size_t first,
              std::size_t last);
    void Image(const Rect& area, const Instance& item);
    void Drawing(const Rect& area, const DrawingInstance& drawing);
    // Adds links, bookmark and document map label of an item.
    void Marks(const Rect& area, const Instance& item);
    void Label(double x, double y, const MapLabel& label);
    TextLayout& Layout() { return m_layout; }
    // Texts, images, drawings and links belong to the current element, all else is decoration.
    Tags& Elements() { return m_tags; }

    // Collects the text boxes that header and footer refer to. `names` must outlive its use.
    void CollectTexts(const std::vector<std::string>* names) { m_wanted = names; }
    std::vector<std::pair<std::string, Value>> TakeCollected() { return std::exchange(m_collected, {}); }
    void Collect(const Instance& item);
    // Whether a text adds nothing to a page: it has no lines, marks nothing and is not collected.
    bool AddsNothing(const Instance& item, const LaidText& laid) const;
    // Values of the page number placeholders in texts of the body.
    SectionInstance::PageFacts facts;
    // Names the page and those after it.
    void SetPageName(const std::string& name) {
        facts.name = name;
        isPageNamed = true;
    }
    bool isPageNamed = false;  // by an item or a group, not only by the report
    // Set by rows that begin on the page.
    bool resetPageNumber = false;

 private:
    bool Collects(const Instance& item) const;
    struct Turn {  // rotation of a text: local x along the line, local y across
        double originX, originY;
        float rotation;
        double X(double along, double across) const;
        double Y(double along, double across) const;
    };
    void Piece(const TextPiece& piece, const LaidText& laid, const Turn& turn, double along, double baseline);
    void DrawLines(const Instance& item, const LaidText& laid, std::size_t first, std::size_t last,
                   const Turn& turn, double across);
    void LinkedPiece(const TextPiece& piece, const LaidText& laid, const Turn& turn, double along, double top,
                     const TextLine& line);
    void WordBreak(const TextPiece& piece, const Turn& turn, double along, double baseline);
    void Replaced(const Rect& area, const Instance& item);
    void PutImage(const Rect& inside, const Instance& item, const ImageSize& size);
    void TagFrom(std::size_t begin);  // the objects of the page from there on
    void Reach(double right) { m_extent = right > m_extent ? right : m_extent; }

    Page* m_page = nullptr;
    Tags m_tags;
    double m_top = 0, m_extent = 0;
    bool m_hasContent = false;
    const std::vector<std::string>* m_wanted = nullptr;
    std::vector<std::pair<std::string, Value>> m_collected;
    TextLayout m_layout;
};

// Returns the content area of a box, without padding.
Rect ContentOf(const Rect& area, const BoxStyle& box);
// Replaces the page number placeholders of a text; those whose value is 0 stay.
std::string WithPageNumbers(const std::string& text, const SectionInstance::PageFacts& facts);

}  // namespace rdl::layout
