// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/layout/drawing/gauge/values.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "rdl/layout/region/grouping.h"
#include "rdl/values/ascii.h"
#include "rdl/values/index.h"

namespace rdl::layout {
namespace {

std::optional<double> Apply(GaugeFormula formula, std::vector<double> values) {
    if (values.empty()) {
        return std::nullopt;
    }
    const auto count = static_cast<double>(values.size());
    switch (formula) {
        case GaugeFormula::None:
        case GaugeFormula::Linear:
            return values.back();
        case GaugeFormula::Min:
            return *std::min_element(values.begin(), values.end());
        case GaugeFormula::Max:
            return *std::max_element(values.begin(), values.end());
        case GaugeFormula::Average:
            return std::accumulate(values.begin(), values.end(), 0.0) / count;
        case GaugeFormula::Median: {
            std::sort(values.begin(), values.end());
            const std::size_t half = values.size() / 2;
            return values.size() % 2 ? values[half] : (values[half - 1] + values[half]) / 2;
        }
        case GaugeFormula::Variance: {  // of a sample, as the function Var
            if (values.size() < 2) {
                return std::nullopt;
            }
            const double mean = std::accumulate(values.begin(), values.end(), 0.0) / count;
            double sum = 0;
            for (const double value : values) {
                sum += (value - mean) * (value - mean);
            }
            return sum / (count - 1);
        }
    }
    return std::nullopt;
}

// Returns the instance of the group or region of that name around a place, else the whole region.
Scope ScopeNamed(const std::string& name, const Scope& place) {
    const Region& region = *place.region;
    for (const TableAxis axis : {TableAxis::Rows, TableAxis::Columns}) {
        const auto& plans = region.Plan(axis).groups;
        int group = place.Group(axis);
        std::uint32_t instance = place.Instance(axis);
        while (group >= 0) {
            if (plans[At(group)].definition->name == name) {
                return Scope::Of(&region, axis, group, instance);
            }
            instance = region.Groups(axis)[At(group)].instances[instance].parent;
            group = plans[At(group)].parent;
        }
    }
    return {&region, -1, -1, 0, 0};
}

// Returns the instances of a place's group on one side that are within another scope.
std::vector<std::uint32_t> Instances(const Scope& place, const Scope& within, TableAxis axis) {
    const int group = place.Group(axis);
    const int outer = within.Group(axis);
    const std::uint32_t outerInstance = within.Instance(axis);
    if (group < 0) {
        return {0};
    }
    const Region& region = *place.region;
    const auto count = static_cast<std::uint32_t>(region.Groups(axis)[At(group)].instances.size());
    std::vector<std::uint32_t> found;
    for (std::uint32_t i = region.FirstWithin(axis, group, outer, outerInstance);
         i < count && (outer < 0 || region.Ancestor(axis, group, i, outer) == outerInstance); ++i) {
        found.push_back(i);
    }
    return found;
}

}  // namespace

GaugeValues::GaugeValues(GaugePlan& plan, PropertyReader& reader)
    : m_plan(plan), m_reader(reader), m_styles(*plan.programs, reader), m_around(reader.Place().Current()) {
    if (plan.data) {
        m_region = BuildRegion(*plan.data, m_around, reader.Place());
        reader.Place().Enter({m_region.get(), -1, -1, 0, 0});
        if (!plan.data->rows.groups.empty()) {
            m_groups = LeavesOf(*m_region, TableAxis::Rows);
        }
    }
}

std::vector<double> GaugeValues::All(const Expr& source) const {
    std::vector<double> values;
    const auto add = [&] {
        double number = 0;
        if (NumberOf(m_styles.Get(source), number)) {
            values.push_back(number);
        }
    };
    if (!m_region || m_plan.data->rows.groups.empty()) {
        add();
        return values;
    }
    const Evaluator::Stay stay(m_reader.Place());
    for (const Leaf& leaf : m_groups) {
        m_reader.Place().Enter({m_region.get(), leaf.group, -1, leaf.instance, 0});
        add();
    }
    return values;
}

std::optional<double> GaugeValues::Of(const GaugeValue& value) const {
    std::optional<double> number =
        value.value.IsSet() ? Apply(value.formula, All(value.value)) : std::nullopt;
    if (number) {
        *number = *number * m_styles.Number(value.multiplier).value_or(1) +
                  m_styles.Number(value.addConstant).value_or(0);
    }
    return number && std::isfinite(*number) ? number : std::nullopt;
}

const GaugePlan::Reach& GaugeValues::ReachOf(std::size_t item) const {
    m_plan.reaches.resize(m_plan.definition->items.size());
    GaugePlan::Reach& reach = m_plan.reaches[item];
    const GaugeItem& indicator = m_plan.definition->items[item];
    const Scope within = m_around.region ? ScopeNamed(indicator.transformationScope, m_around) : Scope();
    if (m_around.region && reach.regionId == m_around.region->id && reach.within == within) {
        return reach;
    }
    reach = {m_around.region, m_around.region ? m_around.region->id : 0, within, 0, 0, false};
    const auto add = [&reach](std::optional<double> number) {
        if (number) {
            reach.low = reach.any ? std::min(reach.low, *number) : *number;
            reach.high = reach.any ? std::max(reach.high, *number) : *number;
            reach.any = true;
        }
    };
    if (!m_around.region || m_region) {  // the panel's own groups
        for (const double number : All(indicator.value.value)) {
            add(number);
        }
        return reach;
    }
    const Evaluator::Stay stay(m_reader.Place());
    const auto columns = Instances(m_around, within, TableAxis::Columns);
    for (const std::uint32_t row : Instances(m_around, within, TableAxis::Rows)) {
        for (const std::uint32_t column : columns) {
            Scope place = m_around;
            place.row = row;
            place.column = column;
            m_reader.Place().Enter(place);
            add(Of(indicator.value));
        }
    }
    return reach;
}

std::optional<double> GaugeValues::OfIndicator(std::size_t item) const {
    const GaugeItem& indicator = m_plan.definition->items[item];
    const std::optional<double> value = Of(indicator.value);
    if (!value || EqualNoCase(m_styles.Text(indicator["TransformationType"]), "None")) {
        return value;
    }
    std::optional<double> low = Of(indicator.minimum), high = Of(indicator.maximum);
    if (!low || !high) {
        const GaugePlan::Reach& reach = ReachOf(item);
        low = low ? low : std::optional(reach.low);
        high = high ? high : std::optional(reach.high);
    }
    constexpr double Hundred = 100;
    return *high > *low ? (*value - *low) / (*high - *low) * Hundred : Hundred;
}

}  // namespace rdl::layout
