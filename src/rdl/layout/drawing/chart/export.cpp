// SPDX-License-Identifier: GPL-3.0-or-later
// The data of a chart, for formats that carry data without a look.
#include <algorithm>

#include "rdl/layout/drawing/chart/draw.h"

namespace rdl::layout {
namespace {

// The columns that only some charts have.
struct Extra {
    const char* title;
    bool (*has)(const ChartRow& row, const ChartMark& mark);
    Value (*of)(const ChartMark& mark);
};

Value OptionalValue(const std::optional<double>& number) {
    return number ? Value::Real(*number) : Value();
}

constexpr Extra Extras[] = {
    {"X", [](const ChartRow&, const ChartMark& mark) { return mark.hasX && !mark.isDate; },
     [](const ChartMark& mark) { return Value::Real(mark.x); }},
    {"High", [](const ChartRow& row, const ChartMark&) { return IsSpan(*row.definition); },
     [](const ChartMark& mark) { return mark.hasY ? Value::Real(mark.high) : Value(); }},
    {"Low", [](const ChartRow& row, const ChartMark&) { return row.definition->range; },
     [](const ChartMark& mark) { return Value::Real(mark.low); }},
    {"Start", [](const ChartRow&, const ChartMark& mark) { return mark.start.has_value(); },
     [](const ChartMark& mark) { return OptionalValue(mark.start); }},
    {"End", [](const ChartRow&, const ChartMark& mark) { return mark.end.has_value(); },
     [](const ChartMark& mark) { return OptionalValue(mark.end); }},
    {"Mean", [](const ChartRow&, const ChartMark& mark) { return mark.mean.has_value(); },
     [](const ChartMark& mark) { return OptionalValue(mark.mean); }},
    {"Median", [](const ChartRow&, const ChartMark& mark) { return mark.median.has_value(); },
     [](const ChartMark& mark) { return OptionalValue(mark.median); }},
    {"Size", [](const ChartRow&, const ChartMark& mark) { return mark.size != 0; },
     [](const ChartMark& mark) { return Value::Real(mark.size); }},
};

template <typename Visit>
void ForEachMark(const ChartData& data, const Visit& visit) {
    for (const ChartAreaData& area : data.areas) {
        for (const ChartRow& row : area.rows) {
            for (std::size_t i = 0; i < row.marks.size(); ++i) {
                visit(row, row.marks[i], i);
            }
        }
    }
}

Value OuterLabel(const std::vector<ChartSpan>& spans, std::size_t category) {
    for (const ChartSpan& span : spans) {
        if (category >= span.first && category < span.first + span.count) {
            return Value::Text(span.label);
        }
    }
    return {};
}

Value CategoryOf(const ChartData& data, std::size_t category) {
    const bool isTyped =
        category < data.categoryValues.size() && data.categoryValues[category].kind() == Kind::DateTime;
    return isTyped ? data.categoryValues[category] : Value::Text(data.categories[category]);
}

}  // namespace

DrawingData DataOf(const ChartData& data) {
    DrawingData table;
    if (data.message) {
        return table;
    }
    std::vector<const Extra*> extras;
    for (const Extra& extra : Extras) {
        bool isNeeded = false;
        ForEachMark(data, [&](const ChartRow& row, const ChartMark& mark, std::size_t) {
            isNeeded = isNeeded || extra.has(row, mark);
        });
        if (isNeeded) {
            extras.push_back(&extra);
        }
    }
    for (std::size_t level = 0; level < data.outer.size(); ++level) {
        table.columns.push_back("Category" + std::to_string(level + 1));
    }
    for (const char* title : {"Category", "Series", "Value"}) {
        table.columns.emplace_back(title);
    }
    for (const Extra* extra : extras) {
        table.columns.emplace_back(extra->title);
    }
    ForEachMark(data, [&](const ChartRow& row, const ChartMark& mark, std::size_t category) {
        // The slices of a pie without categories are its series.
        const bool isSlice = row.marks.size() > data.categories.size();
        const std::size_t place = isSlice ? 0 : category;
        std::vector<Value>& cells = table.rows.emplace_back();
        for (const std::vector<ChartSpan>& spans : data.outer) {
            cells.push_back(OuterLabel(spans, place));
        }
        cells.push_back(CategoryOf(data, place));
        cells.push_back(Value::Text(isSlice ? mark.name : row.name));
        cells.push_back(mark.value);
        for (const Extra* extra : extras) {
            cells.push_back(extra->of(mark));
        }
    });
    return table;
}

}  // namespace rdl::layout
