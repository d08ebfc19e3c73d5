// SPDX-License-Identifier: GPL-3.0-or-later
// ElementsAt and TrackRowsOf of property_rows.h (MS-RDL, TablixMember, TablixColumn, TablixRow; for the
// schemas before 2008 TableColumn, TableRow, MatrixColumn and MatrixRow).
#include <algorithm>

#include "designer/model/table_selection.h"
#include "designer/panes/property_rows.h"
#include "designer/tables/tablix_shape.h"

namespace designer {
namespace {

void AddOnce(std::vector<ElementId>& ids, ElementId id) {
    if (id != NoElement && std::find(ids.begin(), ids.end(), id) == ids.end()) {
        ids.push_back(id);
    }
}

std::vector<ElementId> TracksIn(const DesignModel& model, const TableSelection& table, Axis axis) {
    const TablixGrid grid = GridOf(model.Source(), table.region);
    const auto& tracks = axis == Axis::Columns ? grid.columns : grid.rows;
    const TrackRange range = axis == Axis::Columns ? *table.columns : *table.rows;
    std::vector<ElementId> ids;
    for (std::size_t track = range.first; track < std::min(range.first + range.count, tracks.size());
         ++track) {
        AddOnce(ids, tracks[track].element);
    }
    return ids;
}

// A selected header belongs to its member, a cell of the body to the innermost members of its tracks.
std::vector<ElementId> MembersIn(const DesignModel& model, const TableSelection& table, Axis axis) {
    const Document& document = model.Source();
    std::vector<ElementId> ids;
    if (document.Name(table.region) != "Tablix") {
        for (const ElementId track : TracksIn(model, table, axis)) {
            const ElementId rows = document.Parent(track);
            const ElementId band = rows == NoElement ? NoElement : document.Parent(rows);
            const std::string name = band == NoElement ? "" : document.Name(band);
            AddOnce(ids, name == "Header" || name == "Footer" ? band : NoElement);
        }
        return ids;
    }
    try {
        const TablixShape shape(document, table.region);
        const ElementId member = document.Parent(table.cell);
        if (shape.IndexOf(axis, member) != NoIndex) {
            return {member};
        }
        const TrackRange range = axis == Axis::Columns ? *table.columns : *table.rows;
        for (std::size_t track = range.first; track < range.first + range.count; ++track) {
            AddOnce(ids, shape.Members(axis)[static_cast<std::size_t>(shape.LeafOf(axis, track))].id);
        }
    } catch (const EditError&) {
        ids.clear();  // a damaged table has no members to change
    }
    return ids;
}

}  // namespace

std::vector<ElementId> ElementsAt(const DesignModel& model, PropertyPlace place) {
    if (place == PropertyPlace::Selection) {
        return model.Selection();
    }
    const auto table = SelectedTable(model);
    const bool isColumn = place == PropertyPlace::Column || place == PropertyPlace::ColumnMember;
    const Axis axis = isColumn ? Axis::Columns : Axis::Rows;
    if (!table || table->cell == NoElement || !(isColumn ? table->columns : table->rows)) {
        return {};
    }
    const bool isTrack = place == PropertyPlace::Column || place == PropertyPlace::Row;
    return isTrack ? TracksIn(model, *table, axis) : MembersIn(model, *table, axis);
}

std::vector<PropertyRow> TrackRowsOf(const DesignModel& model) {
    const Document& document = model.Source();
    std::vector<PropertyRow> rows;
    for (const PropertyPlace place :
         {PropertyPlace::Column, PropertyPlace::ColumnMember, PropertyPlace::Row, PropertyPlace::RowMember}) {
        const std::vector<ElementId> ids = ElementsAt(model, place);
        for (const Property* property :
             ids.empty() ? std::vector<const Property*>{} : PropertiesOf(document, ids.front())) {
            const bool isOfHeader = property->path.starts_with("TablixHeader/");
            if (!isOfHeader || std::all_of(ids.begin(), ids.end(), [&](ElementId id) {
                    return document.Find(id, "TablixHeader") != NoElement;
                })) {
                rows.push_back({property, {}, place});
            }
        }
    }
    return rows;
}

}  // namespace designer
