// SPDX-License-Identifier: GPL-3.0-or-later
// A data region: which rows belong to which group instance. Immutable after it is built.
//
// Rows are numbered within the region (local rows). The instances of a group are in display order; each owns
// a range of the group's `order`.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "rdl/data/common/table.h"
#include "rdl/layout/plan/plan.h"
#include "rdl/layout/plan/scope.h"

namespace rdl::layout {

struct GroupInstance {
    std::uint32_t begin, end;  // range in GroupRows::order
    std::uint32_t parent;      // instance of the enclosing group
};

struct GroupRows {
    static constexpr std::uint32_t None = 0xFFFFFFFF;
    std::vector<std::uint32_t> order;
    std::vector<GroupInstance> instances;
    std::vector<std::uint32_t> level,
        subtreeEnd;  // recursive groups only: depth; instance after the last descendant
    std::vector<std::uint32_t> instanceOf;  // column groups only: by local row
};

class Region : public std::enable_shared_from_this<Region> {
 public:
    Region(const TablixPlan& plan, const Table* table, Scope outer);

    const TablixPlan& plan;
    const Table* const table;  // never null; may be empty
    const Scope outer;
    const std::shared_ptr<const Region> keepOuter;
    std::uint32_t id;                 // unique in the process, for caches; changes when instances move
    std::vector<std::uint32_t> rows;  // table row by local row
    std::vector<GroupRows> rowGroups, columnGroups;

    void Renew();  // invalidates caches about instances
    // Returns the local rows of a scope of this region.
    std::span<const std::uint32_t> Rows(const Scope& scope) const;
    // Sets `row` to the first table row of a scope; returns false if it has no rows.
    bool FirstRow(const Scope& scope, std::uint32_t& row) const;
    std::vector<GroupRows>& Groups(TableAxis axis) {
        return axis == TableAxis::Rows ? rowGroups : columnGroups;
    }
    const std::vector<GroupRows>& Groups(TableAxis axis) const {
        return axis == TableAxis::Rows ? rowGroups : columnGroups;
    }
    const HierarchyPlan& Plan(TableAxis axis) const {
        return axis == TableAxis::Rows ? plan.rows : plan.columns;
    }
    // Returns the instance of an outer group that contains an instance.
    std::uint32_t Ancestor(TableAxis axis, int group, std::uint32_t instance, int outerGroup) const;
    // Whether `outerGroup` is `group` or encloses it.
    bool IsAround(TableAxis axis, int outerGroup, int group) const;
    // Returns the first instance of `group` within an instance of an enclosing group (-1: the region).
    std::uint32_t FirstWithin(TableAxis axis, int group, int outerGroup, std::uint32_t outerInstance) const;

 private:
    std::span<const std::uint32_t> Crossing(const Scope& scope) const;

    mutable std::vector<std::uint32_t> m_all;
    // The rows of one row instance, partitioned by the instances of one column group.
    struct Buckets {
        int rowGroup = -1, columnGroup = -1;
        std::uint32_t row = GroupRows::None;
        std::vector<std::uint32_t> offsets, rows;
    };
    mutable std::vector<Buckets> m_buckets;
    mutable std::size_t m_nextBucket = 0;
};

}  // namespace rdl::layout
