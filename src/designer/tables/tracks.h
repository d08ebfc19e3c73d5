// SPDX-License-Identifier: GPL-3.0-or-later
// Columns and rows of a table, matrix or Tablix: added, deleted, moved and resized. Tracks are numbered as in
// TablixGrid. Each function is one step of the document. All raise EditError, and change nothing, for what
// the region's schema cannot have and for what would leave a damaged report.
#pragma once

#include <cstddef>
#include <functional>
#include <string>

#include "designer/document/document.h"
#include "designer/tables/cell_text.h"
#include "designer/tables/tablix_shape.h"

namespace designer {

enum class Side { Before, After };

// Whether a new track becomes a part of the innermost group that the track is in.
enum class GroupSide { Inside, Outside };

// Whether the track is in a group, so that GroupSide::Outside is possible.
bool IsInGroup(const Document& document, ElementId region, Axis axis, std::size_t track);

// Adds a column or row beside the track, with the size and the look of it, and returns its number.
std::size_t AddTrack(Document& document, ElementId region, Axis axis, std::size_t track, Side side,
                     GroupSide groupSide, const std::string& step = {});

// Deletes `count` tracks from `first` on, with their members of the hierarchy. Groups that are left without
// tracks go too. Refuses all tracks of a region, and tracks whose items something else refers to.
void DeleteTracks(Document& document, ElementId region, Axis axis, std::size_t first, std::size_t count,
                  const std::string& step = {});

// Moves a track; `to` is its number afterwards.
void MoveTrack(Document& document, ElementId region, Axis axis, std::size_t from, std::size_t to,
               const std::string& step = {});

// Sets the width of a column or the height of a row, in points.
void SetTrackSize(Document& document, ElementId region, Axis axis, std::size_t track, double points,
                  const std::string& step = {});

// --- Parts that edits of groups share. All are edits of the step that is open. ---

// What a cell of a new track shows.
struct NewCell {
    std::string value;
    BoxLook look;
};
using CellMaker = std::function<NewCell(std::size_t across)>;

// Adds a track to the body of a Tablix, before the track `at`; a merged cell that spans the place grows.
void InsertBodyTrack(Document& document, const TablixShape& shape, Axis axis, std::size_t at,
                     std::size_t like, const CellMaker& make);

// Returns a static member with as many headers as the member and what is first in it have. `label` is what
// the first header says; it looks like that of the member, and is bold if the label is. `properties` follow
// them.
std::string StaticMemberXml(const Document& document, const TablixShape& shape, Axis axis, int member,
                            const NewCell& label, const std::string& properties, NewNames& names);

// The region's own width and height, where they are written, become those of its parts.
void FollowSize(Document& document, ElementId region);

// Raises EditError if something refers to one of the names, which no element has any more.
void RefuseIfUsed(const Document& document, const std::vector<std::string>& names);

}  // namespace designer
