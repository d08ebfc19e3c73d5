// What the drawing of every part of a gauge panel shares: properties by their names, fills, and shapes.
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

    // Of the background; of a gradient the middle of its two colours.
    Color Fill(const Style& style, Color otherwise) const;
    Border Outline(const Style& style) const { return Styles().BorderOf(style); }

 private:
    const GaugeValues& m_values;
    Canvas& m_canvas;
    const Culture& m_culture;
};

// A marker or tick by its word: Rectangle, Triangle, Circle, Diamond, Trapezoid, Star, Wedge, Pentagon.
// It reaches from one distance to another of a track; pointed ones point at `outer` unless `inwards`.
void DrawMarker(const std::string& shape, const GaugeTrack& track, double share, GaugePlace place,
                double thick, bool inwards, Color fill, const Border& border, Canvas& canvas);

// Corners given along a direction and across it, from a spot: {forward, aside}.
void DrawTurned(const std::vector<Spot>& corners, Spot origin, double direction, Color fill,
                const Border& border, Canvas& canvas);

// A text no larger than a rectangle: its letters are made to fit. Words of alignment are those of the style.
void DrawFitted(const std::string& text, const CharStyle& letters, const BoxStyle& box, const Rect& area,
                bool fit, double degrees, Canvas& canvas);

}  // namespace rdl::layout
