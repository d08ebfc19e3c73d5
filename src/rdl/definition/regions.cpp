// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/definition/regions.h"

#include <algorithm>

#include "rdl/definition/group_reader.h"

namespace rdl {

void ReadRegion(Context& context, const XmlElement& element, Tablix& tablix, Extent container) {
    ReadBasics(context, element, tablix, container);
    const std::string where = PlaceOf(element);
    tablix.dataSetName = element.ChildText("DataSetName");
    tablix.filters = ReadFilters(context, element, where);
    tablix.noRowsMessage =
        context.ChildExpr(element, element.Child("NoRowsMessage") ? "NoRowsMessage" : "NoRows", where);
    tablix.keepTogether = context.Flag(element, "KeepTogether", where);
    tablix.omitBorderOnPageBreak = context.Flag(element, "OmitBorderOnPageBreak", where);
    tablix.rightToLeft = EqualNoCase(element.ChildText("LayoutDirection"), "RTL");
    tablix.groupsBeforeRowHeaders = context.Number(element, "GroupsBeforeRowHeaders", where, 0, 10'000, 0);
}

void AddSpanned(std::vector<TablixCell>& cells, ItemPtr item, int span) {
    cells.push_back({std::move(item), span, 1});
    cells.resize(cells.size() + static_cast<std::size_t>(span) - 1);
}

double SumOf(const std::vector<double>& sizes, std::size_t first, std::size_t count) {
    double sum = 0;
    for (std::size_t i = first; i < std::min(first + count, sizes.size()); ++i) {
        sum += sizes[i];
    }
    return sum;
}

std::size_t LeafCount(const std::vector<TablixMember>& members) {
    std::size_t count = 0;
    for (const TablixMember& member : members) {
        count += member.members.empty() ? 1 : LeafCount(member.members);
    }
    return count;
}

}  // namespace rdl
