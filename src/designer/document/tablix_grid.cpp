// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/document/tablix_grid.h"

#include <algorithm>
#include <set>
#include <string>

#include "designer/document/constants.h"
#include "designer/document/item_size.h"
#include "designer/document/names.h"
#include "platform/base/ascii.h"

namespace designer {
namespace {

constexpr std::size_t MostTracks = 10'000;  // columns, and rows, of one region
constexpr std::size_t MostLevels = 50;      // of groupings on one side of a matrix

// What the three kinds of regions share: reading of sizes and spans, and placing cells.
class GridBuilder {
    static constexpr bool OfColumns = true, OfRows = false;  // for isColumns

 public:
    GridBuilder(const Document& document, ElementId region)
        : m_document(document), m_tree(document.Tree()), m_region(document.IndexOf(region)) {}

    TablixGrid Build() {
        const std::string_view kind = m_tree.LocalName(m_region);
        if (kind == "Table") {
            BuildTable();
        } else if (kind == "Matrix") {
            BuildMatrix();
        } else {
            BuildTablix();
        }
        m_grid.width = m_grid.headerWidth + End(m_grid.columns, m_grid.headerWidth);
        m_grid.height = m_grid.headerHeight + End(m_grid.rows, m_grid.headerHeight);
        if (IsMirrored(m_document, m_document.IdAt(m_region))) {
            Mirror();
        }
        return std::move(m_grid);
    }

 private:
    struct Span {
        std::size_t first, count;
    };
    // A side of a matrix: what a body column or row is made of.
    struct Leaf {
        std::size_t index;  // of the MatrixColumn or MatrixRow
        bool isSubtotal;
    };

    std::string Text(int element, std::string_view path) const {
        const int found = m_tree.Find(element, path);
        return found == NoIndex ? std::string() : std::string(Trim(m_tree.TextOf(found)));
    }

    double Size(int element, std::string_view path) const {
        return std::max(0.0, PointsOf(Text(element, path)).value_or(0));
    }

    std::size_t Number(int element, std::string_view path) const {
        return static_cast<std::size_t>(NumberIn(Text(element, path), 1, 1, static_cast<int>(MostTracks)));
    }

    // The children of that name of the element at the path.
    std::vector<int> Entries(int element, std::string_view path, std::string_view name) const {
        std::vector<int> entries;
        const int owner = m_tree.Find(element, path);
        if (owner != NoIndex) {
            for (const int child : m_tree.Children(owner)) {
                if (m_tree.IsOfReport(child) && m_tree.LocalName(child) == name) {
                    entries.push_back(child);
                }
            }
        }
        return entries;
    }

    ElementId ItemIn(int cell) const {
        for (const std::string_view holder : {"CellContents", "ReportItems"}) {
            const int contents = m_tree.Child(cell, holder);
            for (int child = contents == NoIndex ? NoIndex : m_tree[contents].firstChild; child != NoIndex;
                 child = m_tree[child].nextSibling) {
                if (m_tree.IsOfReport(child) && IsReportItem(m_tree.LocalName(child))) {
                    return m_document.IdAt(child);
                }
            }
        }
        return NoElement;
    }

    static double End(const std::vector<GridTrack>& tracks, double header) {
        return tracks.empty() ? 0 : tracks.back().begin + tracks.back().size - header;
    }

    void AddTrack(std::vector<GridTrack>& tracks, int element, double header, double size) const {
        if (tracks.size() < MostTracks) {
            const double begin = header + End(tracks, header);
            tracks.push_back({m_document.IdAt(element), begin, size});
        }
    }

    static Span Within(std::size_t first, std::size_t count, const std::vector<GridTrack>& tracks) {
        return {first, std::min(count, tracks.size() - std::min(first, tracks.size()))};
    }

    static double SizeOf(const std::vector<GridTrack>& tracks, Span span) {
        if (span.count == 0) {
            return 0;
        }
        const GridTrack& last = tracks[span.first + span.count - 1];
        return last.begin + last.size - tracks[span.first].begin;
    }

    void AddBodyCell(int element, std::size_t row, std::size_t column, std::size_t rowSpan,
                     std::size_t columnSpan) {
        if (row >= m_grid.rows.size() || column >= m_grid.columns.size()) {
            return;
        }
        const Span rows = Within(row, rowSpan, m_grid.rows),
                   columns = Within(column, columnSpan, m_grid.columns);
        m_grid.cells.push_back({GridCell::Part::Body,
                                m_document.IdAt(element),
                                ItemIn(element),
                                {m_grid.columns[column].begin, m_grid.rows[row].begin,
                                 SizeOf(m_grid.columns, columns), SizeOf(m_grid.rows, rows)},
                                row,
                                column,
                                rows.count,
                                columns.count});
    }

    void AddHeader(GridCell::Part part, int element, Rect place) {
        m_grid.cells.push_back({part, m_document.IdAt(element), ItemIn(element), place, 0, 0, 1, 1});
    }

    // --- Tablix ---

    std::vector<int> Members(int owner) const { return Entries(owner, "TablixMembers", "TablixMember"); }

    double HeaderSize(int owner) const {
        double size = 0;
        for (const int member : Members(owner)) {
            size = std::max(size, Size(member, "TablixHeader/Size") + HeaderSize(member));
        }
        return size;
    }

    // Places the headers of a hierarchy; `depth` is the size of the headers around, `leaf` the next body
    // track.
    void AddHeaders(int owner, bool isColumns, double depth, std::size_t& leaf, std::set<double>& levels) {
        const std::vector<GridTrack>& tracks = isColumns ? m_grid.columns : m_grid.rows;
        for (const int member : Members(owner)) {
            const double size = Size(member, "TablixHeader/Size");
            const std::size_t first = leaf;
            const std::size_t cell = m_grid.cells.size();
            const int header = m_tree.Child(member, "TablixHeader");
            if (header != NoIndex) {
                AddHeader(isColumns ? GridCell::Part::ColumnHeader : GridCell::Part::RowHeader, header, {});
                levels.insert(depth + size);
            }
            if (Members(member).empty()) {
                ++leaf;
            } else {
                AddHeaders(member, isColumns, depth + size, leaf, levels);
            }
            if (header != NoIndex && first < tracks.size()) {
                const Span span = Within(first, leaf - first, tracks);
                const double begin = tracks[first].begin, extent = SizeOf(tracks, span);
                m_grid.cells[cell].place =
                    isColumns ? Rect{begin, depth, extent, size} : Rect{depth, begin, size, extent};
            }
        }
    }

    void AddCorner(const std::set<double>& columnLevels, const std::set<double>& rowLevels) {
        const std::vector<double> xs(rowLevels.begin(), rowLevels.end());
        const std::vector<double> ys(columnLevels.begin(), columnLevels.end());
        const auto at = [](const std::vector<double>& lines, std::size_t i) {
            return lines[std::min(i, lines.size() - 1)];
        };
        std::size_t row = 0;
        for (const int line : Entries(m_region, "TablixCorner/TablixCornerRows", "TablixCornerRow")) {
            std::size_t column = 0;
            for (const int cell : Entries(line, {}, "TablixCornerCell")) {
                const double left = at(xs, column), top = at(ys, row);
                if (m_tree.Child(cell, "CellContents") != NoIndex) {
                    AddHeader(GridCell::Part::Corner, cell,
                              {left, top, at(xs, column + Number(cell, "CellContents/ColSpan")) - left,
                               at(ys, row + Number(cell, "CellContents/RowSpan")) - top});
                }
                ++column;
            }
            ++row;
        }
    }

    void BuildTablix() {
        const int columns = m_tree.Child(m_region, "TablixColumnHierarchy");
        const int rows = m_tree.Child(m_region, "TablixRowHierarchy");
        m_grid.headerHeight = columns == NoIndex ? 0 : HeaderSize(columns);
        m_grid.headerWidth = rows == NoIndex ? 0 : HeaderSize(rows);
        for (const int column : Entries(m_region, "TablixBody/TablixColumns", "TablixColumn")) {
            AddTrack(m_grid.columns, column, m_grid.headerWidth, Size(column, "Width"));
        }
        const std::vector<int> bodyRows = Entries(m_region, "TablixBody/TablixRows", "TablixRow");
        for (const int row : bodyRows) {
            AddTrack(m_grid.rows, row, m_grid.headerHeight, Size(row, "Height"));
        }
        std::set<double> columnLevels{0}, rowLevels{0};
        std::size_t leaf = 0;
        if (columns != NoIndex) {
            AddHeaders(columns, OfColumns, 0, leaf, columnLevels);
        }
        leaf = 0;
        if (rows != NoIndex) {
            AddHeaders(rows, OfRows, 0, leaf, rowLevels);
        }
        AddCorner(columnLevels, rowLevels);
        for (std::size_t row = 0; row < bodyRows.size(); ++row) {
            std::size_t column = 0;
            for (const int cell : Entries(bodyRows[row], "TablixCells", "TablixCell")) {
                AddBodyCell(cell, row, column++, Number(cell, "CellContents/RowSpan"),
                            Number(cell, "CellContents/ColSpan"));
            }
        }
    }

    // --- Table ---

    void AddBand(int owner, std::string_view name) {
        for (const int row : Entries(owner, std::string(name) + "/TableRows", "TableRow")) {
            AddTrack(m_grid.rows, row, 0, Size(row, "Height"));
            std::size_t column = 0;
            for (const int cell : Entries(row, "TableCells", "TableCell")) {
                const std::size_t span = Number(cell, "ColSpan");
                AddBodyCell(cell, m_grid.rows.size() - 1, column, 1, span);
                column += span;
            }
        }
    }

    void BuildTable() {
        for (const int column : Entries(m_region, "TableColumns", "TableColumn")) {
            AddTrack(m_grid.columns, column, 0, Size(column, "Width"));
        }
        AddBand(m_region, "Header");
        const std::vector<int> groups = Entries(m_region, "TableGroups", "TableGroup");
        for (const int group : groups) {
            AddBand(group, "Header");
        }
        AddBand(m_region, "Details");
        for (auto group = groups.rbegin(); group != groups.rend(); ++group) {
            AddBand(*group, "Footer");
        }
        AddBand(m_region, "Footer");
    }

    // --- Matrix ---

    std::vector<int> Levels(bool isColumns) const {
        std::vector<int> levels = isColumns ? Entries(m_region, "ColumnGroupings", "ColumnGrouping")
                                            : Entries(m_region, "RowGroupings", "RowGrouping");
        levels.resize(std::min(levels.size(), MostLevels));
        return levels;
    }

    double LevelSize(int level, bool isColumns) const { return Size(level, isColumns ? "Height" : "Width"); }

    int Dynamic(int level, bool isColumns) const {
        return m_tree.Child(level, isColumns ? "DynamicColumns" : "DynamicRows");
    }

    // Gathers the leaves and the headers; a header's place is filled in once its leaves have their tracks.
    struct PendingHeader {
        int element;
        double depth, size;
        std::size_t first, count;
    };
    void AddLevel(const std::vector<int>& levels, std::size_t level, double depth, bool isColumns, Leaf leaf,
                  std::vector<Leaf>& leaves, std::vector<PendingHeader>& headers) const {
        if (level == levels.size()) {
            leaves.push_back(leaf);
        }
        if (level == levels.size() || leaves.size() >= MostTracks) {
            return;
        }
        const double size = LevelSize(levels[level], isColumns);
        // What repeats within a subtotal is written once, outside of it.
        const bool isRepeated = leaf.isSubtotal;
        const auto add = [&](int element, std::size_t next, double extent, Leaf inner) {
            const std::size_t first = leaves.size();
            AddLevel(levels, next, depth + extent, isColumns, inner, leaves, headers);
            if (!isRepeated) {
                headers.push_back({element, depth, extent, first, leaves.size() - first});
            }
        };
        const int dynamic = Dynamic(levels[level], isColumns);
        if (dynamic == NoIndex) {
            for (const int member : Entries(levels[level], isColumns ? "StaticColumns" : "StaticRows",
                                            isColumns ? "StaticColumn" : "StaticRow")) {
                add(member, level + 1, size, leaf);
                ++leaf.index;
            }
            return;
        }
        const int subtotal = m_tree.Child(dynamic, "Subtotal");
        std::size_t next = level + 1;
        double extent = size;
        while (next < levels.size() && Dynamic(levels[next], isColumns) != NoIndex) {
            extent += LevelSize(levels[next++], isColumns);
        }
        const bool isBefore = subtotal != NoIndex && SameAscii(Text(subtotal, "Position"), "Before");
        if (isBefore) {
            add(subtotal, next, extent, {leaf.index, true});
        }
        add(dynamic, level + 1, size, leaf);
        if (subtotal != NoIndex && !isBefore) {
            add(subtotal, next, extent, {leaf.index, true});
        }
    }

    void AddSide(bool isColumns, std::vector<Leaf>& leaves, std::vector<PendingHeader>& headers) {
        AddLevel(Levels(isColumns), 0, 0, isColumns, {0, false}, leaves, headers);
        const std::vector<int> tracks = isColumns ? Entries(m_region, "MatrixColumns", "MatrixColumn")
                                                  : Entries(m_region, "MatrixRows", "MatrixRow");
        for (const Leaf& leaf : leaves) {
            if (leaf.index < tracks.size()) {
                AddTrack(isColumns ? m_grid.columns : m_grid.rows, tracks[leaf.index],
                         isColumns ? m_grid.headerWidth : m_grid.headerHeight,
                         Size(tracks[leaf.index], isColumns ? "Width" : "Height"));
            }
        }
    }

    void PlaceHeaders(const std::vector<PendingHeader>& headers, bool isColumns) {
        const std::vector<GridTrack>& tracks = isColumns ? m_grid.columns : m_grid.rows;
        for (const PendingHeader& header : headers) {
            if (header.first < tracks.size()) {
                const double begin = tracks[header.first].begin;
                const double extent = SizeOf(tracks, Within(header.first, header.count, tracks));
                AddHeader(isColumns ? GridCell::Part::ColumnHeader : GridCell::Part::RowHeader,
                          header.element,
                          isColumns ? Rect{begin, header.depth, extent, header.size}
                                    : Rect{header.depth, begin, header.size, extent});
            }
        }
    }

    void BuildMatrix() {
        for (const int level : Levels(OfColumns)) {
            m_grid.headerHeight += LevelSize(level, OfColumns);
        }
        for (const int level : Levels(OfRows)) {
            m_grid.headerWidth += LevelSize(level, OfRows);
        }
        std::vector<Leaf> columns, rows;
        std::vector<PendingHeader> columnHeaders, rowHeaders;
        AddSide(OfColumns, columns, columnHeaders);
        AddSide(OfRows, rows, rowHeaders);
        if (const int corner = m_tree.Child(m_region, "Corner"); corner != NoIndex) {
            AddHeader(GridCell::Part::Corner, corner, {0, 0, m_grid.headerWidth, m_grid.headerHeight});
        }
        PlaceHeaders(columnHeaders, OfColumns);
        PlaceHeaders(rowHeaders, OfRows);
        // The cells of a subtotal are copies of those of its group.
        const std::vector<int> bodyRows = Entries(m_region, "MatrixRows", "MatrixRow");
        for (std::size_t row = 0; row < rows.size(); ++row) {
            if (rows[row].isSubtotal || rows[row].index >= bodyRows.size()) {
                continue;
            }
            const std::vector<int> cells = Entries(bodyRows[rows[row].index], "MatrixCells", "MatrixCell");
            for (std::size_t column = 0; column < columns.size(); ++column) {
                if (!columns[column].isSubtotal && columns[column].index < cells.size()) {
                    AddBodyCell(cells[columns[column].index], row, column, 1, 1);
                }
            }
        }
    }

    void Mirror() {
        for (GridTrack& column : m_grid.columns) {
            column.begin = m_grid.width - column.begin - column.size;
        }
        for (GridCell& cell : m_grid.cells) {
            cell.place.left = m_grid.width - cell.place.Right();
        }
    }

    const Document& m_document;
    const SourceTree& m_tree;
    const int m_region;
    TablixGrid m_grid;
};

}  // namespace

bool HasGrid(std::string_view element) {
    return element == "Tablix" || element == "Table" || element == "Matrix";
}

bool IsMirrored(const Document& document, ElementId region) {
    return Trim(document.TextAt(region, "LayoutDirection").value_or("")) == "RTL";
}

TablixGrid GridOf(const Document& document, ElementId region) {
    return GridBuilder(document, region).Build();
}

}  // namespace designer
