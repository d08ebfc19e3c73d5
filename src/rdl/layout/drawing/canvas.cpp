// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/layout/drawing/canvas.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <sstream>

#include "rdl/layout/model/image_size.h"
#include "rdl/values/utf8.h"

namespace rdl::layout {
namespace {

using Segment = PathOp::Segment;

constexpr double Pi = std::numbers::pi;

text::FontId FontOf(const CharStyle& style) {
    return text::FindFont({style.family, style.bold, style.italic});
}

std::vector<std::string> LinesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

Segment To(Segment::Kind kind, Spot spot) {
    return {kind, {spot.x, 0, 0}, {spot.y, 0, 0}};
}

}  // namespace

void Canvas::Rectangle(const Rect& area, Color fill, const Border& border) {
    if (IsVisible(fill) && area.width > 0 && area.height > 0) {
        m_page.ops.emplace_back(RectOp{area.x, area.y, area.width, area.height, fill});
    }
    if (IsVisible(border)) {
        Polygon({{area.x, area.y},
                 {area.Right(), area.y},
                 {area.Right(), area.Bottom()},
                 {area.x, area.Bottom()}},
                Transparent, border);
    }
}

void Canvas::Box(const Rect& area, const BoxStyle* box) {
    if (!box) {
        return;
    }
    Rectangle(area, box->background, Border());
    Line({area.x, area.y}, {area.Right(), area.y}, box->top);
    Line({area.x, area.Bottom()}, {area.Right(), area.Bottom()}, box->bottom);
    Line({area.x, area.y}, {area.x, area.Bottom()}, box->left);
    Line({area.Right(), area.y}, {area.Right(), area.Bottom()}, box->right);
}

void Canvas::Line(Spot from, Spot to, const Border& border) {
    if (IsVisible(border)) {
        const LineStyle style = border.style > LineStyle::DashDotDot ? LineStyle::Solid : border.style;
        m_page.ops.emplace_back(LineOp{from.x, from.y, to.x, to.y, border.width, border.color, style});
    }
}

void Canvas::Path(std::vector<Segment> segments, Color fill, const Border& border) {
    const bool stroke = IsVisible(border);
    if (segments.empty() || (!IsVisible(fill) && !stroke)) {
        return;
    }
    LineStyle style = border.style > LineStyle::DashDotDot || border.style == LineStyle::Double
                          ? LineStyle::Solid
                          : border.style;
    m_page.ops.emplace_back(PathOp{std::move(segments), fill, stroke ? border.color : Transparent,
                                   border.width, stroke ? style : LineStyle::None});
}

void Canvas::Polygon(const std::vector<Spot>& corners, Color fill, const Border& border) {
    std::vector<Segment> segments;
    AppendCurve(corners, Course::Straight, Segment::Move, segments);
    segments.push_back(To(Segment::Close, {}));
    Path(std::move(segments), fill, border);
}

void Canvas::Curve(const std::vector<Spot>& points, Course course, const Border& border) {
    if (points.size() > 1) {
        std::vector<Segment> segments;
        AppendCurve(points, course, Segment::Move, segments);
        Path(std::move(segments), Transparent, border);
    }
}

void Canvas::Circle(Spot center, double radius, Color fill, const Border& border) {
    std::vector<Segment> segments;
    AppendArc(center, radius, 0, 2 * Pi, Segment::Move, segments);
    segments.push_back(To(Segment::Close, {}));
    Path(std::move(segments), fill, border);
}

void Canvas::Picture(const std::shared_ptr<const std::string>& bytes, const Rect& area,
                     const std::string& name) {
    if (!bytes) {
        return;
    }
    const ImageSize size = SizeOfImage(*bytes);
    Rect place = area;
    if (size.width > 0 && size.height > 0) {
        const double scale = std::min(area.width / size.width, area.height / size.height);
        place = {area.x + (area.width - size.width * scale) / 2,
                 area.y + (area.height - size.height * scale) / 2, size.width * scale, size.height * scale};
    }
    m_page.ops.emplace_back(ImageOp{place.x, place.y, place.width, place.height, bytes, name});
}

double Canvas::LineHeight(const CharStyle& style) {
    const text::FontMetrics& metrics = text::Metrics(FontOf(style));
    return (metrics.ascent + metrics.descent) * static_cast<double>(style.size);
}

Extents Canvas::Measure(const std::string& text, const CharStyle& style) {
    Extents size;
    const text::FontId font = FontOf(style);
    for (const std::string& line : LinesOf(text)) {
        size.width = std::max(size.width, text::TextWidth(line, font, static_cast<double>(style.size)));
        size.height += LineHeight(style);
    }
    return size;
}

void Canvas::Text(const std::string& text, const CharStyle& style, Spot spot, Anchor anchor, double degrees) {
    if (!IsVisible(style.color) || !std::isfinite(spot.x) || !std::isfinite(spot.y)) {
        return;
    }
    const Extents size = Measure(text, style);
    const text::FontId font = FontOf(style);
    const double ascent = text::Metrics(font).ascent * static_cast<double>(style.size);
    const double c = std::cos(degrees * Pi / 180), s = std::sin(degrees * Pi / 180);
    double down = ascent - size.height * anchor.down;
    for (const std::string& line : LinesOf(text)) {
        const double width = text::TextWidth(line, font, static_cast<double>(style.size));
        const double along = -width * anchor.across;
        Line(line, style, {spot.x + along * c - down * s, spot.y + along * s + down * c}, degrees);
        down += LineHeight(style);
    }
}

void Canvas::Line(const std::string& text, const CharStyle& style, Spot start, double degrees) {
    std::vector<text::GlyphRun> runs;
    text::Shape(text, FontOf(style), static_cast<double>(style.size), false, runs);
    const auto base = static_cast<std::uint32_t>(m_page.text.size());
    m_page.text += text;
    const double c = std::cos(degrees * Pi / 180), s = std::sin(degrees * Pi / 180);
    double along = 0;
    for (const text::GlyphRun& run : runs) {
        const double turned = degrees < 0 ? degrees + 360 : degrees;
        m_page.ops.emplace_back(TextOp{start.x + along * c, start.y + along * s, style.size, style.color,
                                       run.font, static_cast<std::uint32_t>(m_page.glyphs.size()),
                                       static_cast<std::uint32_t>(run.glyphs.size()), base + run.begin,
                                       base + run.end, static_cast<float>(turned)});
        for (const text::Glyph& glyph : run.glyphs) {
            m_page.glyphs.push_back(glyph);
            m_page.glyphs.back().cluster -= run.begin;
        }
        along += run.width;
    }
}

void AppendCurve(const std::vector<Spot>& points, Course course, Segment::Kind first,
                 std::vector<Segment>& segments) {
    for (std::size_t i = 0; i < points.size(); ++i) {
        if (i == 0) {
            segments.push_back(To(first, points[i]));
        } else if (course == Course::Straight) {
            segments.push_back(To(Segment::LineTo, points[i]));
        } else {
            // Each point's tangent goes by its neighbours.
            const Spot a = points[i - 1], b = points[i];
            const Spot before = i > 1 ? points[i - 2] : a;
            const Spot after = i + 1 < points.size() ? points[i + 1] : b;
            segments.push_back({Segment::CurveTo,
                                {a.x + (b.x - before.x) / 6, b.x - (after.x - a.x) / 6, b.x},
                                {a.y + (b.y - before.y) / 6, b.y - (after.y - a.y) / 6, b.y}});
        }
    }
}

Spot OnCircle(Spot center, double radius, double angle) {
    return {center.x + radius * std::sin(angle), center.y - radius * std::cos(angle)};
}

void AppendArc(Spot center, double radius, double from, double to, Segment::Kind first,
               std::vector<Segment>& segments) {
    segments.push_back(To(first, OnCircle(center, radius, from)));
    const int pieces = std::max(1, static_cast<int>(std::ceil(std::abs(to - from) / (Pi / 4))));
    const double piece = (to - from) / pieces;
    const double reach = radius * 4 / 3 * std::tan(piece / 4);
    for (int i = 0; i < pieces; ++i) {
        const double a = from + i * piece, b = a + piece;
        const Spot start = OnCircle(center, radius, a), end = OnCircle(center, radius, b);
        segments.push_back({Segment::CurveTo,
                            {start.x + reach * std::cos(a), end.x - reach * std::cos(b), end.x},
                            {start.y + reach * std::sin(a), end.y - reach * std::sin(b), end.y}});
    }
}

std::string Wrapped(const std::string& text, const CharStyle& style, double width) {
    std::string wrapped;
    for (const std::string& line : LinesOf(text)) {
        std::string current;
        std::istringstream words(line);
        for (std::string word; words >> word;) {
            std::string longer = current;
            longer.append(current.empty() ? "" : " ").append(word);
            if (!current.empty() && Canvas::Measure(longer, style).width > width) {
                wrapped += (wrapped.empty() ? "" : "\n") + current;
                current = word;
            } else {
                current = std::move(longer);
            }
        }
        wrapped += (wrapped.empty() ? "" : "\n") + current;
    }
    return wrapped;
}

std::string Shortened(const std::string& text, const CharStyle& style, double width) {
    if (Canvas::Measure(text, style).width <= width) {
        return text;
    }
    // Halves the range in each step, because a chart may have thousands of labels.
    constexpr std::string_view Ellipsis = "\xE2\x80\xA6";
    std::string best;
    std::size_t fitting = 0, exceeding = text.size();
    while (exceeding - fitting > 1) {
        const std::size_t middle = fitting + (exceeding - fitting) / 2;
        std::string candidate(WholeCharacters(text, middle));
        candidate += Ellipsis;
        if (Canvas::Measure(candidate, style).width <= width) {
            best = std::move(candidate);
            fitting = middle;
        } else {
            exceeding = middle;
        }
    }
    if (best.empty() && Canvas::Measure(std::string(Ellipsis), style).width <= width) {
        best = Ellipsis;
    }
    return best;
}

Extents Turned(Extents size, double degrees) {
    const double c = std::abs(std::cos(degrees * Pi / 180)), s = std::abs(std::sin(degrees * Pi / 180));
    return {size.width * c + size.height * s, size.width * s + size.height * c};
}

}  // namespace rdl::layout
