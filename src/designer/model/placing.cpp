// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/model/placing.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "designer/document/editing.h"
#include "designer/document/item_size.h"
#include "designer/document/tablix_grid.h"

namespace designer {
namespace {

constexpr double Hair = 0.005;  // points; less is no difference

const ReportItem* Find(const ReportItems& items, ElementId id) {
    const auto found = std::find_if(items.items.begin(), items.items.end(),
                                    [id](const ReportItem& item) { return item.id == id; });
    return found == items.items.end() ? nullptr : &*found;
}

bool Differs(double a, double b) {
    return std::abs(a - b) > Hair;
}

double Written(const Document& document, ElementId id, std::string_view path) {
    const auto text = document.TextAt(id, path);
    return text ? PointsOf(*text).value_or(0) : 0;
}

// Returns the corner of the item's container, from the corner of its band.
Rect ContainerOf(const ReportItems& items, const ReportItem& item) {
    const ReportItem* container = Find(items, item.container);
    return container ? container->place : Rect{};
}

void SetPlace(Document& document, const ReportItems& items, const ReportItem& item, const Rect& place) {
    const Rect around = ContainerOf(items, item);
    const double left = std::max(0.0, place.left - around.left);
    const double top = std::max(0.0, place.top - around.top);
    if (Differs(place.left, item.place.left)) {
        SetSize(document, item.id, "Left", left);
    }
    if (Differs(place.top, item.place.top)) {
        SetSize(document, item.id, "Top", top);
    }
    if (CanResize(item)) {
        if (Differs(place.width, item.place.width)) {
            SetSize(document, item.id, "Width", place.width);
        }
        if (Differs(place.height, item.place.height)) {
            SetSize(document, item.id, "Height", place.height);
        }
    }
}

// The width is that of the report or, since 2010, of the section; page header and footer are in its Page
// there.
ElementId OwnerOfWidth(const Document& document, const ReportBand& band) {
    const ElementId parent = document.Parent(band.element);
    return document.Name(parent) == "Page" ? document.Parent(parent) : parent;
}

// Asks the document for what is written now: another item may have made the band larger in the same step.
void GrowBand(Document& document, const ReportBand& band, double right, double bottom) {
    if (bottom > std::max(band.height, Written(document, band.element, "Height")) + Hair) {
        SetBandHeight(document, band, bottom);
    }
    if (right > std::max(band.width, Written(document, OwnerOfWidth(document, band), "Width")) + Hair) {
        SetBandWidth(document, band, right);
    }
}

// Places it and lets its band grow. Items in other items do not move the edges of the band.
void PlaceOne(Document& document, const ReportItems& items, const Placement& placement) {
    const ReportItem* item = Find(items, placement.id);
    if (!item || !CanMove(*item)) {
        return;
    }
    SetPlace(document, items, *item, placement.place);
    const ReportBand& band = items.bands.at(item->band);
    if (item->container == band.element) {
        const Rect& place = placement.place;
        GrowBand(document, band, std::max(place.left, place.Right()), std::max(place.top, place.Bottom()));
    }
}

void SetZIndex(Document& document, const ReportItem& item, int index) {
    if (index != item.zIndex) {
        SetText(document, item.id, "ZIndex", std::to_string(index));
    }
}

bool Holds(const std::vector<ElementId>& ids, ElementId id) {
    return std::find(ids.begin(), ids.end(), id) != ids.end();
}

}  // namespace

bool CanMove(const ReportItem& item) {
    return item.cell == NoElement;
}

bool CanResize(const ReportItem& item) {
    return item.cell == NoElement && !HasGrid(item.kind);
}

std::vector<ElementId> Movable(const ReportItems& items, const std::vector<ElementId>& ids) {
    std::vector<ElementId> result;
    for (const ElementId id : ids) {
        const ReportItem* item = Find(items, id);
        bool moves = item && CanMove(*item);
        for (const ReportItem* around = item; moves && around; around = Find(items, around->container)) {
            moves = around == item || !Holds(ids, around->id);
        }
        if (moves) {
            result.push_back(id);
        }
    }
    return result;
}

std::vector<ElementId> Resizable(const ReportItems& items, const std::vector<ElementId>& ids) {
    std::vector<ElementId> result;
    for (const ElementId id : ids) {
        const ReportItem* item = Find(items, id);
        if (item && CanResize(*item)) {
            result.push_back(id);
        }
    }
    return result;
}

void Place(Document& document, const ReportItems& items, const std::vector<Placement>& placements) {
    for (const Placement& placement : placements) {
        PlaceOne(document, items, placement);
    }
}

void PlaceInBand(Document& document, const ReportItems& items, const Placement& placement,
                 const ReportBand& band) {
    const ReportItem* item = Find(items, placement.id);
    if (!item || items.bands.at(item->band).element == band.element) {
        PlaceOne(document, items, placement);
        return;
    }
    Move(document, item->id, EnsureChild(document, band.element, "ReportItems"));
    SetSize(document, item->id, "Left", std::max(0.0, placement.place.left));
    SetSize(document, item->id, "Top", std::max(0.0, placement.place.top));
    GrowBand(document, band, placement.place.Right(), placement.place.Bottom());
}

void GrowBandOfTable(Document& document, const ReportItems& items, ElementId region) {
    if (const ReportItem* item = Find(items, region); item && document.Has(region)) {
        const TablixGrid grid = GridOf(document, region);
        GrowBand(document, items.bands[item->band], item->place.left + grid.width,
                 item->place.top + grid.height);
    }
}

void SetBandHeight(Document& document, const ReportBand& band, double height) {
    SetSize(document, band.element, "Height", std::max(0.0, height));
}

void SetBandWidth(Document& document, const ReportBand& band, double width) {
    SetSize(document, OwnerOfWidth(document, band), "Width", std::max(0.0, width));
}

void BringToFront(Document& document, const ReportItems& items, const std::vector<ElementId>& ids) {
    for (const ElementId id : ids) {
        const ReportItem* item = Find(items, id);
        if (!item) {
            continue;
        }
        int highest = -1;
        for (const ReportItem& other : items.items) {
            if (other.container == item->container && !Holds(ids, other.id)) {
                highest = std::max(highest, other.zIndex);
            }
        }
        SetZIndex(document, *item, highest + 1);
    }
}

void SendToBack(Document& document, const ReportItems& items, const std::vector<ElementId>& ids) {
    for (const ElementId id : ids) {
        const ReportItem* item = Find(items, id);
        if (!item) {
            continue;
        }
        std::vector<const ReportItem*> others;
        int lowest = 1;
        for (const ReportItem& other : items.items) {
            if (other.container == item->container && !Holds(ids, other.id)) {
                others.push_back(&other);
                lowest = std::min(lowest, other.zIndex);
            }
        }
        // No index is below 0, so the others make room.
        for (const ReportItem* other : others) {
            SetZIndex(document, *other, lowest < 1 ? other->zIndex + 1 - lowest : other->zIndex);
        }
        SetZIndex(document, *item, 0);
    }
}

}  // namespace designer
