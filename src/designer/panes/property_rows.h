// SPDX-License-Identifier: GPL-3.0-or-later
// The rows of the property pane: what the selected element can have set, and of the report also what its
// section and its page can.
#pragma once

#include <string>
#include <vector>

#include "designer/document/properties/properties.h"
#include "designer/model/design_model.h"

namespace designer {

struct PropertyRow {
    const Property* property = nullptr;
    std::string
        part;  // path from the selected element to the one that has the property; empty: it is its own
    bool operator==(const PropertyRow&) const = default;
};

// Returns the properties of an item, a band or the report. Places and sizes are left out where the item has
// none of its own. Empty for any other element.
std::vector<PropertyRow> PropertyRowsOf(const DesignModel& model, ElementId id);

PropertyValue ValueOfRow(const Document& document, ElementId id, const PropertyRow& row);
// Raise EditError as SetValue and ResetValue. A size that is a number only gets the unit of the report.
void SetRow(Document& document, ElementId id, const PropertyRow& row, const std::string& value);
void ResetRow(Document& document, ElementId id, const PropertyRow& row);

// Returns what can be chosen for the property; empty if it is typed.
std::vector<std::string> ChoicesFor(const Document& document, const Property& property);

}  // namespace designer
