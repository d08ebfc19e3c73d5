// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/model/arranging.h"

#include <algorithm>
#include <numeric>

namespace designer {
namespace {

// One axis of a place.
struct Direction {
    double Rect::*begin;
    double Rect::*size;
};
constexpr Direction Across{&Rect::left, &Rect::width};
constexpr Direction Down{&Rect::top, &Rect::height};

// `part` is 0 for the near edge, 0.5 for the middle and 1 for the far edge.
void Align(std::vector<Placement>& items, Direction axis, double part) {
    const Rect leader = items.back().place;
    const double line = leader.*axis.begin + part * (leader.*axis.size);
    for (Placement& item : items) {
        item.place.*axis.begin = line - part * (item.place.*axis.size);
    }
}

void GiveSize(std::vector<Placement>& items, Direction axis) {
    for (Placement& item : items) {
        item.place.*axis.size = items.back().place.*axis.size;
    }
}

void Distribute(std::vector<Placement>& items, Direction axis) {
    std::vector<std::size_t> order(items.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
        return items[a].place.*axis.begin < items[b].place.*axis.begin;
    });
    const Rect& first = items[order.front()].place;
    const Rect& last = items[order.back()].place;
    double taken = 0;
    for (const Placement& item : items) {
        taken += item.place.*axis.size;
    }
    const double whole = last.*axis.begin + last.*axis.size - first.*axis.begin;
    const double gap = (whole - taken) / static_cast<double>(items.size() - 1);
    double next = first.*axis.begin;
    for (const std::size_t index : order) {
        items[index].place.*axis.begin = next;
        next += items[index].place.*axis.size + gap;
    }
}

}  // namespace

std::size_t LeastItems(Arrangement arrangement) {
    const bool distributes =
        arrangement == Arrangement::DistributeAcross || arrangement == Arrangement::DistributeDown;
    return distributes ? 3 : 2;
}

std::vector<Placement> Arranged(std::vector<Placement> items, Arrangement arrangement) {
    if (items.size() < LeastItems(arrangement)) {
        return items;
    }
    switch (arrangement) {
        case Arrangement::AlignLeft:
            Align(items, Across, 0);
            break;
        case Arrangement::AlignCentre:
            Align(items, Across, 0.5);
            break;
        case Arrangement::AlignRight:
            Align(items, Across, 1);
            break;
        case Arrangement::AlignTop:
            Align(items, Down, 0);
            break;
        case Arrangement::AlignMiddle:
            Align(items, Down, 0.5);
            break;
        case Arrangement::AlignBottom:
            Align(items, Down, 1);
            break;
        case Arrangement::SameWidth:
            GiveSize(items, Across);
            break;
        case Arrangement::SameHeight:
            GiveSize(items, Down);
            break;
        case Arrangement::SameSize:
            GiveSize(items, Across);
            GiveSize(items, Down);
            break;
        case Arrangement::DistributeAcross:
            Distribute(items, Across);
            break;
        case Arrangement::DistributeDown:
            Distribute(items, Down);
            break;
    }
    return items;
}

Rect AreaOf(const std::vector<Placement>& items) {
    if (items.empty()) {
        return {};
    }
    double left = items.front().place.left, top = items.front().place.top;
    double right = left, bottom = top;
    for (const Placement& item : items) {
        const Rect& place = item.place;
        left = std::min({left, place.left, place.Right()});
        top = std::min({top, place.top, place.Bottom()});
        right = std::max({right, place.left, place.Right()});
        bottom = std::max({bottom, place.top, place.Bottom()});
    }
    return {left, top, right - left, bottom - top};
}

}  // namespace designer
