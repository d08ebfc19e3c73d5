// SPDX-License-Identifier: GPL-3.0-or-later
// The properties that the pane shows of an element, and how their values are read and written.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "designer/model/design_model.h"

namespace designer {

struct PropertyRow {
    enum class Kind { Name, ItemText, Text, Size, SignedSize, Whole };
    Kind kind = Kind::Text;
    std::string category, name;
    std::string path;     // SourceTree::Find; of a Name and an ItemText empty
    std::string initial;  // what the property is if the file does not say; empty: there is no such value
    bool operator==(const PropertyRow&) const = default;
};

// Returns the properties of an item, a band or the report. Empty for any other element.
std::vector<PropertyRow> PropertyRowsOf(const DesignModel& model, ElementId id);

// Returns the value that the file has; nothing if it does not say.
std::optional<std::string> PropertyValue(const Document& document, ElementId id, const PropertyRow& row);

// Writes the value. A number without a unit gets the one of the report. Raises EditError, which says what is expected,
// for a value that does not fit.
void SetPropertyValue(Document& document, ElementId id, const PropertyRow& row, const std::string& value);

// Takes the property out of the file. A name stays.
void ResetProperty(Document& document, ElementId id, const PropertyRow& row);

}  // namespace designer
