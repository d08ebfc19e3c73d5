// SPDX-License-Identifier: GPL-3.0-or-later
// Places a table on pages: rows are built one at a time, headers repeat, and rows that belong together stay
// together.
#pragma once

#include <deque>
#include <memory>
#include <vector>

#include "rdl/layout/pages/flow.h"

namespace rdl::layout {

class TableFlow final : public Flow {
 public:
    TableFlow(const Instance& item, FlowContext& context);
    Outcome Place(double x, double y, double available) override;
    double Measure(double limit) override;

 private:
    struct Cell {
        LaidText laid;      // texts
        SameText laidText;  // whose lines `laid` has, in `laidWidth`
        double laidWidth = 0;
        std::unique_ptr<Flow> flow;  // for other content
        bool isBlank = false;        // a text that draws nothing within its box, with the mark `laidText`
        std::size_t nextLine = 0;    // next line of a text that continues on the next page
        ItemTags tags;
    };
    struct Prepared {
        TableRow row;
        std::vector<Cell> cells;  // parallel to row.cells
        std::size_t index = 0;
        double height = 0;   // height without cells that span rows
        bool flows = false;  // has cells that can be split anywhere
        bool begun = false;
    };
    // A cell over several rows, drawn after its last row or at the end of the page.
    struct Span {
        Instance content;
        LaidText laid;
        int column = 0, columns = 1;
        std::size_t lastRow = 0;
        double top = 0, needed = 0;
        std::unique_ptr<Flow> flow;  // of a content that continues on the next page
        double placed = 0;           // its height on the pages before
        ItemTags tags;
        bool isDrawn = false;  // on a page before, too
    };
    struct Edge {
        double x1, x2;
        Border border;
        bool operator==(const Edge&) const = default;
    };

    void DescribeGroup(const TableRow& row, std::size_t index);
    double TotalWidth() const;
    void PlaceColumns(double x);
    bool BeginsPage(double at, double previous) const;
    bool BeginsPart(int column) const;
    unsigned PartSides(std::size_t part, unsigned sides) const;
    Rect CellArea(int column, int columns, double y, double height) const;
    std::unique_ptr<Prepared> Make(std::size_t index);
    void Prepare(Prepared& prepared);
    Prepared& Ahead(std::size_t offset);  // in the queue of built rows
    void DropFirst();
    double BlockHeight();
    double RowHeight(const Prepared& prepared, double y) const;
    bool EndsPageBefore(const Prepared& prepared, double y, double bottom);
    void ShowDuplicatesOnTop();
    double PlaceRepeated(double y);
    void PlaceRow(Prepared& prepared, double y, double height);
    bool PlaceSplit(Prepared& prepared, double y, double bottom, double& used);
    bool PlaceRows(double& y, double bottom, bool& breakAfter);
    bool SplitText(const Instance& content, Cell& cell, const Rect& area);
    void DrawBoxes(const Prepared& prepared, double y, double height);
    void DrawVerticals(const Prepared& prepared, double y, double height);
    void DrawContents(Prepared& prepared, double y, double height);
    void DrawContent(const Instance& content, Cell& cell, const Rect& area);
    static void AddEdge(std::vector<Edge>& edges, double x1, double x2, const Border& border);
    void DrawEdges(const std::vector<Edge>& edges, double y, Painter::Sides side);
    void BeginSpans(Prepared& prepared, double y);
    void EndSpans(std::size_t row, double bottom);  // draws the spans that end with this row
    void DrawSpan(Span& span, double bottom);
    void DrawFlowingSpan(Span& span, const Rect& area);
    void StretchBoxes(Prepared& prepared, double y);
    void DescribeRow(Prepared& prepared);

    const Instance& m_item;
    TableInstance& m_table;
    std::unique_ptr<Flow> m_message;  // shown instead of rows
    std::unique_ptr<Instance> m_messageItem;
    std::vector<double> m_columnX;
    double m_columnsFor = -1;            // position for which m_columnX is valid
    std::vector<double> m_furtherPages;  // offsets at which row headers repeat
    // The table's own width on each of the pages side by side.
    struct Part {
        double left, right;
        std::size_t firstColumn;
    };
    std::vector<Part> m_parts;
    std::size_t m_next = 0;  // next row to place
    std::deque<std::unique_ptr<Prepared>> m_queue;
    std::vector<std::unique_ptr<Prepared>> m_spare;
    std::vector<std::unique_ptr<Span>> m_spans;
    // Bottom edges are drawn after the next row's background, which would cover half of them.
    std::vector<Edge> m_tops, m_bottoms, m_newBottoms;
    std::size_t m_rowsOnPage = 0;
    std::size_t m_brokenBefore = static_cast<std::size_t>(-1);  // row before which a page break was made
    ElementId m_element = 0, m_rowGroup = 0;                    // the table, and its head or body
    bool m_isInHead = false;
    bool m_begun = false;
    bool m_waitsForRoom = false, m_contentBefore = false;  // other items are above it on the page
};

}  // namespace rdl::layout
