// SPDX-License-Identifier: GPL-3.0-or-later
// Arranges the items of a report as paragraphs and tables of a text document, from top to bottom. A format
// derives its writer from this.
#pragma once

#include <cstddef>
#include <vector>

#include "rdl/layout/model/instance.h"
#include "rdl/writers/common/flow_row.h"
#include "rdl/writers/common/flow_text.h"

namespace rdl::writers {

class FlowTablix;

class FlowBody {
 public:
    virtual ~FlowBody() = default;
    // The background of a body, header or footer, below its items; lengths are points.
    struct Backdrop {
        Backdrop() = default;
        Backdrop(const layout::BoxStylePtr& style, double backdropWidth, double backdropHeight);
        layout::Color color = layout::Transparent;
        double width = 0, height = 0;
    };
    // Writes the body of a section with its page breaks. Raises rdl::Error naming an item that cannot be
    // shown.
    void Body(const std::vector<layout::Instance>& items, const Backdrop& backdrop);
    // Writes a header or footer of `height` points.
    void Margin(const std::vector<layout::Instance>& items, double height, const Backdrop& backdrop);

 protected:
    FlowBody() = default;
    FlowBody(const FlowBody&) = default;
    FlowBody& operator=(const FlowBody&) = default;

    // Each writes whole paragraphs: a text box, an image, the message of a table without rows, an empty line
    // of exactly `height` points.
    virtual void TextBox(const layout::Instance& item, const FlowPlace& place) = 0;
    virtual void Picture(const layout::Instance& item, const FlowPlace& place) = 0;
    virtual void Message(const layout::TableInstance& table, const FlowPlace& place) = 0;
    virtual void Blank(double height, const FlowPlace& place) = 0;
    // Notes bookmark and label of a rectangle, table or line, whose content follows.
    virtual void Mark(const layout::Instance& item) = 0;
    // The same for a label of a table row, which follows.
    virtual void Label(const layout::MapLabel& /*label*/, const FlowRow& /*row*/) {}
    virtual void BreakPage() = 0;
    // The last paragraph of a body, `height` points high: a document ends with a paragraph, not with a table.
    virtual void EndOfSection(double height) = 0;
    // Whether rows of one table must have the same columns. Items below each other then share a table where
    // they can, and a paragraph keeps other tables apart.
    virtual bool SharesColumns() const { return false; }
    // `lines` are the edges of the columns in points. Rows of adjacent tables form one table in readers.
    virtual void BeginTable(const std::vector<double>& /*lines*/, bool /*rightToLeft*/) {}
    virtual void EndTable() {}
    // A row of a table at a nesting level from 1. `nested`: it contains tables.
    virtual void BeginRow(const FlowRow& row, int level) = 0;
    virtual void EndRow(int level, bool nested) = 0;
    virtual void BeginCell(const FlowCell& /*cell*/) {}
    // A cell ends with a paragraph.
    virtual void EndCell(int level) = 0;
    // Called now and then, with no more than an item of a cell since the last time.
    virtual void PieceWritten() = 0;

 private:
    using Items = std::vector<const layout::Instance*>;
    // The position of items: nesting level of cells, and offset from the cell's left edge in points.
    struct Place {
        int level = 0;
        double x = 0;
    };
    // Items beside each other, and the extent of their rows in points. Top and bottom are in the container,
    // left and right in the cell around it.
    struct BandOf {
        Items items;
        double top, bottom, left, right;
        bool touches;  // the grid above or below
    };
    // What was written last at the current level: readers join adjacent tables.
    enum class Last { Nothing, Paragraph, Grid, Table };

    // Returns the bottom of the last item, in points.
    double Block(const std::vector<layout::Instance>& items, const Place& place);
    bool Joins(const Items& band, double bottom, const layout::Instance& next) const;
    std::vector<BandOf> Bands(const Items& sorted, const Place& place) const;
    double Band(const BandOf& band, const Place& place);
    void Grid(const BandOf& band, const Place& place);
    double Gap(double height, bool table, const Place& place);
    bool IsFilled(const Place& place) const {
        return place.level == 0 && layout::IsVisible(m_backdrop.color);
    }
    // The place of a paragraph that stands alone.
    FlowPlace Alone(const Place& place) const;
    bool Breaks(const Place& place) const { return place.level == 0 && m_breaks && m_hasContent; }
    void Break();

    void Table(const layout::Instance& item, const Place& place);
    void TableRow(const layout::Instance& item, FlowTablix& rows, std::size_t index, const Place& place);
    void RepeatRows(const layout::Instance& item, FlowTablix& rows, std::size_t index, const Place& place);
    void Row(const FlowRow& row, const Place& place);
    FlowRow Filled(FlowRow row, const Place& place) const;
    void Cell(const FlowCell& cell, const FlowRow& row, int level, bool& nested);
    void Nested(const layout::Instance& item, int level);

    Backdrop m_backdrop;
    Last m_last = Last::Nothing;
    bool m_breaks = false;      // page breaks apply here
    bool m_hasContent = false;  // there is content before a page break
    bool m_breakPending = false;
    int m_depth = 0;
};

}  // namespace rdl::writers
