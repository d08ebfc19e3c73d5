// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/tables/cells.h"

#include <algorithm>
#include <optional>

#include "designer/document/editing.h"
#include "designer/document/properties/properties.h"
#include "designer/document/tablix_grid.h"
#include "designer/tables/cell_text.h"
#include "designer/tables/fields.h"
#include "designer/tables/older_matrix.h"
#include "designer/tables/tablix_shape.h"
#include "designer/tables/tracks.h"
#include "platform/base/caption.h"

namespace designer {
namespace {

const GridCell* CellAt(const TablixGrid& grid, std::size_t row, std::size_t column) {
    const auto found = std::find_if(grid.cells.begin(), grid.cells.end(), [&](const GridCell& cell) {
        return cell.part == GridCell::Part::Body && row >= cell.row && row < cell.row + cell.rowSpan &&
               column >= cell.column && column < cell.column + cell.columnSpan;
    });
    return found == grid.cells.end() ? nullptr : &*found;
}

// Whether a row of the grid, or its column, holds one row of data.
bool IsOfDetails(const Document& document, ElementId region, std::size_t row, std::size_t column) {
    const std::string kind = document.Name(region);
    if (kind == "Table") {
        const ElementId element = GridOf(document, region).rows.at(row).element;
        return document.Name(document.Parent(document.Parent(element))) == "Details";
    }
    if (kind != "Tablix") {
        return false;
    }
    const TablixShape shape(document, region);
    for (const Axis axis : {Axis::Rows, Axis::Columns}) {
        for (const int member : shape.PathTo(axis, shape.LeafOf(axis, axis == Axis::Rows ? row : column))) {
            if (shape.Members(axis)[static_cast<std::size_t>(member)].isDetails) {
                return true;
            }
        }
    }
    return false;
}

// Returns the empty text box above the details row that says what is in the column.
ElementId EmptyHead(const Document& document, ElementId region, const TablixGrid& grid, std::size_t row,
                    std::size_t column) {
    for (std::size_t above = 0; above < row; ++above) {
        const GridCell* const cell = CellAt(grid, above, column);
        if (!IsInGroup(document, region, Axis::Rows, above) && cell && cell->columnSpan == 1) {
            const bool isEmpty = cell->item != NoElement && document.Name(cell->item) == "Textbox" &&
                                 TextOfBox(document, cell->item).empty();
            return isEmpty ? cell->item : NoElement;
        }
    }
    return NoElement;
}

void PutText(Document& document, ElementId cell, const std::string& text) {
    if (const ElementId item = ItemInCell(document, cell); item != NoElement) {
        SetTextOfBox(document, item, text);
        return;
    }
    const std::string kind = document.Name(cell);
    const bool isOlder = IsOlderSchema(document);
    const ElementId holder = EnsureChild(document, cell, isOlder ? "ReportItems" : "CellContents");
    InsertXml(document, holder, BoxXml(document, NewNames(document).Take("Textbox1"), text, {}));
}

void AlignRight(Document& document, ElementId item) {
    if (item != NoElement && document.Name(item) == "Textbox") {
        SetText(document, item,
                IsOlderSchema(document) ? "Style/TextAlign" : "Paragraphs/Paragraph/Style/TextAlign",
                "Right");
    }
}

void RefuseOlderMatrix(const Document& document, ElementId region) {
    if (document.Name(region) == "Matrix") {
        throw EditError("A Matrix of an older schema cannot have merged cells");
    }
}

// Returns the text of the merged cells: what the empty ones among them say is nothing.
std::string JoinedText(const Document& document, const std::vector<const GridCell*>& cells) {
    std::string text;
    for (const GridCell* cell : cells) {
        if (cell->item != NoElement && document.Name(cell->item) != "Textbox") {
            throw EditError("Only cells with text can be merged; one holds a " + document.Name(cell->item));
        }
        const std::string own = TextOfBox(document, cell->item);
        if (!text.empty() && !own.empty() && (text.starts_with('=') || own.starts_with('='))) {
            throw EditError("Cells cannot be merged if one of them has an expression and another one a text");
        }
        text += (text.empty() || own.empty() ? "" : " ") + own;
    }
    return text;
}

void CheckSameGroup(const Document& document, ElementId region, std::size_t first, std::size_t count) {
    if (document.Name(region) != "Tablix") {
        return;
    }
    const TablixShape shape(document, region);
    const int group = shape.GroupAround(Axis::Columns, shape.LeafOf(Axis::Columns, first));
    for (std::size_t column = first + 1; column < first + count; ++column) {
        const int other = shape.GroupAround(Axis::Columns, shape.LeafOf(Axis::Columns, column));
        if (other != group) {
            throw EditError("Cells of different column groups cannot be merged");
        }
    }
}

}  // namespace

void MergeCells(Document& document, ElementId region, std::size_t row, std::size_t firstColumn,
                std::size_t count) {
    const StepGroup group(document, "Merge cells");
    RefuseOlderMatrix(document, region);
    const TablixGrid grid = GridOf(document, region);
    std::vector<const GridCell*> cells;
    for (std::size_t column = firstColumn; column < firstColumn + count;) {
        const GridCell* const cell = CellAt(grid, row, column);
        if (!cell || cell->row != row || cell->rowSpan != 1 || cell->column != column) {
            throw EditError("These cells cannot be merged");
        }
        cells.push_back(cell);
        column += cell->columnSpan;
    }
    if (cells.size() < 2) {
        throw EditError("Select two cells of a row at least to merge them");
    }
    CheckSameGroup(document, region, firstColumn, count);
    const std::string text = JoinedText(document, cells);
    std::size_t span = 0;
    std::vector<std::string> names;
    for (const GridCell* cell : cells) {
        span += cell->columnSpan;
        const std::vector<std::string> own =
            cell == cells.front() ? std::vector<std::string>{} : ScopesIn(document, cell->element);
        names.insert(names.end(), own.begin(), own.end());
    }
    const bool isTable = document.Name(region) == "Table";
    for (std::size_t index = 1; index < cells.size(); ++index) {
        const ElementId contents = document.Find(cells[index]->element, "CellContents");
        if (isTable) {
            Remove(document, cells[index]->element);
        } else if (contents != NoElement) {
            Remove(document, contents);
        }
    }
    const ElementId kept = cells.front()->element;
    if (text != TextOfBox(document, ItemInCell(document, kept))) {
        PutText(document, kept, text);
    }
    SetText(document, kept, isTable ? "ColSpan" : "CellContents/ColSpan", std::to_string(span));
    RefuseIfUsed(document, names);
}

void SplitCell(Document& document, ElementId region, std::size_t row, std::size_t column) {
    const StepGroup group(document, "Split cell");
    RefuseOlderMatrix(document, region);
    const TablixGrid grid = GridOf(document, region);
    const GridCell* const merged = CellAt(grid, row, column);
    if (!merged || (merged->columnSpan == 1 && merged->rowSpan == 1)) {
        throw EditError("The cell is not merged");
    }
    const BoxLook look{.like = merged->item};
    NewNames names(document);
    EditBatch batch(document);
    if (document.Name(region) == "Table") {
        const ElementId cells = document.Parent(merged->element);
        const ElementId next = document.IdAt(document.Tree()[document.IndexOf(merged->element)].nextSibling);
        for (std::size_t index = 1; index < merged->columnSpan; ++index) {
            batch.Insert(cells, next,
                         "<TableCell><ReportItems>" + BoxXml(document, names.Take("Textbox1"), {}, look) +
                             "</ReportItems></TableCell>");
        }
        batch.Remove(document.Find(merged->element, "ColSpan"));
    } else {
        const TablixShape shape(document, region);
        for (std::size_t r = merged->row; r < merged->row + merged->rowSpan; ++r) {
            for (std::size_t c = merged->column; c < merged->column + merged->columnSpan; ++c) {
                const ElementId cell = shape.Cell(Axis::Rows, r, c);
                if (cell != merged->element && document.Find(cell, "CellContents") == NoElement) {
                    batch.Insert(cell, NoElement,
                                 "<CellContents>" + BoxXml(document, names.Take("Textbox1"), {}, look) +
                                     "</CellContents>");
                }
            }
        }
        for (const char* path : {"CellContents/ColSpan", "CellContents/RowSpan"}) {
            if (const ElementId span = document.Find(merged->element, path); span != NoElement) {
                batch.Remove(span);
            }
        }
    }
    batch.Apply();
}

void PutField(Document& document, ElementId region, ElementId cell, std::string_view field) {
    const StepGroup group(document, "Show " + std::string(field));
    const TablixGrid grid = GridOf(document, region);
    const auto found = std::find_if(grid.cells.begin(), grid.cells.end(),
                                    [cell](const GridCell& one) { return one.element == cell; });
    if (found == grid.cells.end()) {
        throw EditError("The table has no such cell");
    }
    const bool isBody = found->part == GridCell::Part::Body;
    const bool isDetails = isBody && IsOfDetails(document, region, found->row, found->column);
    const bool isSum = isBody && !isDetails && IsNumericField(document, region, field);
    const ElementId head = isDetails ? EmptyHead(document, region, grid, found->row, found->column)
                           : isBody && document.Name(region) == "Matrix"
                               ? EmptyMatrixHeading(document, grid, *found)
                               : NoElement;
    PutText(document, cell, isSum ? FieldSum(field) : FieldValue(field));
    if (head != NoElement) {
        SetTextOfBox(document, head, CaptionOf(field));
    }
}

std::size_t AddFieldColumn(Document& document, ElementId region, std::size_t at, std::string_view field) {
    const StepGroup group(document, "Add column " + std::string(field));
    const std::size_t column = AddTrack(document, region, Axis::Columns, at == 0 ? 0 : at - 1,
                                        at == 0 ? Side::Before : Side::After, GroupSide::Inside);
    const TablixGrid grid = GridOf(document, region);
    std::optional<std::size_t> shown;
    // Totals of a Matrix have no cells of their own.
    const bool isMatrix = document.Name(region) == "Matrix";
    for (std::size_t row = 0; row < grid.rows.size() && !shown; ++row) {
        if (CellAt(grid, row, column) && (isMatrix || IsOfDetails(document, region, row, column))) {
            shown = row;
        }
    }
    const std::size_t row = shown.value_or(grid.rows.size() - 1);
    const GridCell* const cell = CellAt(grid, row, column);
    if (!cell || cell->column != column) {
        throw EditError("A merged cell is where the field would be; split it first");
    }
    const ElementId head = EmptyHead(document, region, grid, row, column);
    PutField(document, region, cell->element, field);
    if (IsNumericField(document, region, field)) {
        AlignRight(document, ItemInCell(document, cell->element));
        AlignRight(document, head);
    }
    return column;
}

}  // namespace designer
