// SPDX-License-Identifier: GPL-3.0-or-later
// The rows of the property pane: what the selected element can have set, and of the report also what its
// section and its page can.
#pragma once

#include <string>
#include <vector>

#include "designer/document/properties/properties.h"
#include "designer/model/design_model.h"

namespace designer {

// Whose property it is: that of what is selected, or of the columns or rows that the selected cells are in.
// A member is what a column or row is in the hierarchy, in older tables the header or footer of a row.
enum class PropertyPlace { Selection, Column, ColumnMember, Row, RowMember };

struct PropertyRow {
    const Property* property = nullptr;
    std::string
        part;  // path from the selected element to the one that has the property; empty: it is its own
    PropertyPlace place = PropertyPlace::Selection;
    bool operator==(const PropertyRow&) const = default;
};

// Returns the properties of an item, a band, the report, a group with its member, or another part such as a
// data set. Places and sizes are left out where the item has none of its own.
std::vector<PropertyRow> PropertyRowsOf(const DesignModel& model, ElementId id);

// Returns the elements that a property at this place belongs to, given what is selected in the model.
std::vector<ElementId> ElementsAt(const DesignModel& model, PropertyPlace place);
// Returns the properties that all of these columns or rows have; none if no cell is selected.
std::vector<PropertyRow> TrackRowsOf(const DesignModel& model);

PropertyValue ValueOfRow(const Document& document, ElementId id, const PropertyRow& row);
// Returns the value as SetRow writes it: a size that is a number only gets a unit, that of the report or, of
// fonts, borders, padding and indents, points.
std::string CompleteValue(const Document& document, const PropertyRow& row, const std::string& value);
// Raise EditError as SetValueOfAll and ResetValueOfAll.
void SetRow(Document& document, const std::vector<ElementId>& ids, const PropertyRow& row,
            const std::string& value);
void ResetRow(Document& document, const std::vector<ElementId>& ids, const PropertyRow& row);

// Returns the value with the unit of the report if it is a number alone.
std::string WithUnit(const Document& document, const std::string& value);

// Returns what can be chosen for the property; empty if it is typed.
std::vector<std::string> ChoicesFor(const Document& document, const Property& property);

}  // namespace designer
