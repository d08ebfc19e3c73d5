// SPDX-License-Identifier: GPL-3.0-or-later
// The pointers of a scale: needles, markers, bars and thermometers.
#include <algorithm>
#include <cmath>
#include <string>

#include "rdl/layout/drawing/gauge/scale.h"
#include "rdl/values/ascii.h"

namespace rdl::layout {
namespace {

constexpr double UsualPointer = 15, UsualMarker = 10, UsualCap = 26;  // percent
constexpr Color PointerColor = 0xFF2F4F6F, CapColor = 0xFF808890, TubeColor = 0xFFF2F4F6;
constexpr Border Thin{LineStyle::Solid, 0xFF808080, 0.5F};

struct Pointer {
    const GaugeAxis& axis;
    const GaugePointer& definition;
    const GaugeKit& kit;
    double value, share;

    double Size(std::string_view property, double usual) const {
        return kit.Number(definition, property, usual) * Percent * axis.track.unit;
    }
    GaugePlacement Placement(GaugePlacement usual) const { return kit.Placement(definition, usual); }
    Color Fill() const { return kit.Fill(definition.style, PointerColor); }
    Border Outline() const { return kit.Outline(definition.style); }
};

void DrawBar(const Pointer& pointer, double from) {
    const GaugePlace place =
        PlaceBeside(pointer.axis.track, pointer.Placement(GaugePlacement::Cross),
                    pointer.Size("DistanceFromScale", 0), pointer.Size("Width", UsualPointer));
    const Color own = RangeColor(pointer.axis, "InRangeBarPointerColor", pointer.value, pointer.kit);
    pointer.kit.Paper().Path(
        pointer.axis.track.Band(from, pointer.share, place.inner, place.outer, place.inner, place.outer),
        IsVisible(own) ? own : pointer.Fill(), pointer.Outline());
}

void DrawMark(const Pointer& pointer) {
    const GaugePlacement placement = pointer.Placement(GaugePlacement::Inside);
    const GaugePlace place = PlaceBeside(pointer.axis.track, placement, pointer.Size("DistanceFromScale", 0),
                                         pointer.Size("MarkerLength", UsualMarker));
    const std::string word = pointer.kit.Text(pointer.definition, "MarkerStyle");
    const MarkerPoints points =
        placement == GaugePlacement::Outside ? MarkerPoints::Inwards : MarkerPoints::Outwards;
    DrawMarker(word.empty() ? "Triangle" : word, pointer.axis.track, pointer.share, place,
               pointer.Size("Width", UsualPointer), points, pointer.Fill(), pointer.Outline(),
               pointer.kit.Paper());
}

// From the pivot: forward 1 is the tip, aside is in half widths.
std::vector<Spot> NeedleCorners(const std::string& style) {
    const auto has = [&style](std::string_view word) { return style.find(word) != std::string::npos; };
    constexpr double Tail = -0.25, Head = 0.75, Barb = 0.65;
    if (has("Rectangular")) {
        return {{0, -0.5}, {1, -0.5}, {1, 0.5}, {0, 0.5}};
    }
    const double back = has("Tail") ? Tail : 0;
    if (has("Arrow") && !has("Tapered")) {
        const double notch = has("Stealth") ? Head : Barb + (Head - Barb) / 2;
        const double wide = has("WideTail") ? 1 : 0.3;
        return {{back, -wide}, {notch, -0.3}, {Barb, -1}, {1, 0}, {Barb, 1}, {notch, 0.3}, {back, wide}};
    }
    if (has("Tapered")) {
        return {{back, -1}, {0.97, -0.25}, {1, 0}, {0.97, 0.25}, {back, 1}};
    }
    return {{back, -1}, {1, 0}, {back, 1}};
}

void DrawNeedle(const Pointer& pointer) {
    const GaugeTrack& track = pointer.axis.track;
    const GaugePlacement placement = pointer.Placement(GaugePlacement::Inside);
    const double distance = pointer.Size("DistanceFromScale", 0);
    const double tip = placement == GaugePlacement::Inside    ? -track.width / 2 - distance
                       : placement == GaugePlacement::Outside ? track.width / 2 + distance
                                                              : -distance;
    const double length = track.radius + tip;
    const double half = std::max(pointer.Size("Width", UsualPointer) / 2, 0.25);
    std::vector<Spot> corners = NeedleCorners(pointer.kit.Text(pointer.definition, "NeedleStyle"));
    for (Spot& corner : corners) {
        corner = {corner.x * length, corner.y * half};
    }
    DrawTurned(corners, track.center, track.Direction(pointer.share), pointer.Fill(), pointer.Outline(),
               pointer.kit.Paper());
}

void DrawCap(const Pointer& pointer) {
    const GaugePart& cap = pointer.definition.cap;
    const double radius = pointer.kit.Number(cap, "Width", UsualCap) * Percent * pointer.axis.track.unit / 2;
    if (!pointer.kit.IsHidden(cap) && radius > 0) {
        const Border own = pointer.kit.Outline(cap.style);
        pointer.kit.Paper().Circle(pointer.axis.track.center, radius, pointer.kit.Fill(cap.style, CapColor),
                                   own.style == LineStyle::None ? Thin : own);
    }
}

// A tube along the scale with the bulb before its beginning.
void DrawThermometer(const Pointer& pointer) {
    constexpr double UsualBulb = 50, UsualOffset = 5;
    const GaugeTrack& track = pointer.axis.track;
    const GaugePart& bulb = pointer.definition.thermometer;
    const double wide = pointer.Size("Width", UsualPointer);
    const GaugePlace place = PlaceBeside(track, pointer.Placement(GaugePlacement::Cross),
                                         pointer.Size("DistanceFromScale", 0), wide);
    const double radius = wide / 2 * (1 + pointer.kit.Number(bulb, "BulbSize", UsualBulb) * Percent);
    const double offset = pointer.kit.Number(bulb, "BulbOffset", UsualOffset) * Percent * track.unit;
    const double before = -(offset + radius) / std::max(track.Length(), 1.0);
    Canvas& paper = pointer.kit.Paper();
    paper.Path(track.Band(before, 1, place.inner, place.outer, place.inner, place.outer),
               pointer.kit.Fill(bulb.style, TubeColor), Thin);
    paper.Path(track.Band(before, pointer.share, place.inner, place.outer, place.inner, place.outer),
               pointer.Fill(), pointer.Outline());
    paper.Circle(track.At(before, (place.inner + place.outer) / 2), radius, pointer.Fill(),
                 pointer.Outline());
}

double Snapped(const GaugePointer& pointer, double value, const GaugeKit& kit) {
    const double interval = kit.Number(pointer, "SnappingInterval", 0);
    return kit.Flag(pointer, "SnappingEnabled", false) && interval > 0
               ? std::round(value / interval) * interval
               : value;
}

void DrawPointer(const Pointer& pointer) {
    const std::string type = pointer.kit.Text(pointer.definition, "Type");
    if (EqualNoCase(type, "Bar")) {
        const bool zero = pointer.kit.Is(pointer.definition, "BarStart", "Zero");
        DrawBar(pointer, zero ? pointer.axis.ShareOf(0) : 0);
    } else if (pointer.axis.track.round && !EqualNoCase(type, "Marker")) {
        const bool onTop = pointer.kit.Flag(pointer.definition.cap, "OnTop", true);
        if (!onTop) {
            DrawCap(pointer);
        }
        DrawNeedle(pointer);
        if (onTop) {
            DrawCap(pointer);
        }
    } else if (EqualNoCase(type, "Thermometer")) {
        DrawThermometer(pointer);
    } else {
        DrawMark(pointer);
    }
}

}  // namespace

void DrawPointers(const GaugeAxis& axis, const GaugeKit& kit) {
    for (const GaugePointer& pointer : axis.definition.pointers) {
        const std::optional<double> value = kit.Values().Of(pointer.value);
        if (value && !kit.IsHidden(pointer)) {
            const double snapped = Snapped(pointer, *value, kit);
            DrawPointer({axis, pointer, kit, snapped, axis.ShareOf(snapped)});
        }
    }
}

}  // namespace rdl::layout
