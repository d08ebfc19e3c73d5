// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/layout/region/grouping.h"

#include <algorithm>
#include <numeric>

#include "rdl/expr/operations/compare.h"
#include "rdl/layout/region/row_filter.h"
#include "rdl/values/error.h"
#include "rdl/values/index.h"
#include "rdl/values/reserve.h"

namespace rdl::layout {
namespace {

std::string OwnerOf(const GroupPlan& plan) {
    return "Group " + plan.definition->name;
}

// Splits the rows of one parent instance by key; remembers nothing between parents.
class KeySplitter {
 public:
    KeySplitter(const GroupPlan& plan, Region& region, Evaluator& evaluator)
        : m_plan(plan), m_region(region), m_evaluator(evaluator) {}

    // The group of each row, numbered by first appearance; returns how many there are.
    std::uint32_t Split(const std::vector<std::uint32_t>& locals, std::vector<std::uint32_t>& groupOf) {
        m_known.clear();
        m_keys.clear();
        groupOf.clear();
        ValueList key(m_plan.keys.size());
        for (const std::uint32_t local : locals) {
            m_evaluator.EnterRow(m_region, m_region.rows[local]);
            for (std::size_t i = 0; i < key.size(); ++i) {
                key[i] = m_plan.keys[i].Get(m_evaluator);
                if (key[i].IsError()) {
                    // Rows of all kinds would stand in one group, and its sums would look right.
                    throw Error(OwnerOf(m_plan) +
                                ": its expression cannot be computed: " + std::string(key[i].AsText()));
                }
            }
            groupOf.push_back(NumberOf(key));
        }
        return static_cast<std::uint32_t>(m_keys.size());
    }
    const ValueList& Key(std::uint32_t group) const { return m_keys[group]; }

 private:
    std::uint32_t NumberOf(const ValueList& key) {
        std::size_t hash = 0;
        for (const Value& part : key) {
            hash = hash * 0x100000001B3ULL ^ expr::Hash(part);
        }
        auto& same = m_known[hash];
        for (const std::uint32_t candidate : same) {
            const ValueList& known = m_keys[candidate];
            if (std::equal(key.begin(), key.end(), known.begin(),
                           [](const Value& a, const Value& b) { return expr::Compare(a, b) == 0; })) {
                return candidate;
            }
        }
        const auto number = static_cast<std::uint32_t>(m_keys.size());
        same.push_back(number);
        m_keys.push_back(key);
        return number;
    }

    const GroupPlan& m_plan;
    Region& m_region;
    Evaluator& m_evaluator;
    std::unordered_map<std::size_t, std::vector<std::uint32_t>> m_known;
    std::vector<ValueList> m_keys;
};

class Grouper {
 public:
    Grouper(Region& region, Evaluator& evaluator) : m_region(region), m_evaluator(evaluator) {}

    void Hierarchy(TableAxis axis) {
        const auto& plans = m_region.Plan(axis).groups;
        auto& groups = m_region.Groups(axis);
        groups.resize(plans.size());
        for (std::size_t i = 0; i < plans.size(); ++i) {
            Group(axis, static_cast<int>(i));
            if (axis == TableAxis::Columns) {
                NoteInstances(groups[i]);
            }
        }
    }

 private:
    void Group(TableAxis axis, int group) {
        const GroupPlan& plan = m_region.Plan(axis).groups[At(group)];
        KeySplitter splitter(plan, m_region, m_evaluator);
        const std::size_t parents =
            plan.parent < 0 ? 1 : m_region.Groups(axis)[At(plan.parent)].instances.size();
        for (std::uint32_t parent = 0; parent < parents; ++parent) {
            const Scope scope = ScopeOf(axis, plan.parent, parent);
            const auto rows = m_region.Rows(scope);
            std::vector<std::uint32_t> locals(rows.begin(), rows.end());
            if (plan.keys.empty()) {
                Details(axis, group, parent, std::move(locals));
            } else {
                Keyed(axis, group, parent, locals, splitter);
            }
        }
        m_region.Renew();
    }

    Scope ScopeOf(TableAxis axis, int group, std::uint32_t instance) const {
        return Scope::Of(&m_region, axis, group, instance);
    }

    void Details(TableAxis axis, int group, std::uint32_t parent, std::vector<std::uint32_t> locals) {
        const GroupPlan& plan = m_region.Plan(axis).groups[At(group)];
        GroupRows& made = m_region.Groups(axis)[At(group)];
        const auto enter = [this](std::uint32_t local) {
            m_evaluator.EnterRow(m_region, m_region.rows[local]);
        };
        for (const FilterPlan& filter : plan.filters) {
            ApplyFilter(filter, OwnerOf(plan), locals, m_evaluator, enter);
        }
        ApplySort(plan.sorts, OwnerOf(plan), locals, m_evaluator, enter);
        ReserveMore(made.order, locals.size());
        ReserveMore(made.instances, locals.size());
        for (const std::uint32_t local : locals) {
            const auto begin = static_cast<std::uint32_t>(made.order.size());
            made.order.push_back(local);
            made.instances.push_back({begin, begin + 1, parent});
        }
    }

    void Keyed(TableAxis axis, int group, std::uint32_t parent, const std::vector<std::uint32_t>& locals,
               KeySplitter& splitter) {
        const GroupPlan& plan = m_region.Plan(axis).groups[At(group)];
        GroupRows& made = m_region.Groups(axis)[At(group)];
        std::vector<std::uint32_t> groupOf;
        const std::uint32_t count = splitter.Split(locals, groupOf);
        const auto first = static_cast<std::uint32_t>(made.instances.size());
        AppendInstances(locals, groupOf, count, parent, made);

        std::vector<std::uint32_t> kept(count);
        std::iota(kept.begin(), kept.end(), first);
        const auto enter = [&](std::uint32_t instance) { m_evaluator.Enter(ScopeOf(axis, group, instance)); };
        for (const FilterPlan& filter : plan.filters) {
            ApplyFilter(filter, OwnerOf(plan), kept, m_evaluator, enter);
        }
        ApplySort(plan.sorts, OwnerOf(plan), kept, m_evaluator, enter);
        std::vector<std::uint32_t> levels, subtrees;
        if (plan.parentKey.isSet) {
            kept = AsTree(plan, first, kept, splitter, enter, levels, subtrees);
        }
        std::vector<GroupInstance> instances;
        instances.reserve(kept.size());
        for (const std::uint32_t index : kept) {
            instances.push_back(made.instances[index]);
        }
        made.instances.resize(first);
        made.instances.insert(made.instances.end(), instances.begin(), instances.end());
        made.level.insert(made.level.end(), levels.begin(), levels.end());
        for (const std::uint32_t end : subtrees) {
            made.subtreeEnd.push_back(first + end);
        }
        m_region.Renew();
    }

    static void AppendInstances(const std::vector<std::uint32_t>& locals,
                                const std::vector<std::uint32_t>& groupOf, std::uint32_t count,
                                std::uint32_t parent, GroupRows& made) {
        std::vector<std::uint32_t> next(count + 1, 0);
        for (const std::uint32_t number : groupOf) {
            ++next[number + 1];
        }
        const auto base = static_cast<std::uint32_t>(made.order.size());
        std::partial_sum(next.begin(), next.end(), next.begin());
        for (std::uint32_t i = 0; i < count; ++i) {
            made.instances.push_back({base + next[i], base + next[i + 1], parent});
        }
        made.order.resize(made.order.size() + locals.size());
        for (std::size_t i = 0; i < locals.size(); ++i) {
            made.order[base + next[groupOf[i]]++] = locals[i];
        }
    }

    // Instances below the one whose key is their parent's, depth first. Those in a circle count as roots.
    template <typename Enter>
    std::vector<std::uint32_t> AsTree(const GroupPlan& plan, std::uint32_t first,
                                      const std::vector<std::uint32_t>& kept, const KeySplitter& splitter,
                                      Enter enter, std::vector<std::uint32_t>& levels,
                                      std::vector<std::uint32_t>& subtrees) {
        Lookups byKey;
        const auto keyOf = [&](std::size_t i) { return splitter.Key(kept[i] - first).front(); };
        std::vector<std::vector<std::uint32_t>> children(kept.size());
        std::vector<std::uint32_t> roots;
        for (std::uint32_t i = 0; i < kept.size(); ++i) {
            enter(kept[i]);
            const Value parent = plan.parentKey.Get(m_evaluator);
            const auto& found = byKey.Find(0, kept.size(), parent, keyOf);
            if (parent.IsNull() || found.empty() || found.front() == i) {
                roots.push_back(i);
            } else {
                children[found.front()].push_back(i);
            }
        }
        std::vector<std::uint32_t> order;
        std::vector<bool> seen(kept.size(), false);
        for (const std::uint32_t root : roots) {
            Descend(root, children, seen, order, levels, subtrees);
        }
        for (std::uint32_t i = 0; i < kept.size(); ++i) {
            Descend(i, children, seen, order, levels, subtrees);
        }
        for (std::uint32_t& index : order) {
            index = kept[index];
        }
        return order;
    }

    static void Descend(std::uint32_t root, const std::vector<std::vector<std::uint32_t>>& children,
                        std::vector<bool>& seen, std::vector<std::uint32_t>& order,
                        std::vector<std::uint32_t>& levels, std::vector<std::uint32_t>& subtrees) {
        struct Step {
            std::uint32_t node, place;
            std::size_t next;
        };
        std::vector<Step> path;
        const auto visit = [&](std::uint32_t node) {
            if (!seen[node]) {
                seen[node] = true;
                const auto place = static_cast<std::uint32_t>(order.size());
                order.push_back(node);
                levels.push_back(static_cast<std::uint32_t>(path.size()));
                subtrees.push_back(place + 1);
                path.push_back({node, place, 0});
            }
        };
        visit(root);
        while (!path.empty()) {
            const Step step = path.back();
            if (step.next < children[step.node].size()) {
                ++path.back().next;
                visit(children[step.node][step.next]);
            } else {
                subtrees[step.place] = static_cast<std::uint32_t>(order.size());
                path.pop_back();
            }
        }
    }

    void NoteInstances(GroupRows& group) const {
        group.instanceOf.assign(m_region.rows.size(), GroupRows::None);
        for (std::uint32_t i = 0; i < group.instances.size(); ++i) {
            for (std::uint32_t at = group.instances[i].begin; at < group.instances[i].end; ++at) {
                group.instanceOf[group.order[at]] = i;
            }
        }
    }

    Region& m_region;
    Evaluator& m_evaluator;
};

}  // namespace

std::shared_ptr<Region> BuildRegion(const TablixPlan& plan, const Scope& outer, Evaluator& evaluator) {
    const Table& table = evaluator.TableOf(plan.dataSet);
    auto region = std::make_shared<Region>(plan, &table, outer);
    const Evaluator::Stay stay(evaluator);
    if (outer.region && outer.region->table == &table) {
        for (const std::uint32_t local : outer.region->Rows(outer)) {
            region->rows.push_back(outer.region->rows[local]);
        }
    } else {
        region->rows.resize(table.RowCount());
        std::iota(region->rows.begin(), region->rows.end(), 0U);
    }
    const auto enter = [&](std::uint32_t row) { evaluator.EnterRow(*region, row); };
    for (const FilterPlan& filter : plan.filters) {
        ApplyFilter(filter, plan.definition->place, region->rows, evaluator, enter);
    }
    ApplySort(plan.sorts, plan.definition->place, region->rows, evaluator, enter);
    Grouper grouper(*region, evaluator);
    grouper.Hierarchy(TableAxis::Rows);
    grouper.Hierarchy(TableAxis::Columns);
    return region;
}

}  // namespace rdl::layout
