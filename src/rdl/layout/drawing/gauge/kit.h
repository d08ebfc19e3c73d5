// SPDX-License-Identifier: GPL-3.0-or-later
// Helpers for drawing the parts of a gauge panel: properties by name, fills, and shapes.
#pragma once

#include <string>
#include <string_view>

#include "rdl/layout/drawing/gauge/track.h"
#include "rdl/layout/drawing/gauge/values.h"

namespace rdl::layout {

class GaugeKit {
 public:
    GaugeKit(const GaugeValues& values, Canvas& canvas, const Culture& culture)
        : m_values(values), m_canvas(canvas), m_culture(culture) {}

    const GaugeValues& Values() const { return m_values; }
    const PartStyles& Styles() const { return m_values.Styles(); }
    Canvas& Paper() const { return m_canvas; }
    const Culture& NumberCulture() const { return m_culture; }

    double Number(const GaugePart& part, std::string_view property, double otherwise) const;
    bool Flag(const GaugePart& part, std::string_view property, bool otherwise) const;
    std::string Text(const GaugePart& part, std::string_view property) const;
    bool Is(const GaugePart& part, std::string_view property, std::string_view word) const;
    bool IsHidden(const GaugePart& part) const { return Flag(part, "Hidden", false); }
    GaugePlacement Placement(const GaugePart& part, GaugePlacement otherwise) const;
    Color ColorOf(const GaugePart& part, std::string_view property) const;

    // Returns the background colour; for a gradient the mean of its two colours.
    Color Fill(const Style& style, Color otherwise) const;
    Border Outline(const Style& style) const { return Styles().BorderOf(style); }

 private:
    const GaugeValues& m_values;
    Canvas& m_canvas;
    const Culture& m_culture;
};

// Draws a marker or tick by its name: Rectangle, Triangle, Circle, Diamond, Trapezoid, Star, Wedge, Pentagon.
// It spans the two distances of `place` from the track; pointed shapes point to `outer` unless `inwards`.
void DrawMarker(const std::string& shape, const GaugeTrack& track, double share, GaugePlace place,
                double thick, bool inwards, Color fill, const Border& border, Canvas& canvas);

// Draws a polygon whose corners {forward, aside} are relative to `origin` and a direction in radians.
void DrawTurned(const std::vector<Spot>& corners, Spot origin, double direction, Color fill,
                const Border& border, Canvas& canvas);

// Draws a text in a rectangle. With `fit` the font size shrinks until it fits. `box` gives the alignment.
void DrawFitted(const std::string& text, const CharStyle& letters, const BoxStyle& box, const Rect& area,
                bool fit, double degrees, Canvas& canvas);

}  // namespace rdl::layout
