// SPDX-License-Identifier: GPL-3.0-or-later
// What is selected of a table, matrix or Tablix: the region, the tracks of the selected cells, and a group.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "designer/document/tablix_grid.h"
#include "designer/model/design_model.h"
#include "designer/tables/groups.h"

namespace designer {

// Tracks that follow each other.
struct TrackRange {
    std::size_t first = 0, count = 0;
};

struct TableSelection {
    ElementId region = NoElement;
    ElementId cell = NoElement;               // of the leader, as TablixGrid has it; NoElement: none
    std::optional<TrackRange> columns, rows;  // of the selected cells, headers or group
    bool isBody = false;                      // the leader is in a cell of the body
    std::optional<Axis> groupAxis;            // where GroupOf looks for a group
    ElementId group = NoElement;  // a member that is selected itself, or by its header in a Matrix
};

// Returns nullopt if neither a region, nor a cell of one, nor a group is selected.
std::optional<TableSelection> SelectedTable(const DesignModel& model);

// Returns the group that a command is for: the selected one, else the innermost one around the cells.
std::optional<RegionGroup> GroupOf(const DesignModel& model, const TableSelection& table);

// Returns the items in the body's cells of these rows and columns.
std::vector<ElementId> ItemsOfCells(const DesignModel& model, ElementId region, TrackRange rows,
                                    TrackRange columns);

}  // namespace designer
