// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/model/filters.h"

#include "designer/document/editing.h"
#include "designer/tables/tablix_shape.h"

namespace designer {
std::vector<RowFilter> FiltersOf(const Document& document, ElementId owner) {
    std::vector<RowFilter> filters;
    for (const ElementId id : ChildrenNamed(document, owner, "Filters", "Filter")) {
        RowFilter& filter = filters.emplace_back();
        filter.place = static_cast<int>(filters.size()) - 1;
        filter.expression = document.TextAt(id, "FilterExpression").value_or("");
        filter.comparison = document.TextAt(id, "Operator").value_or("");
        for (const ElementId value : ChildrenNamed(document, id, "FilterValues", "FilterValue")) {
            filter.values.push_back(document.TextAt(value, "").value_or(""));
        }
    }
    return filters;
}

void PutFilters(Document& document, ElementId owner, const std::vector<RowFilter>& filters) {
    const std::vector<RowFilter> old = FiltersOf(document, owner);
    std::vector<int> places;
    places.reserve(filters.size());
    for (const RowFilter& filter : filters) {
        places.push_back(filter.place);
    }
    const std::vector<ElementId> ids =
        PutRows(document, owner, "Filters", "Filter", places, [](std::size_t) { return "<Filter/>"; });
    for (std::size_t row = 0; row < filters.size(); ++row) {
        const RowFilter& filter = filters[row];
        if (filter.place != NewRow && filter == old[static_cast<std::size_t>(filter.place)]) {
            continue;
        }
        SetText(document, ids[row], "FilterExpression", filter.expression);
        SetText(document, ids[row], "Operator", filter.comparison);
        const std::size_t there = ChildrenNamed(document, ids[row], "FilterValues", "FilterValue").size();
        std::vector<int> values;
        for (std::size_t value = 0; value < filter.values.size(); ++value) {
            values.push_back(value < there ? static_cast<int>(value) : NewRow);
        }
        const std::vector<ElementId> texts = PutRows(document, ids[row], "FilterValues", "FilterValue",
                                                     values, [](std::size_t) { return "<FilterValue/>"; });
        for (std::size_t value = 0; value < texts.size(); ++value) {
            SetText(document, texts[value], "", filter.values[value]);
        }
    }
}

}  // namespace designer
