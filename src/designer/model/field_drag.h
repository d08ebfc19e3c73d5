// SPDX-License-Identifier: GPL-3.0-or-later
// A field of a data set on its way to a place of the report: by the mouse, or by a command.
#pragma once

#include <QMimeData>
#include <QPointF>
#include <optional>
#include <string>

#include "designer/model/design_model.h"

namespace designer {

inline constexpr const char* FieldMimeType = "application/x-oxbow-courier-field";
inline constexpr const char* ValueMimeType = "application/x-oxbow-courier-value";

struct DraggedField {
    std::string dataSet, field;
};

QMimeData* MimeDataOf(const DraggedField& field);  // the caller owns it
std::optional<DraggedField> FieldIn(const QMimeData& data);

// A parameter or built-in field, which a text box shows, or an embedded picture: one of the two.
struct DraggedValue {
    std::string expression = {}, picture = {};
};

QMimeData* MimeDataOfValue(const DraggedValue& value);  // the caller owns it
std::optional<DraggedValue> ValueIn(const QMimeData& data);

struct FieldTarget {
    enum class Kind {
        None,
        Cell,    // of a region: PutField
        Column,  // a new one of a region, with the number
        Group,   // a parent of the region's outermost group of rows
        Box,     // a text box that is in no cell itself: it shows the field
        Page     // a place of a band, in points: a text box, or a new table in the body
    };
    Kind kind = Kind::None;
    ElementId region = NoElement, cell = NoElement;  // of a Box the region is the text box
    std::size_t column = 0, band = 0;
    QPointF place;
};

// Returns the field as the text box shows it: within a table or list of its data set the value of the row,
// else the sum of a number, and of anything else the value of the first row.
std::string ExpressionIn(const DesignModel& model, ElementId box, const DraggedField& field);

// Whether the item is a text box that shows a field without being a cell of a table.
bool IsFreeBox(const DesignModel& model, ElementId item);

// Returns where a command puts a field: into the selected text box or cell, else as a new last column of the
// selected table, else into the body of the section of the selection, below all that is there.
FieldTarget TargetOfSelection(const DesignModel& model);

// Shows the field there, as one step, and selects what shows it. Returns false if that was refused.
bool PlaceField(DesignModel& model, const DraggedField& field, const FieldTarget& target);

// Whether the item shows such a value: a text box an expression, an image a picture.
bool TakesValue(const DesignModel& model, ElementId item, const DraggedValue& value);
// Shows the value in the item, or in a new one at the place of the band, in points; as one step. Selects what
// shows it. Returns false if that was refused.
bool PlaceValue(DesignModel& model, const DraggedValue& value, ElementId item);
bool PlaceValue(DesignModel& model, const DraggedValue& value, std::size_t band, QPointF place);

}  // namespace designer
