// SPDX-License-Identifier: GPL-3.0-or-later
// Groups of rows and columns: listed, added, deleted, and their totals. Each function that changes the
// document is one step of it, and raises EditError for what cannot be done.
#pragma once

#include <string>
#include <vector>

#include "designer/document/document.h"
#include "designer/tables/tracks.h"

namespace designer {

struct RegionGroup {
    ElementId member = NoElement;      // TablixMember, TableGroup, Details, DynamicRows or DynamicColumns
    ElementId group = NoElement;       // Group or Grouping; NoElement: details without one
    std::string name;                  // empty if it has none
    std::string expression;            // the first one; empty of details
    int depth = 0;                     // of groups around it
    std::size_t first = 0, count = 0;  // its tracks
};

// Returns the groups of a side of a table, matrix or Tablix; those within others come after them.
std::vector<RegionGroup> GroupsOf(const Document& document, ElementId region, Axis axis);

enum class GroupPlace { Parent, Child, Before, After };

struct NewGroup {
    std::string expression;  // =Fields!Region.Value; instances are sorted by it
    bool hasHeader = false;  // a row, or column, of its own before those of the group
    bool hasFooter = false;
};

// Adds a group around a member, within it or beside it, and returns its member. A group beside another one
// has one track of its own. Its value stands in a header of its own or, in a table without row headers, in
// the first cell of its header row.
ElementId AddGroup(Document& document, ElementId region, Axis axis, ElementId member, GroupPlace place,
                   const NewGroup& group);

// What becomes of the rows or columns of a group that is deleted; those that stay are static ones.
enum class OwnTracks { Stay, Go };

void DeleteGroup(Document& document, ElementId region, Axis axis, ElementId member, OwnTracks tracks);

// Adds a row, or column, before or after a group with the sums of the numbers that its cells show. Returns
// its number.
std::size_t AddTotal(Document& document, ElementId region, Axis axis, ElementId member, Side side);

}  // namespace designer
