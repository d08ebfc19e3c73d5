// SPDX-License-Identifier: GPL-3.0-or-later
// Members of Evaluator: running totals and previous instances.
#include <algorithm>

#include "rdl/expr/operations/compare.h"
#include "rdl/layout/region/evaluator.h"
#include "rdl/values/index.h"

namespace rdl::layout {
namespace {}  // namespace

// Sets the axis and the first instance of a running from a scope's first instance to the current one. Returns
// false if the current place is no instance of a group within the scope.
bool Evaluator::InstanceRange(const std::string& name, TableAxis& axis, std::uint32_t& first) const {
    const Scope& here = m_place.scope;
    if (!here.region) {
        return false;
    }
    Scope outer{here.region};
    if (!name.empty()) {
        Target target;
        if (!Resolve(name, target)) {
            return false;
        }
        if (target.scope.region == here.region) {
            outer = target.scope;
        }
    }
    axis = outer.columnGroup < 0 && here.rowGroup >= 0 ? TableAxis::Rows : TableAxis::Columns;
    const int group = here.Group(axis);
    if (group < 0) {
        return false;
    }
    const int outerGroup = outer.Group(axis);
    const std::uint32_t instance = here.Instance(axis);
    first = outerGroup == group ? instance
                                : here.region->FirstWithin(axis, group, outerGroup, outer.Instance(axis));
    return true;
}

// Whether a name is that of the innermost group on one side of the current place.
bool Evaluator::IsInnermost(const std::string& name, TableAxis& axis) const {
    const Scope& here = m_place.scope;
    Target target;
    if (name.empty() || !here.region || !Resolve(name, target) || target.scope.region != here.region) {
        return false;
    }
    axis = target.scope.GroupAxis();
    const int group = target.scope.Group(axis);
    return group >= 0 && group == here.Group(axis);
}

// As InstanceRange. A total that restarts in each instance of a cell's own group runs along the groups of the
// other hierarchy.
bool Evaluator::RunningRange(const std::string& name, TableAxis& axis, std::uint32_t& first) const {
    if (!InstanceRange(name, axis, first)) {
        return false;
    }
    const Scope& here = m_place.scope;
    TableAxis own = TableAxis::Rows;
    if (IsInnermost(name, own) && here.Group(Across(own)) >= 0) {
        axis = Across(own);
        first = 0;
    }
    return true;
}

Value Evaluator::OverFirstRow(const expr::AggregateCall& call, const Target& target) {
    expr::Accumulator sum(call.kind, *m_culture);
    if (target.whole && target.whole->RowCount() > 0) {
        const Stay stay(*this);
        m_place = {Scope{}, target.whole, 0, true};
        if (call.argument) {
            sum.Add(call.argument->Evaluate(*this));
        } else {
            sum.AddRow();
        }
    }
    return sum.Result();
}

Value Evaluator::RunningOver(const expr::AggregateCall& call) {
    const bool counts = call.kind == expr::AggregateKind::RowNumber;
    const expr::AggregateKind kind = counts ? expr::AggregateKind::CountRows : call.running;
    TableAxis axis = TableAxis::Rows;
    std::uint32_t first = 0;
    const Scope here = m_place.scope;
    expr::AggregateCall plain;
    plain.kind = kind;
    plain.argument = counts ? nullptr : call.argument;
    if (!RunningRange(call.scope, axis, first)) {
        Target target{here, m_place.table};
        if (!call.scope.empty() && !Resolve(call.scope, target)) {
            return Value::Error("There is no scope " + call.scope + " around this expression");
        }
        return m_isBeside ? OverFirstRow(plain, target) : OverTarget(plain, target);
    }
    const std::uint32_t last = here.Instance(axis);
    Scope start = here;
    start.Instance(axis) = first;
    if (m_running.size() >= MaxCached) {
        m_running.clear();
    }
    const std::uint64_t key = static_cast<std::uint64_t>(call.id) << 32 | here.Instance(Across(axis));
    const auto entry = m_running.find(key);
    const bool goesOn = entry != m_running.end() && entry->second.start == start &&
                        entry->second.region == here.region->id && entry->second.next <= last + 1;
    Running fresh{start, here.region->id, first, expr::Accumulator(kind, *m_culture)};
    Running& running =
        goesOn ? entry->second : m_running.insert_or_assign(key, std::move(fresh)).first->second;
    Scope instance = here;
    while (running.next <= last) {
        instance.Instance(axis) = running.next++;
        AddRows(plain, instance, running.sum);
    }
    return running.sum.Result();
}

bool Evaluator::PlaceBefore(const std::string& scope, Scope& before) const {
    TableAxis axis = TableAxis::Rows;
    std::uint32_t first = 0;
    if (!InstanceRange(scope, axis, first)) {
        return false;
    }
    before = m_place.scope;
    std::uint32_t& instance = before.Instance(axis);
    if (instance <= first) {
        return false;
    }
    --instance;
    return true;
}

// Which group's instance before a Previous of an aggregate asks for, and the group within it that the
// aggregate is over: Previous(Sum(X, "Day"), "Year") is the same day's of the year before.
bool Evaluator::PreviousGroups(const expr::AggregateCall& call, Scope& named, Scope& own) const {
    const auto& inner = call.argument->Aggregates();
    TableAxis axis = TableAxis::Rows;
    Target target;
    if (inner.empty() || call.scope.empty() || !Resolve(call.scope, target) ||
        target.scope.region != m_place.scope.region) {
        return false;
    }
    named = target.scope;
    if (inner.front()->scope.empty()) {
        own = named;
        return IsInnermost(call.scope, axis);
    }
    if (!Resolve(inner.front()->scope, target) || target.scope.region != named.region) {
        return false;
    }
    own = target.scope;
    axis = named.GroupAxis();
    const int outer = named.Group(axis);
    const int group = own.Group(axis);
    return outer >= 0 && group >= 0 && named.region->IsAround(axis, outer, group);
}

ValueList Evaluator::KeysOf(const Scope& scope) {
    const TableAxis axis = scope.GroupAxis();
    const Stay stay(*this);
    Enter(scope);
    ValueList keys;
    for (const Property& key : scope.region->Plan(axis).groups[At(scope.Group(axis))].keys) {
        keys.push_back(key.Get(*this));
    }
    return keys;
}

// The instance of a scope's group, within an instance of the group around it, that has the scope's keys.
bool Evaluator::SameWithin(const Scope& scope, std::uint32_t parent, std::uint32_t& found) {
    const TableAxis axis = scope.GroupAxis();
    const int group = scope.Group(axis);
    const auto& instances = scope.region->Groups(axis)[At(group)].instances;
    const ValueList wanted = KeysOf(scope);
    Scope candidate = scope;
    std::uint32_t& instance = candidate.Instance(axis);
    instance =
        scope.region->FirstWithin(axis, group, scope.region->Plan(axis).groups[At(group)].parent, parent);
    for (; instance < instances.size() && instances[instance].parent == parent; ++instance) {
        const ValueList keys = KeysOf(candidate);
        if (std::equal(keys.begin(), keys.end(), wanted.begin(), wanted.end(),
                       [](const Value& a, const Value& b) { return expr::Compare(a, b) == 0; })) {
            found = instance;
            return true;
        }
    }
    return false;
}

bool Evaluator::PreviousPlace(const expr::AggregateCall& call, Scope& before) {
    Scope named, own;
    if (!PreviousGroups(call, named, own)) {
        return PlaceBefore(call.scope, before);
    }
    const TableAxis axis = named.GroupAxis();
    const int outer = named.Group(axis);
    const int group = own.Group(axis);
    std::uint32_t instance = named.Instance(axis);
    if (instance == 0) {
        return false;
    }
    --instance;
    const auto& plans = named.region->Plan(axis).groups;
    std::vector<int> path;
    for (int step = group; step != outer; step = plans[At(step)].parent) {
        path.insert(path.begin(), step);
    }
    for (const int step : path) {
        const std::uint32_t here = named.region->Ancestor(axis, group, own.Instance(axis), step);
        const Scope same = Scope::Of(named.region, axis, step, here);
        if (!SameWithin(same, instance, instance)) {
            return false;
        }
    }
    before = m_place.scope;
    before.Group(axis) = group;
    before.Instance(axis) = instance;
    return true;
}

Value Evaluator::PreviousOf(const expr::AggregateCall& call) {
    Scope before;
    if (!call.argument || !PreviousPlace(call, before)) {
        return {};
    }
    ++m_depth;
    Value value = Value::Error("Previous is nested too deeply");
    if (m_depth <= MaxDepth) {
        const Stay stay(*this);
        Enter(before);
        value = call.argument->Evaluate(*this);
    }
    --m_depth;
    return value;
}

}  // namespace rdl::layout
