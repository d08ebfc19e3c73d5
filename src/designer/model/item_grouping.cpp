// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/model/item_grouping.h"

#include <algorithm>
#include <iterator>

#include "designer/document/editing.h"
#include "designer/document/insertion.h"
#include "designer/document/item_size.h"
#include "designer/document/names.h"
#include "designer/document/properties/properties.h"
#include "designer/document/xml_text.h"
#include "designer/model/placing.h"
#include "designer/tables/cell_text.h"
#include "designer/tables/tracks.h"

namespace designer {
namespace {

// Lines may have negative sizes.
Rect Normal(const Rect& place) {
    return {std::min(place.left, place.Right()), std::min(place.top, place.Bottom()),
            std::max(place.width, -place.width), std::max(place.height, -place.height)};
}

std::string RectangleXml(const Document& document, const Rect& place, int order) {
    const auto size = [&](std::string_view name, double points) {
        return LeafOf(name, SizeOfReport(document, points));
    };
    return "<Rectangle Name=\"" + UniqueName(document, "Rectangle1") + "\"><ReportItems></ReportItems>" +
           (IsOlderSchema(document) ? "" : "<KeepTogether>true</KeepTogether>") + size("Top", place.top) +
           size("Left", place.left) + size("Height", place.height) + size("Width", place.width) +
           (order > 0 ? "<ZIndex>" + std::to_string(order) + "</ZIndex>" : "") + "<Style /></Rectangle>";
}

// Moves elements to a place before all of them in the text, as one edit. They are in document order, and the
// parent has children.
void MoveAll(Document& document, const std::vector<ElementId>& ids, ElementId parent, ElementId before) {
    const SourceTree& tree = document.Tree();
    std::vector<Splice> splices, removals;
    for (const ElementId id : ids) {
        const int first = document.IndexOf(id);
        Splice splice = InsertionOf(document, parent, before, tree.At(tree[first].whole));
        for (int index = first; index < tree.Count() && tree[index].whole.begin < tree[first].whole.end;
             ++index) {
            splice.keptIds.push_back(document.IdAt(index));
        }
        splices.push_back(std::move(splice));
        removals.push_back(RemovalOf(document, id));
    }
    splices.insert(splices.end(), std::make_move_iterator(removals.begin()),
                   std::make_move_iterator(removals.end()));
    if (!splices.empty()) {
        document.Apply("Move items", std::move(splices));
    }
}

// Writes the places of the items as they are from a corner.
void SetPlaces(Document& document, const std::vector<const ReportItem*>& items, const Rect& corner) {
    std::vector<SizeChange> sizes;
    for (const ReportItem* item : items) {
        sizes.push_back({item->id, "Left", item->place.left - corner.left});
        sizes.push_back({item->id, "Top", item->place.top - corner.top});
    }
    SetSizes(document, sizes, "Move items");
}

}  // namespace

ElementId GroupItems(Document& document, const ReportItems& items, const std::vector<ElementId>& ids) {
    std::vector<const ReportItem*> grouped;
    std::vector<Placement> places;
    int order = 0;
    // In the order of the file, which is that of drawing.
    for (const ReportItem& item : items.items) {
        if (std::find(ids.begin(), ids.end(), item.id) != ids.end()) {
            grouped.push_back(&item);
            places.push_back({item.id, Normal(item.place)});
            order = std::max(order, item.zIndex);
            if (item.container != grouped.front()->container || !CanMove(item)) {
                throw EditError("Only items that are in one band or rectangle become a group");
            }
        }
    }
    if (grouped.empty()) {
        throw EditError("No items are selected that could become a group");
    }
    const ReportItem* container = FindItem(items, grouped.front()->container);
    const Rect area = AreaOf(places);
    Rect within = area;
    within.left -= container ? container->place.left : 0;
    within.top -= container ? container->place.top : 0;
    const StepGroup group(document, "Group items");
    const ElementId rectangle = InsertXml(document, document.Parent(grouped.front()->id),
                                          RectangleXml(document, within, order), grouped.front()->id);
    const ElementId inside = EnsureChild(document, rectangle, "ReportItems");
    SetPlaces(document, grouped, area);
    Move(document, grouped.front()->id, inside);
    std::vector<ElementId> others;
    std::transform(grouped.begin() + 1, grouped.end(), std::back_inserter(others),
                   [](const ReportItem* item) { return item->id; });
    MoveAll(document, others, inside, NoElement);
    return rectangle;
}

std::vector<ElementId> UngroupItems(Document& document, const ReportItems& items,
                                    const std::vector<ElementId>& rectangles) {
    const StepGroup group(document, "Ungroup items");
    std::vector<ElementId> freed;
    for (const ElementId id : rectangles) {
        const ReportItem* rectangle = FindItem(items, id);
        if (!rectangle || rectangle->kind != "Rectangle") {
            continue;
        }
        if (!CanMove(*rectangle)) {
            throw EditError("A rectangle that fills a cell cannot be dissolved");
        }
        const ReportItem* container = FindItem(items, rectangle->container);
        const Rect corner = container ? container->place : Rect{};
        std::vector<const ReportItem*> inner;
        std::vector<ElementId> moved;
        for (const ReportItem& item : items.items) {
            if (item.container == id) {
                inner.push_back(&item);
                moved.push_back(item.id);
            }
        }
        SetPlaces(document, inner, corner);
        MoveAll(document, moved, document.Parent(id), id);
        freed.insert(freed.end(), moved.begin(), moved.end());
        Remove(document, id);
        RefuseIfUsed(document, {rectangle->name});
    }
    return freed;
}

}  // namespace designer
