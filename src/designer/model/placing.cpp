// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/model/placing.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "designer/document/editing.h"
#include "designer/document/item_size.h"
#include "designer/document/tablix_grid.h"
#include "designer/model/report_body.h"

namespace designer {
namespace {

constexpr double Hair = 0.005;  // points; less is no difference

bool Differs(double a, double b) {
    return std::abs(a - b) > Hair;
}

double Written(const Document& document, ElementId id, std::string_view path) {
    const auto text = document.TextAt(id, path);
    return text ? PointsOf(*text).value_or(0) : 0;
}

// Returns the corner of the item's container, from the corner of its band.
Rect ContainerOf(const ReportItems& items, const ReportItem& item) {
    const ReportItem* container = FindItem(items, item.container);
    return container ? container->place : Rect{};
}

void AddSizes(std::vector<SizeChange>& sizes, const ReportItems& items, const ReportItem& item,
              const Rect& place) {
    const Rect around = ContainerOf(items, item);
    if (Differs(place.left, item.place.left)) {
        sizes.push_back({item.id, "Left", std::max(0.0, place.left - around.left)});
    }
    if (Differs(place.top, item.place.top)) {
        sizes.push_back({item.id, "Top", std::max(0.0, place.top - around.top)});
    }
    if (CanResize(item) && Differs(place.width, item.place.width)) {
        sizes.push_back({item.id, "Width", place.width});
    }
    if (CanResize(item) && Differs(place.height, item.place.height)) {
        sizes.push_back({item.id, "Height", place.height});
    }
}

// The width is that of the report or, since 2010, of the section; page header and footer are in its Page
// there.
ElementId OwnerOfWidth(const Document& document, const ReportBand& band) {
    const ElementId parent = document.Parent(band.element);
    return document.Name(parent) == "Page" ? document.Parent(parent) : parent;
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

const ReportItem* FindItem(const ReportItems& items, ElementId id) {
    const auto found = std::find_if(items.items.begin(), items.items.end(),
                                    [id](const ReportItem& item) { return item.id == id; });
    return found == items.items.end() ? nullptr : &*found;
}

bool CanMove(const ReportItem& item) {
    return item.cell == NoElement;
}

bool CanResize(const ReportItem& item) {
    return item.cell == NoElement && !HasGrid(item.kind);
}

std::vector<ElementId> Movable(const ReportItems& items, const std::vector<ElementId>& ids) {
    std::vector<ElementId> result;
    for (const ElementId id : ids) {
        const ReportItem* item = FindItem(items, id);
        bool moves = item && CanMove(*item);
        for (const ReportItem* around = item; moves && around; around = FindItem(items, around->container)) {
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
        const ReportItem* item = FindItem(items, id);
        if (item && CanResize(*item)) {
            result.push_back(id);
        }
    }
    return result;
}

// Items in other items do not move the edges of a band.
void Place(Document& document, const ReportItems& items, const std::vector<Placement>& placements) {
    std::vector<SizeChange> sizes;
    std::vector<Rect> reach(items.bands.size());
    for (const Placement& placement : placements) {
        const ReportItem* item = FindItem(items, placement.id);
        if (!item || !CanMove(*item)) {
            continue;
        }
        AddSizes(sizes, items, *item, placement.place);
        if (item->container == items.bands.at(item->band).element) {
            const Rect& place = placement.place;
            Rect& own = reach[item->band];
            own.width = std::max({own.width, place.left, place.Right()});
            own.height = std::max({own.height, place.top, place.Bottom()});
        }
    }
    SetSizes(document, sizes, "Place");
    for (std::size_t band = 0; band < reach.size(); ++band) {
        GrowBand(document, items.bands[band], reach[band].width, reach[band].height);
    }
}

void PlaceInBand(Document& document, const ReportItems& items, const Placement& placement,
                 const ReportBand& band) {
    const ReportItem* item = FindItem(items, placement.id);
    if (!item || items.bands.at(item->band).element == band.element) {
        Place(document, items, {placement});
        return;
    }
    const ReportBand target = CompleteBand(document, band);
    Move(document, item->id, EnsureChild(document, target.element, "ReportItems"));
    SetSize(document, item->id, "Left", std::max(0.0, placement.place.left));
    SetSize(document, item->id, "Top", std::max(0.0, placement.place.top));
    GrowBand(document, target, placement.place.Right(), placement.place.Bottom());
}

// Asks the document for what is written now: another item may have made the band larger in the same step.
void GrowBand(Document& document, const ReportBand& band, double right, double bottom) {
    if (band.element == NoElement) {
        return;  // nothing is in it
    }
    if (bottom > std::max(band.height, Written(document, band.element, "Height")) + Hair) {
        SetBandHeight(document, band, bottom);
    }
    if (right > std::max(band.width, Written(document, OwnerOfWidth(document, band), "Width")) + Hair) {
        SetBandWidth(document, band, right);
    }
}

void ShiftItems(Document& document, const std::vector<ElementId>& ids, double shift) {
    std::vector<SizeChange> sizes;
    for (const ElementId id : ids) {
        for (const char* side : {"Left", "Top"}) {
            sizes.push_back({id, side, Written(document, id, side) + shift});
        }
    }
    SetSizes(document, sizes, "Move items");
}

void KeepInBand(Document& document, const std::vector<ElementId>& ids) {
    const ReportItems items = ReadReportItems(document);
    double excess = 0, leftmost = 0, bottom = 0, right = 0;
    const ReportItem* first = nullptr;
    for (const ReportItem& item : items.items) {
        if (Holds(ids, item.id) && CanMove(item) && (!first || item.band == first->band)) {
            const double left = std::min(item.place.left, item.place.Right());
            right = std::max({right, item.place.left, item.place.Right()});
            bottom = std::max({bottom, item.place.top, item.place.Bottom()});
            leftmost = first ? std::min(leftmost, left) : left;
            first = first ? first : &item;
        }
    }
    if (!first || first->container != items.bands[first->band].element) {
        return;
    }
    const ReportBand& band = items.bands[first->band];
    excess = std::clamp(right - band.width, 0.0, std::max(0.0, leftmost));
    for (const ReportItem& item : items.items) {
        if (excess > Hair && item.container == band.element && Holds(ids, item.id)) {
            SetSize(document, item.id, "Left", item.place.left - excess);
        }
    }
    GrowBand(document, band, right - excess, bottom);
}

namespace {

bool MeetsAcross(const Rect& a, const Rect& b) {
    return a.left < b.Right() - Hair && b.left < a.Right() - Hair;
}

// What is in a container, from the top down, while something in it becomes higher or lower.
class Neighbours {
 public:
    Neighbours(const ReportItems& items, const ReportItem& item) : m_item(item) {
        for (const ReportItem& other : items.items) {
            if (other.container == item.container && other.id != item.id && other.cell == NoElement) {
                m_others.push_back({&other, other.place, false});
            }
        }
        std::sort(m_others.begin(), m_others.end(),
                  [](const Other& a, const Other& b) { return a.place.top < b.place.top; });
    }

    // Moves those below the item, and returns where the lowest of all then ends.
    double Follow(const Rect& now) {
        const double growth = now.height - m_item.place.height;
        Rect wide = m_item.place;
        wide.width = std::max(wide.width, now.width);
        double lowest = now.Bottom();
        for (Other& other : m_others) {
            const Rect was = other.item->place;
            if (was.top >= m_item.place.Bottom() - Hair && IsPushed(was, wide)) {
                other.place.top = growth > 0 ? was.top + growth : HighestPlace(other, was.top + growth, now);
                other.moves = true;
            }
            lowest = std::max(lowest, other.place.Bottom());
        }
        return lowest;
    }

    void Write(Document& document, double top) const {
        for (const Other& other : m_others) {
            if (Differs(other.place.top, other.item->place.top)) {
                SetSize(document, other.item->id, "Top", other.place.top - top);
            }
        }
    }

 private:
    struct Other {
        const ReportItem* item;
        Rect place;  // afterwards
        bool moves;
    };

    // Whether the item pushes it, or another one that the item pushes.
    bool IsPushed(const Rect& was, const Rect& wide) const {
        return MeetsAcross(was, wide) ||
               std::any_of(m_others.begin(), m_others.end(), [&](const Other& above) {
                   return above.moves && MeetsAcross(was, above.item->place) &&
                          above.item->place.Bottom() <= was.top + Hair;
               });
    }

    // Returns the wish, or the place below what it would come to lie on.
    double HighestPlace(const Other& other, double wish, const Rect& now) const {
        const Rect was = other.item->place;
        double top = MeetsAcross(was, now) ? std::max(wish, std::min(was.top, now.Bottom())) : wish;
        for (const Other& above : m_others) {
            if (above.item != other.item && above.item->place.Bottom() <= was.top + Hair &&
                MeetsAcross(was, above.place)) {
                top = std::max(top, above.place.Bottom());
            }
        }
        return top;
    }

    const ReportItem& m_item;
    std::vector<Other> m_others;
};

// The item has become as large as `now`: its neighbours, and what it is in, follow.
void MakeRoom(Document& document, const ReportItems& items, const ReportItem& item, const Rect& now) {
    if (item.cell != NoElement) {
        return;
    }
    Neighbours neighbours(items, item);
    const double lowest = Differs(now.height, item.place.height) ? neighbours.Follow(now) : now.Bottom();
    neighbours.Write(document, ContainerOf(items, item).top);
    const ReportItem* container = FindItem(items, item.container);
    if (!container) {
        GrowBand(document, items.bands[item.band], now.Right(), lowest);
        return;
    }
    Rect around = container->place;
    around.height = std::max(around.height, lowest - around.top);
    around.width = std::max(around.width, now.Right() - around.left);
    if (CanResize(*container) &&
        (Differs(around.height, container->place.height) || Differs(around.width, container->place.width))) {
        SetSize(document, container->id, "Height", around.height);
        SetSize(document, container->id, "Width", around.width);
        MakeRoom(document, items, *container, around);
    }
}

}  // namespace

void GrowBandOfTable(Document& document, const ReportItems& items, ElementId region) {
    if (const ReportItem* item = FindItem(items, region); item && document.Has(region)) {
        const TablixGrid grid = GridOf(document, region);
        MakeRoom(document, items, *item, {item->place.left, item->place.top, grid.width, grid.height});
    }
}

void SetBandHeight(Document& document, const ReportBand& band, double height) {
    SetSize(document, CompleteBand(document, band).element, "Height", std::max(0.0, height));
}

void SetBandWidth(Document& document, const ReportBand& band, double width) {
    SetSize(document, OwnerOfWidth(document, CompleteBand(document, band)), "Width", std::max(0.0, width));
}

void BringToFront(Document& document, const ReportItems& items, const std::vector<ElementId>& ids) {
    for (const ElementId id : ids) {
        const ReportItem* item = FindItem(items, id);
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
        const ReportItem* item = FindItem(items, id);
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
