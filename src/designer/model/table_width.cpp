// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/model/table_width.h"

#include <algorithm>
#include <vector>

#include "designer/document/item_size.h"
#include "designer/model/page_setup.h"
#include "designer/model/placing.h"
#include "designer/tables/tracks.h"

namespace designer {
namespace {

constexpr double LeastColumn = 18;  // points
constexpr double NoticedExcess = 0.5;

// Returns the sizes with this sum, in proportion to the old ones; those that would become too small do not,
// and the others give more.
std::vector<double> Shrunk(const std::vector<double>& sizes, double sum) {
    std::vector<double> shrunk = sizes;
    std::vector<bool> isLeast(sizes.size(), false);
    for (bool isDone = false; !isDone;) {
        double fixed = 0, free = 0;
        for (std::size_t index = 0; index < sizes.size(); ++index) {
            (isLeast[index] ? fixed : free) += isLeast[index] ? shrunk[index] : sizes[index];
        }
        const double factor = free > 0 ? std::max(0.0, sum - fixed) / free : 0;
        isDone = true;
        for (std::size_t index = 0; index < sizes.size(); ++index) {
            const double least = std::min(sizes[index], LeastColumn);
            if (!isLeast[index]) {
                shrunk[index] = std::max(sizes[index] * factor, least);
                isLeast[index] = sizes[index] * factor < least;
                isDone = isDone && !isLeast[index];
            }
        }
    }
    return shrunk;
}

void NarrowColumns(Document& document, ElementId region, const TablixGrid& grid, double excess) {
    std::vector<double> sizes;
    double sum = 0;
    for (const GridTrack& column : grid.columns) {
        sizes.push_back(column.size);
        sum += column.size;
    }
    const std::vector<double> shrunk = Shrunk(sizes, sum - excess);
    std::vector<SizeChange> changes;
    for (std::size_t column = 0; column < shrunk.size(); ++column) {
        changes.push_back({grid.columns[column].element, "Width", shrunk[column]});
    }
    SetSizes(document, changes, "Narrow columns");
    FollowSize(document, region);
}

}  // namespace

void FitTable(Document& document, const ReportItems& items, ElementId region) {
    const ReportItem* item = FindItem(items, region);
    if (item && item->cell == NoElement && document.Has(region)) {
        const TablixGrid grid = GridOf(document, region);
        const double widest = WidestBodyOf(PageSetupOf(document, items.bands.at(item->band).section));
        const double before = item->place.Right(), now = item->place.left + grid.width;
        const bool wasOnPage = before <= widest + NoticedExcess;
        if (wasOnPage && now > before + NoticedExcess && now > widest + NoticedExcess) {
            NarrowColumns(document, region, grid, now - widest);
        }
    }
    GrowBandOfTable(document, items, region);
}

}  // namespace designer
