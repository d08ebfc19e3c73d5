// A data region over its rows: which rows belong to which instance of which group. Built once, then only
// read.
//
// Rows are numbered within the region (local rows); the instances of a group stand in the order of display,
// and each owns a range of the group's `order`.
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
    std::uint32_t begin, end;  // in GroupRows::order
    std::uint32_t parent;      // instance of the group around it
};

struct GroupRows {
    static constexpr std::uint32_t None = 0xFFFFFFFF;
    std::vector<std::uint32_t> order;
    std::vector<GroupInstance> instances;
    std::vector<std::uint32_t> level,
        subtreeEnd;  // recursive groups only: depth; instance behind the last descendant
    std::vector<std::uint32_t> instanceOf;  // column groups only: by local row
};

class Region : public std::enable_shared_from_this<Region> {
 public:
    Region(const TablixPlan& plan, const Table* table, Scope outer);

    const TablixPlan& plan;
    const Table* const table;  // never null; may be empty
    const Scope outer;
    const std::shared_ptr<const Region> keepOuter;
    std::uint32_t id;  // unique in the process's life, for caches; a new one when instances moved
    std::vector<std::uint32_t> rows;  // of the table, by local row
    std::vector<GroupRows> rowGroups, columnGroups;

    void Renew();  // what was kept about instances no longer holds
    // Local rows of a scope of this region.
    std::span<const std::uint32_t> Rows(const Scope& scope) const;
    // The table's row that stands for a scope: its first; false when it has none.
    bool FirstRow(const Scope& scope, std::uint32_t& row) const;
    const std::vector<GroupRows>& Groups(bool isRows) const { return isRows ? rowGroups : columnGroups; }
    const HierarchyPlan& Plan(bool isRows) const { return isRows ? plan.rows : plan.columns; }
    // The instance of an outer group that an instance belongs to.
    std::uint32_t Ancestor(bool isRows, int group, std::uint32_t instance, int outerGroup) const;
    // Whether `outerGroup` is `group` or around it.
    bool IsAround(bool isRows, int outerGroup, int group) const;
    // The first instance of `group` within an instance of a group around it (-1: the region).
    std::uint32_t FirstWithin(bool isRows, int group, int outerGroup, std::uint32_t outerInstance) const;

 private:
    std::span<const std::uint32_t> Crossing(const Scope& scope) const;

    mutable std::vector<std::uint32_t> m_all;
    // The rows of one row instance, sorted by the instances of one column group.
    struct Buckets {
        int rowGroup = -1, columnGroup = -1;
        std::uint32_t row = GroupRows::None;
        std::vector<std::uint32_t> offsets, rows;
    };
    mutable std::vector<Buckets> m_buckets;
    mutable std::size_t m_nextBucket = 0;
};

}  // namespace rdl::layout
