// SPDX-License-Identifier: GPL-3.0-or-later
// Members of Evaluator for aggregates: finding the scope, going through its rows, keeping the results.
#include <algorithm>
#include <utility>

#include "rdl/values/index.h"

#include "rdl/layout/region/evaluator.h"

namespace rdl::layout {
namespace {

bool NeedsValue(expr::AggregateKind kind) {
    return kind != expr::AggregateKind::CountRows;
}

// -1 if the axis has no group of the name.
int GroupNamed(const Region& region, TableAxis axis, const std::string& name) {
    const auto& plans = region.Plan(axis).groups;
    const auto plan = std::find_if(plans.begin(), plans.end(), [&name](const GroupPlan& candidate) {
        return candidate.definition->name == name;
    });
    return plan == plans.end() ? -1 : static_cast<int>(plan - plans.begin());
}

}  // namespace

std::size_t Evaluator::HashKey::operator()(const CacheKey& key) const {
    std::uint64_t hash = key.call;
    for (const std::uint64_t part :
         {static_cast<std::uint64_t>(key.region), static_cast<std::uint64_t>(key.row),
          static_cast<std::uint64_t>(key.column), static_cast<std::uint64_t>(key.rowGroup + 1),
          static_cast<std::uint64_t>(key.columnGroup + 1)}) {
        hash = (hash ^ part) * 0x9E3779B97F4A7C15ULL;
        hash ^= hash >> 29;
    }
    return static_cast<std::size_t>(hash);
}

bool Evaluator::ResolveIn(const Scope& scope, const std::string& name, Scope& found) {
    const Region& region = *scope.region;
    if (region.plan.definition->name == name) {
        found = Scope{&region};
        return true;
    }
    for (const TableAxis axis : {TableAxis::Rows, TableAxis::Columns}) {
        const auto& plans = region.Plan(axis).groups;
        int group = scope.Group(axis);
        std::uint32_t instance = scope.Instance(axis);
        while (group >= 0) {
            if (plans[At(group)].definition->name == name) {
                found = Scope::Of(&region, axis, group, instance);
                return true;
            }
            instance = region.Groups(axis)[At(group)].instances[instance].parent;
            group = plans[At(group)].parent;
        }
    }
    return false;
}

// A subtotal of a matrix has the expressions of the cells: in the column of its total the name of a group is
// that of the scope which the group divides.
bool Evaluator::ResolveBeside(const Scope& scope, const std::string& name, Scope& found) {
    const Region& region = *scope.region;
    if (region.plan.rows.groups.empty() || region.plan.columns.groups.empty()) {
        return false;
    }
    for (const TableAxis axis : {TableAxis::Rows, TableAxis::Columns}) {
        const int group = GroupNamed(region, axis, name);
        if (group < 0) {
            continue;
        }
        const int parent = region.Plan(axis).groups[At(group)].parent;
        const int own = scope.Group(axis);
        if (parent >= 0 && (own < 0 || !region.IsAround(axis, parent, own))) {
            return false;
        }
        found = parent < 0 ? Scope{&region}
                           : Scope::Of(&region, axis, parent,
                                       region.Ancestor(axis, own, scope.Instance(axis), parent));
        return true;
    }
    return false;
}

bool Evaluator::ResolveTotal(const std::string& name, Scope& found) const {
    for (Scope scope = m_place.scope; scope.region; scope = scope.region->outer) {
        if (ResolveBeside(scope, name, found)) {
            return true;
        }
    }
    return false;
}

bool Evaluator::Resolve(const std::string& name, Target& target) const {
    for (Scope scope = m_place.scope; scope.region; scope = scope.region->outer) {
        if (ResolveIn(scope, name, target.scope)) {
            return true;
        }
    }
    const auto table = m_input.tables.find(name);
    if (table != m_input.tables.end()) {
        target.whole = &table->second;
        return true;
    }
    if (m_input.definition->FindDataSet(name)) {
        target.whole = &TableOf(name);
        return true;
    }
    const std::string around = m_isBeside ? m_programs.DataSetOfScope(name) : std::string();
    if (!around.empty()) {
        target.whole = &TableOf(around);
    }
    return !around.empty();
}

void Evaluator::AddTable(const expr::AggregateCall& call, const Table& table, expr::Accumulator& sum) {
    const Stay stay(*this);
    m_place = {Scope{}, &table, 0, true};
    const int field = call.argument ? call.argument->PlainField() : -1;
    for (std::size_t row = 0; row < table.RowCount(); ++row) {
        m_place.row = row;
        if (!NeedsValue(call.kind) || !call.argument) {
            sum.AddRow();
        } else {
            sum.Add(field >= 0 ? table.At(row, At(field)) : call.argument->Evaluate(*this));
        }
    }
}

void Evaluator::AddRows(const expr::AggregateCall& call, const Scope& scope, expr::Accumulator& sum) {
    const Region& region = *scope.region;
    const auto locals = region.Rows(scope);
    const int field = call.argument ? call.argument->PlainField() : -1;
    if (!call.argument) {
        for (std::size_t i = 0; i < locals.size(); ++i) {
            sum.AddRow();
        }
        return;
    }
    if (field >= 0) {
        for (const std::uint32_t local : locals) {
            sum.Add(region.table->At(region.rows[local], At(field)));
        }
        return;
    }
    if (!call.argument->Aggregates().empty() && AddInstances(call, scope, sum)) {
        return;
    }
    const Stay stay(*this);
    m_place = {scope, region.table, 0, true};
    // Rows of a crossing may be replaced while arguments are evaluated.
    const std::vector<std::uint32_t> own(locals.begin(), locals.end());
    for (const std::uint32_t local : own) {
        m_place.row = region.rows[local];
        sum.Add(call.argument->Evaluate(*this));
    }
}

// An aggregate of an aggregate: one value for each instance of the inner one's scope.
bool Evaluator::AddInstances(const expr::AggregateCall& call, const Scope& scope, expr::Accumulator& sum) {
    for (const expr::AggregateCall* inner : call.argument->Aggregates()) {
        if (inner->scope.empty() ? AddInnermost(call, scope, sum) : AddNamed(call, *inner, scope, sum)) {
            return true;
        }
    }
    return false;
}

// Whether `group` lies within the scope's group on an axis (or the region), and is another one.
bool Evaluator::LiesWithin(const Scope& scope, TableAxis axis, int group) {
    const int outer = scope.Group(axis);
    return group >= 0 && (outer < 0 || (group != outer && scope.region->IsAround(axis, outer, group)));
}

// Calls `visit` with `scope` moved to each instance of `group` in it.
template <typename Visit>
void Evaluator::EachInstance(const Scope& scope, TableAxis axis, int group, const Visit& visit) {
    const Region& region = *scope.region;
    const int outer = scope.Group(axis);
    const std::uint32_t within = scope.Instance(axis);
    const auto count = static_cast<std::uint32_t>(region.Groups(axis)[At(group)].instances.size());
    for (std::uint32_t i = region.FirstWithin(axis, group, outer, within);
         i < count && (outer < 0 || region.Ancestor(axis, group, i, outer) == within); ++i) {
        Scope instance = scope;
        instance.Group(axis) = group;
        instance.Instance(axis) = i;
        visit(instance);
    }
}

bool Evaluator::AddNamed(const expr::AggregateCall& call, const expr::AggregateCall& inner,
                         const Scope& scope, expr::Accumulator& sum) {
    for (const TableAxis axis : {TableAxis::Rows, TableAxis::Columns}) {
        const int group = GroupNamed(*scope.region, axis, inner.scope);
        if (!LiesWithin(scope, axis, group)) {
            continue;
        }
        const Stay stay(*this);
        EachInstance(scope, axis, group, [&](const Scope& instance) {
            Enter(instance);
            sum.Add(call.argument->Evaluate(*this));
        });
        return true;
    }
    return false;
}

// Without a name the inner aggregate is over the innermost groups around the place of the expression: in a
// cell of a matrix, over one cell after the other.
bool Evaluator::AddInnermost(const expr::AggregateCall& call, const Scope& scope, expr::Accumulator& sum) {
    Scope here = m_place.scope;
    while (here.region && here.region != scope.region) {
        here = here.region->outer;
    }
    const bool byRows = here.region && LiesWithin(scope, TableAxis::Rows, here.rowGroup);
    const bool byColumns = here.region && LiesWithin(scope, TableAxis::Columns, here.columnGroup);
    if (!byRows && !byColumns) {
        return false;
    }
    const Stay stay(*this);
    const auto add = [&](const Scope& cell) {
        CheckBounds();
        if (!cell.region->Rows(cell).empty()) {
            Enter(cell);
            sum.Add(call.argument->Evaluate(*this));
        }
    };
    const auto across = [&](const Scope& row) {
        if (byColumns) {
            EachInstance(row, TableAxis::Columns, here.columnGroup, add);
        } else {
            add(row);
        }
    };
    if (byRows) {
        EachInstance(scope, TableAxis::Rows, here.rowGroup, across);
    } else {
        across(scope);
    }
    return true;
}

Value Evaluator::OverTarget(const expr::AggregateCall& call, const Target& target) {
    expr::Accumulator sum(call.kind, *m_culture);
    if (!target.scope.region) {
        AddTable(call, *target.whole, sum);
        return sum.Result();
    }
    const Scope& scope = target.scope;
    if (call.recursive && scope.rowGroup >= 0) {
        const GroupRows& group = scope.region->rowGroups[At(scope.rowGroup)];
        if (!group.subtreeEnd.empty()) {
            Scope part = scope;
            for (part.row = scope.row; part.row < group.subtreeEnd[scope.row]; ++part.row) {
                AddRows(call, part, sum);
            }
            return sum.Result();
        }
    }
    AddRows(call, scope, sum);
    return sum.Result();
}

// Computes the aggregate of a page header or footer, over the text boxes of that name on the page.
Value Evaluator::OverReportItems(const expr::AggregateCall& call) {
    expr::Accumulator sum(call.kind, *m_culture);
    for (m_nthItem = 0;; ++m_nthItem) {
        m_nthItemFound = false;
        const Value value = call.argument->Evaluate(*this);
        if (!m_nthItemFound && m_nthItem > 0) {
            break;
        }
        if (NeedsValue(call.kind)) {
            sum.Add(value);
        } else {
            sum.AddRow();
        }
    }
    m_nthItem = 0;
    return sum.Result();
}

// A field over a few rows, such as a cell of a matrix, is added up sooner than a result is found again;
// millions of cells would only push the results of others out.
bool Evaluator::IsQuick(const expr::AggregateCall& call, const Target& target) {
    constexpr std::size_t FewRows = 4;
    if (!target.scope.region || call.recursive) {
        return false;
    }
    const std::size_t rows = target.scope.region->Rows(target.scope).size();
    return !call.argument || call.argument->PlainField() >= 0
               ? rows <= FewRows
               : rows == 0 && call.argument->Aggregates().empty();
}

Value Evaluator::Aggregate(const expr::AggregateCall& call) {
    const bool hadAsked = std::exchange(m_hasAsked, true);
    if (call.kind == expr::AggregateKind::Previous) {
        return PreviousOf(call);
    }
    if (call.kind == expr::AggregateKind::RunningValue || call.kind == expr::AggregateKind::RowNumber) {
        return RunningOver(call);
    }
    if (m_page && call.argument && call.argument->UsesReportItems()) {
        return OverReportItems(call);
    }
    Target target;
    if (call.scope.empty()) {
        target.scope = m_place.scope;
        target.whole = m_place.table;
    } else if (!Resolve(call.scope, target) && !ResolveTotal(call.scope, target.scope)) {
        return Value::Error("There is no scope " + call.scope + " around this expression");
    }
    if (IsQuick(call, target)) {
        m_hasAsked = hadAsked || !call.scope.empty() || m_place.hasRow;
        return OverTarget(call, target);
    }
    const Scope& scope = target.scope;
    const CacheKey key{static_cast<std::uint32_t>(call.id),
                       scope.region ? scope.region->id : 0,
                       scope.rowGroup,
                       scope.columnGroup,
                       scope.row,
                       scope.column};
    const auto known = m_cache.find(key);
    if (known != m_cache.end()) {
        return known->second;
    }
    ++m_depth;
    Value value =
        m_depth > MaxDepth ? Value::Error("Aggregates are nested too deeply") : OverTarget(call, target);
    --m_depth;
    if (m_cache.size() >= MaxCached) {
        m_cache.clear();
    }
    m_cache.emplace(key, value);
    return value;
}

}  // namespace rdl::layout
