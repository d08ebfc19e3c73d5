// A table on its way onto pages: rows are made one at a time, headers repeat, rows that belong together stay
// so.
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
        LaidText laid;               // texts
        std::unique_ptr<Flow> flow;  // everything else
        std::size_t nextLine = 0;    // of a text that goes on on the next page
    };
    struct Prepared {
        TableRow row;
        std::vector<Cell> cells;  // as row.cells
        std::size_t index = 0;
        double height = 0;   // without cells that span rows
        bool flows = false;  // has cells that may be split at any place
        bool begun = false;
    };
    // A cell over several rows, drawn when its last row, or its page, is full.
    struct Span {
        Instance content;
        LaidText laid;
        int column = 0, columns = 1;
        std::size_t lastRow = 0;
        double top = 0, needed = 0;
    };
    struct Edge {
        double x1, x2;
        Border border;
        bool operator==(const Edge&) const = default;
    };

    double TotalWidth() const;
    void PlaceColumns(double x);
    Rect CellArea(int column, int columns, double y, double height) const;
    std::unique_ptr<Prepared> Make(std::size_t index);
    void Prepare(Prepared& prepared);
    Prepared& Ahead(std::size_t offset);  // of the queue of rows made and not yet placed
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
    void EndSpans(std::size_t row, double bottom);  // those whose last row this is
    void DrawSpan(Span& span, double bottom);

    const Instance& m_item;
    TableInstance& m_table;
    std::unique_ptr<Flow> m_message;  // instead of rows
    std::unique_ptr<Instance> m_messageItem;
    std::vector<double> m_columnX;
    double m_columnsFor = -1;            // x that m_columnX holds for
    std::vector<double> m_furtherPages;  // distances at which row headers stand again
    std::size_t m_next = 0;              // row to be placed
    std::deque<std::unique_ptr<Prepared>> m_queue;
    std::vector<std::unique_ptr<Prepared>> m_spare;
    std::vector<std::unique_ptr<Span>> m_spans;
    // Bottom edges of the last row wait for the next one's background, which would cover half of them.
    std::vector<Edge> m_tops, m_bottoms, m_newBottoms;
    std::size_t m_rowsOnPage = 0;
    std::size_t m_brokenBefore = static_cast<std::size_t>(-1);  // row that a page break was made for
    bool m_begun = false;
    bool m_waitsForRoom = false, m_contentBefore = false;  // other items stand above on the page
};

}  // namespace rdl::layout
