// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/layout/drawing/docking.h"

#include <string_view>

#include "rdl/values/ascii.h"

namespace rdl::layout {
namespace {

constexpr double Gap = 4;  // points

enum class Side { Top, Bottom, Left, Right };

Side SideOf(const std::string& position) {
    for (const auto& [word, side] :
         {std::pair{"Bottom", Side::Bottom}, {"Left", Side::Left}, {"Right", Side::Right}}) {
        if (EqualNoCase(position.substr(0, std::string_view(word).size()), word)) {
            return side;
        }
    }
    return Side::Top;
}

// Along its side: 0 at the beginning, 1 at the end.
double PlaceOf(const std::string& position, Side side) {
    const auto ends = [&](std::string_view word) {
        return position.size() > word.size() &&
               EqualNoCase(position.substr(position.size() - word.size()), word);
    };
    if (side == Side::Top || side == Side::Bottom) {
        return ends("Left") ? 0 : ends("Right") ? 1 : 0.5;
    }
    return ends("Top") ? 0 : ends("Bottom") ? 1 : 0.5;
}

}  // namespace

void DrawTitle(const ChartCaption& title, Rect& available, Canvas& canvas) {
    if (title.text.empty()) {
        return;
    }
    const Side side = SideOf(title.position);
    const double place = PlaceOf(title.position, side);
    const bool upright = side == Side::Left || side == Side::Right;
    const std::string text = Wrapped(title.text, *title.style, upright ? available.height : available.width);
    const Extents size = Canvas::Measure(text, *title.style);
    const double thick = size.height + Gap;
    if (thick > (upright ? available.width : available.height)) {
        return;
    }
    Rect band = available;
    if (upright) {
        band.width = size.height;
        band.x = side == Side::Left ? available.x : available.Right() - size.height;
        available.x += side == Side::Left ? thick : 0;
        available.width -= thick;
        canvas.Box(band, title.box.get());
        canvas.Text(text, *title.style, {band.x + band.width / 2, band.y + band.height / 2}, {0.5, 0.5},
                    side == Side::Left ? -90 : 90);
        return;
    }
    band.height = size.height;
    band.y = side == Side::Top ? available.y : available.Bottom() - size.height;
    available.y += side == Side::Top ? thick : 0;
    available.height -= thick;
    const double x = band.x + band.width * place;
    const Rect box{x - (size.width + 2 * Gap) * place, band.y, size.width + 2 * Gap, band.height};
    canvas.Box(box, title.box.get());
    canvas.Text(text, *title.style, {box.x + box.width / 2, band.y}, {0.5, 0});
}

Rect DockAt(const std::string& position, Extents size, Rect& available) {
    const auto begins = [&](std::string_view word) {
        return EqualNoCase(position.substr(0, word.size()), word);
    };
    const auto ends = [&](std::string_view word) {
        return position.size() > word.size() &&
               EqualNoCase(position.substr(position.size() - word.size()), word);
    };
    Rect area{available.x, available.y, size.width, size.height};
    if (begins("Top") || begins("Bottom")) {
        area.x += (available.width - area.width) * (ends("Left") ? 0 : ends("Right") ? 1 : 0.5);
        area.y = begins("Top") ? available.y : available.Bottom() - area.height;
        available.y += begins("Top") ? area.height + Gap : 0;
        available.height -= area.height + Gap;
    } else {
        area.x = begins("Left") ? available.x : available.Right() - area.width;
        area.y += (available.height - area.height) * (ends("Bottom") ? 1 : ends("Center") ? 0.5 : 0);
        available.x += begins("Left") ? area.width + Gap : 0;
        available.width -= area.width + Gap;
    }
    return area;
}

}  // namespace rdl::layout
