// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/item_dialogs/element_list.h"

#include <algorithm>

#include "designer/document/editing.h"
#include "designer/document/properties/properties.h"
#include "designer/document/xml_text.h"
#include "designer/model/element_rows.h"
#include "designer/tables/tablix_shape.h"

namespace designer {
namespace {

bool IsAttribute(const ElementList::Cell& cell) {
    return cell.path.starts_with('@');
}

std::string CellOf(const Document& document, ElementId id, const ElementList::Cell& cell) {
    const auto text =
        IsAttribute(cell) ? document.Attribute(id, cell.path.substr(1)) : document.TextAt(id, cell.path);
    return text.value_or(std::string(cell.missing));
}

std::string XmlOfRow(const ElementList& list, const RowTable::Row& row) {
    std::string tag = "<" + std::string(list.element), content;
    for (std::size_t index = 0; index < list.cells.size(); ++index) {
        const ElementList::Cell& cell = list.cells[index];
        if (IsAttribute(cell)) {
            tag += " " + std::string(cell.path.substr(1)) + "=\"" + EscapedValue(row.cells.at(index), '"') +
                   "\"";
        } else if (cell.path.empty()) {
            content += EscapedText(row.cells.at(index), "\n");
        } else if (row.cells.at(index) != cell.missing) {
            content += LeafOf(cell.path, row.cells.at(index));
        }
    }
    return tag + ">" + content + "</" + std::string(list.element) + ">";
}

void SetCell(Document& document, ElementId id, const ElementList::Cell& cell, const std::string& text) {
    if (IsAttribute(cell)) {
        SetAttribute(document, id, cell.path.substr(1), text);
    } else {
        SetText(document, id, cell.path, text);
    }
}

}  // namespace

ElementList SortList(const Document& document) {
    return IsOlderSchema(document)
               ? ElementList{"Sorting", "SortBy", {{"SortExpression"}, {"Direction", "Ascending"}}}
               : ElementList{"SortExpressions", "SortExpression", {{"Value"}, {"Direction", "Ascending"}}};
}

ElementList GroupExpressionList() {
    return {"GroupExpressions", "GroupExpression", {{""}}};
}

ElementList VariableList() {
    return {"Variables", "Variable", {{"@Name"}, {"Value"}}};
}

std::vector<RowTable::Row> RowsOf(const Document& document, ElementId owner, const ElementList& list) {
    std::vector<RowTable::Row> rows;
    for (const ElementId id : ChildrenNamed(document, owner, list.collection, list.element)) {
        rows.push_back({static_cast<int>(rows.size()), {}});
        RowTable::Row& row = rows.back();
        for (const ElementList::Cell& cell : list.cells) {
            row.cells.push_back(CellOf(document, id, cell));
        }
    }
    return rows;
}

void PutRows(Document& document, ElementId owner, const ElementList& list,
             const std::vector<RowTable::Row>& rows) {
    const std::vector<RowTable::Row> old = RowsOf(document, owner, list);
    if (rows == old) {
        return;
    }
    std::vector<int> places;
    std::transform(rows.begin(), rows.end(), std::back_inserter(places),
                   [](const RowTable::Row& row) { return row.place; });
    const std::vector<ElementId> ids = PutRows(document, owner, list.collection, list.element, places,
                                               [&](std::size_t row) { return XmlOfRow(list, rows[row]); });
    for (std::size_t row = 0; row < rows.size(); ++row) {
        for (std::size_t cell = 0; rows[row].place != NewRow && cell < list.cells.size(); ++cell) {
            const std::string& text = rows[row].cells.at(cell);
            if (text != old.at(static_cast<std::size_t>(rows[row].place)).cells.at(cell)) {
                SetCell(document, ids[row], list.cells[cell], text);
            }
        }
    }
}

}  // namespace designer
