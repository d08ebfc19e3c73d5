// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/tables/older_matrix.h"

#include <algorithm>

#include "designer/document/editing.h"
#include "designer/document/names.h"
#include "designer/document/xml_text.h"
#include "designer/tables/cell_text.h"
#include "designer/tables/fields.h"
#include "designer/tables/tablix_shape.h"
#include "platform/base/caption.h"

namespace designer {
namespace {

bool IsOfColumns(const Document& document, ElementId member) {
    return document.Name(member) == "DynamicColumns";
}

// The columns or rows that the file has, with their headings. Totals repeat them in the grid.
struct MatrixSide {
    const char *groupings, *grouping, *level, *statics, *heading, *tracks, *track, *size;
};
constexpr MatrixSide ColumnSide = {"ColumnGroupings", "ColumnGrouping", "Height",       "StaticColumns",
                                   "StaticColumn",    "MatrixColumns",  "MatrixColumn", "Width"};
constexpr MatrixSide RowSide = {"RowGroupings", "RowGrouping", "Width",     "StaticRows",
                                "StaticRow",    "MatrixRows",  "MatrixRow", "Height"};

class MatrixTracks {
 public:
    // Raises EditError if headings and cells do not fit the columns and rows.
    MatrixTracks(Document& document, ElementId matrix, Axis axis)
        : m_document(document),
          m_matrix(matrix),
          m_isColumns(axis == Axis::Columns),
          m_side(m_isColumns ? ColumnSide : RowSide),
          m_tracks(ChildrenNamed(document, matrix, m_side.tracks, m_side.track)) {
        for (const ElementId level : ChildrenNamed(document, matrix, m_side.groupings, m_side.grouping)) {
            if (document.Find(level, m_side.statics) != NoElement) {
                m_headings = ChildrenNamed(document, level, m_side.statics, m_side.heading);
            }
        }
        for (const ElementId row : ChildrenNamed(document, matrix, "MatrixRows", "MatrixRow")) {
            m_cells.push_back(ChildrenNamed(document, row, "MatrixCells", "MatrixCell"));
        }
        const std::size_t columns = ChildrenNamed(document, matrix, "MatrixColumns", "MatrixColumn").size();
        const bool areCellsRight = std::all_of(
            m_cells.begin(), m_cells.end(), [columns](const auto& cells) { return cells.size() == columns; });
        const bool areHeadingsRight =
            m_headings.empty() ? m_tracks.size() == 1 : m_headings.size() == m_tracks.size();
        if (m_tracks.empty() || m_cells.empty() || !areCellsRight || !areHeadingsRight) {
            throw EditError("The columns and rows of the matrix do not fit its cells");
        }
    }

    std::size_t Count() const { return m_tracks.size(); }

    // The place in the file of what has this number in the grid.
    std::size_t PlaceOf(std::size_t number) const {
        const TablixGrid grid = GridOf(m_document, m_matrix);
        const ElementId element = (m_isColumns ? grid.columns : grid.rows).at(number).element;
        const auto found = std::find(m_tracks.begin(), m_tracks.end(), element);
        if (found == m_tracks.end()) {
            throw EditError("The columns and rows of the matrix do not fit its cells");
        }
        return static_cast<std::size_t>(found - m_tracks.begin());
    }

    // Returns the element of the new track.
    ElementId Add(std::size_t place, std::size_t like) {
        NewNames names(m_document);
        if (m_headings.empty()) {
            AddHeadings(place, names);
        } else {
            const BoxLook look{.like = ItemInCell(m_document, m_headings[like])};
            Insert(m_headings, place, HeadingXml(BoxXml(m_document, names.Take("Textbox1"), "", look)));
        }
        const std::string size = m_document.TextAt(m_tracks[like], m_side.size).value_or("1in");
        std::string xml = LeafOf(m_side.size, size);
        if (m_isColumns) {
            for (const auto& row : m_cells) {
                Insert(row, place, CellXml(row[like], names));
            }
        } else {
            xml += "<MatrixCells>";
            for (const ElementId cell : m_cells[like]) {
                xml += CellXml(cell, names);
            }
            xml += "</MatrixCells>";
        }
        return Insert(m_tracks, place, ElementXml(m_side.track, xml));
    }

    void Delete(std::vector<std::size_t> places) {
        std::sort(places.begin(), places.end());
        places.erase(std::unique(places.begin(), places.end()), places.end());
        if (places.size() == m_tracks.size()) {
            throw EditError(m_isColumns ? "The matrix has no other column; delete the matrix itself"
                                        : "The matrix has no other row; delete the matrix itself");
        }
        EditBatch batch(m_document);
        for (const std::size_t place : places) {
            batch.Remove(m_headings[place]);
            batch.Remove(m_tracks[place]);
            for (const auto& row : m_cells) {
                m_isColumns ? batch.Remove(row[place]) : void();
            }
        }
        batch.Apply();
    }

    void Move(std::size_t from, std::size_t to) {
        EditBatch batch(m_document);
        const auto move = [&](const std::vector<ElementId>& siblings) {
            const ElementId target = siblings[to];
            const ElementId next = m_document.IdAt(m_document.Tree()[m_document.IndexOf(target)].nextSibling);
            batch.Move(m_document.Parent(target), siblings[from], to < from ? target : next);
        };
        move(m_headings);
        move(m_tracks);
        for (const auto& row : m_cells) {
            m_isColumns ? move(row) : void();
        }
        batch.Apply();
    }

 private:
    ElementId Insert(const std::vector<ElementId>& siblings, std::size_t place, const std::string& xml) {
        const ElementId before =
            place < siblings.size()
                ? siblings[place]
                : m_document.IdAt(m_document.Tree()[m_document.IndexOf(siblings.back())].nextSibling);
        return before == NoElement ? InsertXml(m_document, m_document.Parent(siblings.front()), xml)
                                   : InsertXml(m_document, m_document.Parent(siblings.front()), xml, before);
    }

    std::string HeadingXml(const std::string& box) const {
        return ElementXml(m_side.heading, ElementXml("ReportItems", box));
    }

    std::string CellXml(ElementId like, NewNames& names) const {
        const BoxLook look{.like = ItemInCell(m_document, like)};
        return "<MatrixCell><ReportItems>" + BoxXml(m_document, names.Take("Textbox1"), "", look) +
               "</ReportItems></MatrixCell>";
    }

    // The innermost level of the side: until now the only track had the headings of its groups alone.
    void AddHeadings(std::size_t place, NewNames& names) {
        const auto levels = ChildrenNamed(m_document, m_matrix, m_side.groupings, m_side.grouping);
        if (levels.empty()) {
            throw EditError("The matrix has no groups");
        }
        const BoxLook look{
            ItemInCell(m_document,
                       m_document.Find(levels.back(), m_isColumns ? "DynamicColumns" : "DynamicRows")),
            false, false};
        const std::string field = FieldOfCell(m_cells.front().front());
        std::string boxes[2];
        for (std::size_t at = 0; at < 2; ++at) {
            boxes[at] = HeadingXml(
                BoxXml(m_document, names.Take("Textbox1"), at == place ? std::string() : field, look));
        }
        const std::string size = m_document.TextAt(levels.back(), m_side.level).value_or("1in");
        const std::string grouping(m_side.grouping), statics(m_side.statics);
        const ElementId next =
            m_document.IdAt(m_document.Tree()[m_document.IndexOf(levels.back())].nextSibling);
        InsertXml(m_document, m_document.Parent(levels.back()),
                  "<" + grouping + ">" + LeafOf(m_side.level, size) + "<" + statics + ">" + boxes[0] +
                      boxes[1] + "</" + statics + "></" + grouping + ">",
                  next);
    }

    // The title of the field that the cell shows, or sums.
    std::string FieldOfCell(ElementId cell) const {
        const std::string value = TextOfBox(m_document, ItemInCell(m_document, cell));
        const std::size_t begin = value.find("Fields!"), end = value.find(".Value", begin);
        const bool isOne = begin != std::string::npos && end != std::string::npos;
        const std::string field = isOne ? FieldOfValue("=" + value.substr(begin, end + 6 - begin)) : "";
        return CaptionOf(field);
    }

    Document& m_document;
    const ElementId m_matrix;
    const bool m_isColumns;
    const MatrixSide& m_side;
    std::vector<ElementId> m_tracks, m_headings;
    std::vector<std::vector<ElementId>> m_cells;  // by rows
};

}  // namespace

// The groupings stand beside each other in the file, and each is around the next one.
ElementId AddMatrixGroup(Document& document, ElementId member, GroupPlace place, const NewGroup& group,
                         const std::string& groupingXml) {
    if (place == GroupPlace::Before || place == GroupPlace::After) {
        throw EditError("A Matrix of an older schema cannot have groups beside each other");
    }
    if (group.hasHeader || group.hasFooter) {
        throw EditError("A group of a Matrix of an older schema has no header and no footer; add a total");
    }
    const bool isColumns = IsOfColumns(document, member);
    const ElementId level = document.Parent(member);
    const char* const size = isColumns ? "Height" : "Width";
    const std::string dynamic = isColumns ? "DynamicColumns" : "DynamicRows";
    const std::string tag = isColumns ? "ColumnGrouping" : "RowGrouping";
    NewNames names(document);
    const std::string box = BoxXml(document, names.Take("Textbox1"), group.expression,
                                   {ItemInCell(document, member), false, false});
    const std::string xml =
        ElementXml(tag, LeafOf(size, document.TextAt(level, size).value_or("1in")) +
                            ElementXml(dynamic, groupingXml + ElementXml("ReportItems", box)));
    const ElementId next = document.IdAt(document.Tree()[document.IndexOf(level)].nextSibling);
    const ElementId added =
        InsertXml(document, document.Parent(level), xml, place == GroupPlace::Parent ? level : next);
    return document.Find(added, dynamic);
}

void DeleteMatrixGroup(Document& document, ElementId member) {
    const ElementId level = document.Parent(member);
    const std::string dynamic = document.Name(member);
    const std::vector<ElementId> levels = document.Children(document.Parent(level));
    const auto groups = std::count_if(levels.begin(), levels.end(), [&](ElementId one) {
        return document.Find(one, dynamic) != NoElement;
    });
    if (groups < 2) {
        throw EditError(IsOfColumns(document, member) ? "The matrix has no other group of columns"
                                                      : "The matrix has no other group of rows");
    }
    Remove(document, level);
}

void AddMatrixTotal(Document& document, ElementId member, Side side) {
    if (document.Find(member, "Subtotal") != NoElement) {
        throw EditError("The group has a total already");
    }
    NewNames names(document);
    const std::string box =
        BoxXml(document, names.Take("Textbox1"), "Total", {ItemInCell(document, member), false, true});
    InsertXml(document, member,
              "<Subtotal><ReportItems>" + box + "</ReportItems>" +
                  (side == Side::Before ? "<Position>Before</Position>" : "") + "</Subtotal>");
}

ElementId EmptyMatrixHeading(const Document& document, const TablixGrid& grid, const GridCell& cell) {
    for (const GridCell& header : grid.cells) {
        const std::string name = document.Name(header.element);
        const bool isBeside = (name == "StaticColumn" && header.place.left == cell.place.left) ||
                              (name == "StaticRow" && header.place.top == cell.place.top);
        if (isBeside && header.item != NoElement && document.Name(header.item) == "Textbox" &&
            TextOfBox(document, header.item).empty()) {
            return header.item;
        }
    }
    return NoElement;
}

std::size_t AddMatrixTrack(Document& document, ElementId matrix, Axis axis, std::size_t track, Side side) {
    MatrixTracks tracks(document, matrix, axis);
    const std::size_t like = tracks.PlaceOf(track);
    const ElementId added = tracks.Add(like + (side == Side::After ? 1 : 0), like);
    const TablixGrid grid = GridOf(document, matrix);
    const std::vector<GridTrack>& all = axis == Axis::Columns ? grid.columns : grid.rows;
    const auto found =
        std::find_if(all.begin(), all.end(), [added](const GridTrack& one) { return one.element == added; });
    return static_cast<std::size_t>(found - all.begin());
}

void DeleteMatrixTracks(Document& document, ElementId matrix, Axis axis, std::size_t first,
                        std::size_t count) {
    MatrixTracks tracks(document, matrix, axis);
    std::vector<std::size_t> places;
    for (std::size_t track = first; track < first + count; ++track) {
        places.push_back(tracks.PlaceOf(track));
    }
    tracks.Delete(std::move(places));
}

void MoveMatrixTrack(Document& document, ElementId matrix, Axis axis, std::size_t from, std::size_t to) {
    MatrixTracks tracks(document, matrix, axis);
    const std::size_t place = tracks.PlaceOf(from), target = tracks.PlaceOf(to);
    if (place == target || (from < to) != (place < target)) {
        throw EditError("A total has the same columns and rows as its group");
    }
    tracks.Move(place, target);
}

}  // namespace designer
