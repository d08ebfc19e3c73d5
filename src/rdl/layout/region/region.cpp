// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/layout/region/region.h"

#include <algorithm>
#include <atomic>
#include <numeric>

#include "rdl/values/index.h"

namespace rdl::layout {
namespace {

std::uint32_t NextId() {
    static std::atomic<std::uint32_t> last = 0;  // of all runs, which may have threads of their own
    return ++last;
}

std::span<const std::uint32_t> RangeOf(const GroupRows& group, std::uint32_t instance) {
    const GroupInstance& range = group.instances[instance];
    return {group.order.data() + range.begin, group.order.data() + range.end};
}

}  // namespace

Region::Region(const TablixPlan& tablix, const Table* data, Scope around)
    : plan(tablix),
      table(data),
      outer(around),
      keepOuter(around.region ? around.region->shared_from_this() : nullptr),
      id(NextId()) {}

void Region::Renew() {
    id = NextId();
    m_buckets.clear();
}

std::span<const std::uint32_t> Region::Rows(const Scope& scope) const {
    if (scope.rowGroup >= 0 && scope.columnGroup >= 0) {
        return Crossing(scope);
    }
    if (scope.rowGroup >= 0) {
        return RangeOf(rowGroups[At(scope.rowGroup)], scope.row);
    }
    if (scope.columnGroup >= 0) {
        return RangeOf(columnGroups[At(scope.columnGroup)], scope.column);
    }
    if (m_all.size() != rows.size()) {
        m_all.resize(rows.size());
        std::iota(m_all.begin(), m_all.end(), 0U);
    }
    return m_all;
}

bool Region::FirstRow(const Scope& scope, std::uint32_t& row) const {
    if (scope.rowGroup < 0 && scope.columnGroup < 0) {
        if (rows.empty()) {
            return false;
        }
        row = rows.front();
        return true;
    }
    const auto local = Rows(scope);
    if (local.empty()) {
        return false;
    }
    row = rows[local.front()];
    return true;
}

// All cells of a row are asked for one after the other, so one pass over the row's data serves them all.
std::span<const std::uint32_t> Region::Crossing(const Scope& scope) const {
    constexpr std::size_t KeptBuckets = 8;
    for (const Buckets& known : m_buckets) {
        if (known.rowGroup == scope.rowGroup && known.row == scope.row &&
            known.columnGroup == scope.columnGroup) {
            return {known.rows.data() + known.offsets[scope.column],
                    known.rows.data() + known.offsets[scope.column + 1]};
        }
    }
    if (m_buckets.size() < KeptBuckets) {
        m_buckets.emplace_back();
        m_nextBucket = m_buckets.size() - 1;
    } else {
        m_nextBucket = (m_nextBucket + 1) % KeptBuckets;
    }
    Buckets& made = m_buckets[m_nextBucket];
    made.rowGroup = scope.rowGroup;
    made.row = scope.row;
    made.columnGroup = scope.columnGroup;
    const GroupRows& columns = columnGroups[At(scope.columnGroup)];
    const auto source = RangeOf(rowGroups[At(scope.rowGroup)], scope.row);
    made.offsets.assign(columns.instances.size() + 1, 0);
    for (const std::uint32_t local : source) {
        if (columns.instanceOf[local] != GroupRows::None) {
            ++made.offsets[columns.instanceOf[local] + 1];
        }
    }
    std::partial_sum(made.offsets.begin(), made.offsets.end(), made.offsets.begin());
    made.rows.resize(made.offsets.back());
    std::vector<std::uint32_t> next(made.offsets.begin(), made.offsets.end() - 1);
    for (const std::uint32_t local : source) {
        if (columns.instanceOf[local] != GroupRows::None) {
            made.rows[next[columns.instanceOf[local]]++] = local;
        }
    }
    return {made.rows.data() + made.offsets[scope.column], made.rows.data() + made.offsets[scope.column + 1]};
}

bool Region::IsAround(TableAxis axis, int outerGroup, int group) const {
    const auto& groups = Plan(axis).groups;
    while (group >= 0 && group != outerGroup) {
        group = groups[At(group)].parent;
    }
    return group >= 0;
}

std::uint32_t Region::Ancestor(TableAxis axis, int group, std::uint32_t instance, int outerGroup) const {
    const auto& plans = Plan(axis).groups;
    const auto& groups = Groups(axis);
    while (group != outerGroup && group >= 0) {
        instance = groups[At(group)].instances[instance].parent;
        group = plans[At(group)].parent;
    }
    return instance;
}

std::uint32_t Region::FirstWithin(TableAxis axis, int group, int outerGroup,
                                  std::uint32_t outerInstance) const {
    if (outerGroup < 0) {
        return 0;
    }
    // Instances stand in the order of their ancestors.
    std::uint32_t low = 0;
    auto high = static_cast<std::uint32_t>(Groups(axis)[At(group)].instances.size());
    while (low < high) {
        const std::uint32_t middle = low + (high - low) / 2;
        if (Ancestor(axis, group, middle, outerGroup) < outerInstance) {
            low = middle + 1;
        } else {
            high = middle;
        }
    }
    return low;
}

}  // namespace rdl::layout
