// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/layout/region/leaves.h"

#include "rdl/values/index.h"

namespace rdl::layout {
namespace {

class Leaves {
 public:
    Leaves(const Region& region, TableAxis axis)
        : m_region(region), m_plan(region.Plan(axis)), m_axis(axis) {}

    std::vector<Leaf> Find() {
        Members(m_plan.roots, -1, 0);
        return std::move(m_found);
    }

 private:
    void Members(const std::vector<int>& members, int group, std::uint32_t instance) {
        for (const int index : members) {
            const MemberPlan& member = m_plan.members[At(index)];
            const bool alone = members.size() == 1 && member.group < 0;
            if (member.group < 0) {
                Member(index, group, instance, alone);
                continue;
            }
            const auto& instances = m_region.Groups(m_axis)[At(member.group)].instances;
            for (std::uint32_t i = m_region.FirstWithin(m_axis, member.group, group, instance);
                 i < instances.size(); ++i) {
                if (group >= 0 && m_region.Ancestor(m_axis, member.group, i, group) != instance) {
                    break;
                }
                Member(index, member.group, i, false);
            }
        }
    }

    void Member(int index, int group, std::uint32_t instance, bool alone) {
        const MemberPlan& member = m_plan.members[At(index)];
        m_path.push_back({index, instance, group, alone});
        if (member.leaf >= 0) {
            m_found.push_back({member.leaf, group, instance, m_path});
        } else {
            Members(member.children, group, instance);
        }
        m_path.pop_back();
    }

    const Region& m_region;
    const HierarchyPlan& m_plan;
    const TableAxis m_axis;
    std::vector<Leaf::Step> m_path;
    std::vector<Leaf> m_found;
};

}  // namespace

std::vector<Leaf> LeavesOf(const Region& region, TableAxis axis) {
    return Leaves(region, axis).Find();
}

}  // namespace rdl::layout
