// SPDX-License-Identifier: GPL-3.0-or-later
// The properties of several elements at once, by the names that users see.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "designer/model/design_model.h"
#include "designer/panes/property_rows.h"

namespace designer {

class SelectionValues {
 public:
    // The model must live as long as this. The properties are those that the elements have now.
    SelectionValues(const DesignModel& model, std::vector<ElementId> ids);

    const std::vector<ElementId>& Ids() const { return m_ids; }
    // Returns the property of the last of the elements that have one; null if none has. A line has its own
    // look under the names of a border.
    const PropertyRow* Find(std::string_view name) const;
    // Returns that element; NoElement if there is none.
    ElementId OwnerOf(std::string_view name) const;
    // Returns what the elements have in common; where they differ the value is mixed and its text empty.
    PropertyValue ValueOf(std::string_view name) const;
    // Returns why the property cannot have the value, as a text for users; empty if it can, or if no element
    // has it. An empty value stands for the default.
    std::string FaultOf(std::string_view name, const std::string& value) const;
    // Sets the value for all elements that have the property; an empty value is the default again. An edit of
    // the step that is open; raises EditError as SetValue.
    void Write(Document& document, std::string_view name, const std::string& value) const;

 private:
    static const PropertyRow* RowIn(const std::vector<PropertyRow>& rows, std::string_view name);

    const DesignModel& m_model;
    const std::vector<ElementId> m_ids;
    std::vector<std::pair<ElementId, std::vector<PropertyRow>>> m_rows;
};

}  // namespace designer
