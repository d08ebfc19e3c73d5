// SPDX-License-Identifier: GPL-3.0-or-later
// The groups of a chart's categories and series (MS-RDL, ChartMember), and what of the chart belongs to each
// of them.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "designer/document/document.h"
#include "designer/document/names.h"

namespace designer {

struct ChartGroup {
    ElementId member =
        NoElement;                // the ChartMember, in 2003 and 2005 DynamicCategories; NoElement: a new one
    std::string expression = {};  // of a category without = one that is there always, with this name
    int level = 1;  // 1 is the outermost; its parent is the nearest earlier group with a smaller level
    bool operator==(const ChartGroup&) const = default;
};

// The members of a hierarchy. A leaf is a member without others, or whose members are the names of values;
// the hierarchy itself if it has no groups.
struct ChartTree {
    std::vector<ChartGroup> groups;
    std::vector<ElementId> leaves;
    std::vector<std::vector<ElementId>> labels;  // by leaves: the members with the names of values
    bool isKnown = true;                         // no member is of another kind
};
ChartTree ReadCategories(const Document& document, ElementId chart);
ChartTree ReadSeriesGroups(const Document& document, ElementId chart);

// Makes levels such as a tree has them.
void FitLevels(std::vector<ChartGroup>& groups);
// Returns for each leaf of the wanted groups the number of the old leaf that it is, or is within; 0 for
// others. Without groups there is one leaf.
std::vector<std::size_t> OldLeaves(const std::vector<ChartGroup>& wanted, const std::vector<ElementId>& old);

// Returns the ChartMembers of a hierarchy; `inner` are those of each leaf. Members that stay keep what they
// have.
std::string ChartMembersXml(const Document& document, const std::vector<ChartGroup>& groups,
                            const std::string& inner, NewNames& names);

// Returns the points of a series, one for each leaf of the categories.
std::vector<ElementId> ChartPointsOf(const Document& document, ElementId series);
// Gives the series a point for each leaf of the categories; `old` as OldLeaves returns them, of `oldCount`.
void PutChartPoints(Document& document, ElementId series, const std::vector<std::size_t>& old,
                    std::size_t oldCount);

}  // namespace designer
