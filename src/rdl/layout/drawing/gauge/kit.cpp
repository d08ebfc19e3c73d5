// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/layout/drawing/gauge/kit.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "rdl/layout/model/colors.h"
#include "rdl/values/ascii.h"

namespace rdl::layout {
namespace {

Color Middle(Color one, Color other) {
    Color mixed = 0;
    for (const int shift : {0, 8, 16, 24}) {
        mixed |= ((one >> shift & 0xFF) + (other >> shift & 0xFF)) / 2 << shift;
    }
    return mixed;
}

// Along 0 at the inner end, 1 at the outer one; aside -0.5 to 0.5.
std::vector<Spot> CornersOf(const std::string& shape) {
    constexpr std::pair<std::string_view, int> Words[] = {{"Triangle", 1}, {"Diamond", 2}, {"Trapezoid", 3},
                                                          {"Star", 4},     {"Wedge", 5},   {"Pentagon", 6}};
    int which = 0;
    for (const auto& [word, number] : Words) {
        which = EqualNoCase(word, shape) ? number : which;
    }
    switch (which) {
        case 1:
            return {{0, -0.5}, {0, 0.5}, {1, 0}};
        case 2:
            return {{0, 0}, {0.5, 0.5}, {1, 0}, {0.5, -0.5}};
        case 3:
            return {{0, -0.5}, {0, 0.5}, {1, 0.25}, {1, -0.25}};
        case 4: {
            std::vector<Spot> corners;
            for (int i = 0; i < 10; ++i) {
                const double reach = i % 2 ? 0.2 : 0.5, angle = std::numbers::pi / 5 * i;
                corners.push_back({0.5 + reach * std::cos(angle), reach * std::sin(angle)});
            }
            return corners;
        }
        case 5:
            return {{0, -0.5}, {0, 0.5}, {0.5, 0.5}, {1, 0}, {0.5, -0.5}};
        case 6: {
            std::vector<Spot> corners;
            for (int i = 0; i < 5; ++i) {
                const double angle = 2 * std::numbers::pi / 5 * i;
                corners.push_back({0.5 + 0.5 * std::cos(angle), 0.5 * std::sin(angle)});
            }
            return corners;
        }
        default:
            return {{0, -0.5}, {0, 0.5}, {1, 0.5}, {1, -0.5}};
    }
}

}  // namespace

double GaugeKit::Number(const GaugePart& part, std::string_view property, double otherwise) const {
    return Styles().Number(part[property]).value_or(otherwise);
}

bool GaugeKit::Flag(const GaugePart& part, std::string_view property, bool otherwise) const {
    return Styles().Flag(part[property]).value_or(otherwise);
}

std::string GaugeKit::Text(const GaugePart& part, std::string_view property) const {
    return Styles().Text(part[property]);
}

bool GaugeKit::Is(const GaugePart& part, std::string_view property, std::string_view word) const {
    return EqualNoCase(Text(part, property), word);
}

GaugePlacement GaugeKit::Placement(const GaugePart& part, GaugePlacement otherwise) const {
    const std::string word = Text(part, "Placement");
    return EqualNoCase(word, "Inside")    ? GaugePlacement::Inside
           : EqualNoCase(word, "Outside") ? GaugePlacement::Outside
           : EqualNoCase(word, "Cross")   ? GaugePlacement::Cross
                                          : otherwise;
}

Color GaugeKit::ColorOf(const GaugePart& part, std::string_view property) const {
    Color color = Transparent;
    ParseColor(Text(part, property), color);
    return color;
}

Color GaugeKit::Fill(const Style& style, Color otherwise) const {
    const Color begin = Styles().ColorOf(style, {StyleProperty::BackgroundColor});
    const Color end = Styles().ColorOf(style, {StyleProperty::BackgroundGradientEndColor});
    const Expr* type = style.Find(StyleProperty::BackgroundGradientType);
    const std::string word = type ? Styles().Text(*type) : std::string();
    const bool gradient =
        !word.empty() && !EqualNoCase(word, "None") && !EqualNoCase(word, "Default") && IsVisible(end);
    if (gradient) {
        return IsVisible(begin) ? Middle(begin, end) : end;
    }
    if (IsVisible(begin)) {
        return begin;
    }
    const Expr* source = style.Find(StyleProperty::BackgroundColor);
    return source && EqualNoCase(Styles().Text(*source), "Transparent") ? Transparent : otherwise;
}

void DrawTurned(const std::vector<Spot>& corners, Spot origin, double direction, Color fill,
                const Border& border, Canvas& canvas) {
    const double s = std::sin(direction), c = std::cos(direction);
    std::vector<Spot> turned;
    turned.reserve(corners.size());
    for (const Spot& corner : corners) {
        turned.push_back({origin.x + corner.x * s + corner.y * c, origin.y - corner.x * c + corner.y * s});
    }
    canvas.Polygon(turned, fill, border);
}

void DrawMarker(const std::string& shape, const GaugeTrack& track, double share, GaugePlace place,
                double thick, MarkerPoints points, Color fill, const Border& border, Canvas& canvas) {
    const double length = place.outer - place.inner;
    if (EqualNoCase(shape, "None") || !(length > 0) || !(thick > 0)) {
        return;
    }
    if (EqualNoCase(shape, "Circle")) {
        canvas.Circle(track.At(share, (place.inner + place.outer) / 2), std::min(length, thick) / 2, fill,
                      border);
        return;
    }
    std::vector<Spot> corners = CornersOf(shape);
    for (Spot& corner : corners) {
        corner.x = (points == MarkerPoints::Inwards ? 1 - corner.x : corner.x) * length;
        corner.y *= thick;
    }
    DrawTurned(corners, track.At(share, place.inner), track.Direction(share), fill, border, canvas);
}

void DrawFitted(const std::string& text, const CharStyle& textStyle, const BoxStyle& box, const Rect& area,
                bool fillsArea, double degrees, Canvas& canvas) {
    CharStyle sized = textStyle;
    const std::string lines = fillsArea ? text : Wrapped(text, textStyle, area.width);
    if (fillsArea) {
        constexpr float Largest = 400;  // points
        const Extents size = Turned(Canvas::Measure(lines, sized), degrees);
        if (size.width > 0 && size.height > 0) {
            const double grow = std::min(area.width / size.width, area.height / size.height);
            sized.size = std::min(Largest, static_cast<float>(static_cast<double>(sized.size) * grow));
        }
    }
    if (!(sized.size > 0.1F)) {
        return;
    }
    const double across = box.hAlign == HAlign::Right ? 1 : box.hAlign == HAlign::Center ? 0.5 : 0;
    const double down = box.vAlign == VAlign::Bottom ? 1 : box.vAlign == VAlign::Middle ? 0.5 : 0;
    const Extents size = Turned(Canvas::Measure(lines, sized), degrees);
    const Spot middle{area.x + (area.width - size.width) * across + size.width / 2,
                      area.y + (area.height - size.height) * down + size.height / 2};
    canvas.Text(lines, sized, middle, {0.5, 0.5}, degrees);
}

}  // namespace rdl::layout
