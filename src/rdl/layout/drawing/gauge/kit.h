// SPDX-License-Identifier: GPL-3.0-or-later
// Helpers for drawing the parts of a gauge panel: properties by name, fills, and shapes. Lengths are in
// points, y downwards. Nothing here fails: a property that is absent or has no fitting value counts as
// absent.
#pragma once

#include <string>
#include <string_view>

#include "rdl/layout/drawing/gauge/track.h"
#include "rdl/layout/drawing/gauge/values.h"

namespace rdl::layout {

constexpr double Percent = 0.01;

class GaugeKit {
 public:
    GaugeKit(const GaugeValues& values, Canvas& canvas, const Culture& culture)
        : m_values(values), m_canvas(canvas), m_culture(culture) {}

    const GaugeValues& Values() const { return m_values; }
    const PartStyles& Styles() const { return m_values.Styles(); }
    Canvas& Paper() const { return m_canvas; }
    const Culture& NumberCulture() const { return m_culture; }

    // Return the property's value, or `otherwise` if it is absent.
    double Number(const GaugePart& part, std::string_view property, double otherwise) const;
    bool Flag(const GaugePart& part, std::string_view property, bool otherwise) const;
    // Returns "" if the property is absent.
    std::string Text(const GaugePart& part, std::string_view property) const;
    // Whether the property is `word`, without regard to case.
    bool Is(const GaugePart& part, std::string_view property, std::string_view word) const;
    bool IsHidden(const GaugePart& part) const { return Flag(part, "Hidden", false); }
    // Returns `otherwise` unless the part's Placement is Inside, Outside or Cross.
    GaugePlacement Placement(const GaugePart& part, GaugePlacement otherwise) const;
    // Returns Transparent if the property is absent or not a colour.
    Color ColorOf(const GaugePart& part, std::string_view property) const;

    // Returns the background colour, for a gradient the mean of its two colours; `otherwise` without one.
    Color Fill(const Style& style, Color otherwise) const;
    Border Outline(const Style& style) const { return Styles().BorderOf(style); }

 private:
    const GaugeValues& m_values;
    Canvas& m_canvas;
    const Culture& m_culture;
};

enum class MarkerPoints { Outwards, Inwards };
// Draws a marker or tick by its name: Rectangle, Triangle, Circle, Diamond, Trapezoid, Star, Wedge, Pentagon.
// It spans the two distances of `place` from the track at `share` (0 to 1 along it) and is `thick` points
// wide; pointed shapes point to `outer`, or Inwards to `inner`. Draws nothing for None or without an area;
// any other name is a rectangle.
void DrawMarker(const std::string& shape, const GaugeTrack& track, double share, GaugePlace place,
                double thick, MarkerPoints points, Color fill, const Border& border, Canvas& canvas);

// Draws a polygon whose corners {forward, aside}, in points, are relative to `origin` and a direction in
// radians, clockwise from upwards.
void DrawTurned(const std::vector<Spot>& corners, Spot origin, double direction, Color fill,
                const Border& border, Canvas& canvas);

// Draws a text in a rectangle, turned by `degrees`. `fillsArea`: the font size becomes the largest that fits,
// at most 400 points; else the text keeps its size and is wrapped. `box` gives the alignment.
void DrawFitted(const std::string& text, const CharStyle& textStyle, const BoxStyle& box, const Rect& area,
                bool fillsArea, double degrees, Canvas& canvas);

}  // namespace rdl::layout
