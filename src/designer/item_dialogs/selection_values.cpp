// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/item_dialogs/selection_values.h"

#include <algorithm>

namespace designer {

SelectionValues::SelectionValues(const DesignModel& model, std::vector<ElementId> ids)
    : m_model(model), m_ids(std::move(ids)) {
    for (const ElementId id : m_ids) {
        m_rows.emplace_back(id, PropertyRowsOf(model, id));
    }
}

const PropertyRow* SelectionValues::RowIn(const std::vector<PropertyRow>& rows, std::string_view name) {
    const auto named = [&rows](std::string_view wanted) {
        const auto found = std::find_if(rows.begin(), rows.end(), [wanted](const PropertyRow& row) {
            return row.property->name == wanted;
        });
        return found == rows.end() ? nullptr : &*found;
    };
    constexpr std::string_view Border = "Border ";
    const PropertyRow* own = named(name);
    return own || !name.starts_with(Border) ? own : named("Line " + std::string(name.substr(Border.size())));
}

const PropertyRow* SelectionValues::Find(std::string_view name) const {
    for (auto rows = m_rows.rbegin(); rows != m_rows.rend(); ++rows) {
        if (const PropertyRow* row = RowIn(rows->second, name)) {
            return row;
        }
    }
    return nullptr;
}

ElementId SelectionValues::OwnerOf(std::string_view name) const {
    for (auto rows = m_rows.rbegin(); rows != m_rows.rend(); ++rows) {
        if (RowIn(rows->second, name)) {
            return rows->first;
        }
    }
    return NoElement;
}

PropertyValue SelectionValues::ValueOf(std::string_view name) const {
    PropertyValue common;
    bool isFirst = true;
    for (const auto& [id, rows] : m_rows) {
        const PropertyRow* row = RowIn(rows, name);
        if (!row) {
            continue;
        }
        const PropertyValue own = ValueOfRow(m_model.Source(), id, *row);
        common.isMixed = common.isMixed || own.isMixed || (!isFirst && own.text != common.text);
        common.isSet = common.isSet || own.isSet;
        common.text = own.text;
        isFirst = false;
    }
    if (common.isMixed) {
        common.text.clear();
    }
    return common;
}

std::string SelectionValues::FaultOf(std::string_view name, const std::string& value) const {
    const PropertyRow* row = Find(name);
    return !row || value.empty()
               ? std::string()
               : designer::FaultOf(*row->property, CompleteValue(m_model.Source(), *row, value));
}

void SelectionValues::Write(Document& document, std::string_view name, const std::string& value) const {
    std::vector<std::pair<PropertyRow, std::vector<ElementId>>> owners;  // by the forms of the property
    for (const auto& [id, rows] : m_rows) {
        const PropertyRow* row = RowIn(rows, name);
        if (!row) {
            continue;
        }
        auto found =
            std::find_if(owners.begin(), owners.end(), [row](const auto& one) { return one.first == *row; });
        found = found == owners.end() ? owners.insert(found, {*row, {}}) : found;
        found->second.push_back(id);
    }
    for (const auto& [row, ids] : owners) {
        value.empty() ? ResetRow(document, ids, row) : SetRow(document, ids, row, value);
    }
}

}  // namespace designer
