// SPDX-License-Identifier: GPL-3.0-or-later
// Columns, areas, lines and points of a plot, and the labels of its points.
#include <algorithm>
#include <cmath>

#include "rdl/definition/context.h"
#include "rdl/layout/drawing/chart/draw.h"
#include "rdl/layout/drawing/chart/plot.h"

namespace rdl::layout {
namespace {

constexpr double LabelGap = 2;          // points
constexpr double LargestBubble = 0.12;  // radius, of the plot's shorter side
constexpr Color AreaAlpha = 0xB0000000;

bool IsColumn(const ChartRow& row) {
    return row.definition->kind == ChartKind::Column || row.definition->kind == ChartKind::Bar;
}

bool IsStacked(const ChartRow& row) {
    return row.definition->stack != ChartStack::None;
}

// Columns of a category stand beside each other; those that are stacked share one place.
struct Places {
    std::size_t count = 0, own = 0;
};

Places PlacesOf(const ChartPlot& plot, std::size_t wanted) {
    Places places;
    std::size_t stack = 0;
    bool hasStack = false;
    for (std::size_t i = 0; i < plot.area.rows.size(); ++i) {
        const ChartRow& row = plot.area.rows[i];
        if (!IsColumn(row)) {
            continue;
        }
        std::size_t place = places.count;
        if (IsStacked(row) && hasStack) {
            place = stack;
        } else {
            ++places.count;
            stack = IsStacked(row) ? place : stack;
            hasStack = hasStack || IsStacked(row);
        }
        places.own = i == wanted ? place : places.own;
    }
    return places;
}

double Held(double share) {  // within the plot
    return std::clamp(share, 0.0, 1.0);
}

// Pieces of a line between gaps.
std::vector<std::vector<std::size_t>> PiecesOf(const ChartRow& row) {
    std::vector<std::vector<std::size_t>> pieces;
    bool open = false;
    for (std::size_t i = 0; i < row.marks.size(); ++i) {
        if (row.marks[i].hasY) {
            if (!open) {
                pieces.emplace_back();
            }
            pieces.back().push_back(i);
        }
        open = row.marks[i].hasY;
    }
    return pieces;
}

Spot SpotOf(const ChartPlot& plot, std::size_t r, std::size_t i) {
    const ChartRow& row = plot.area.rows[r];
    return plot.At(plot.Across(row.marks[i], i), plot.ValueShare(row.valueAxis, plot.reaches[r][i].to),
                   row.valueAxis);
}

Course CourseOf(const ChartRow& row) {
    return row.definition->curve == ChartCurve::Smooth ? Course::Smooth : Course::Straight;
}

void DrawArea(const ChartPlot& plot, std::size_t r) {
    const ChartRow& row = plot.area.rows[r];
    const Color fill =
        IsStacked(row) ? row.color : (row.color & 0x00FFFFFF) | std::min(row.color & 0xFF000000, AreaAlpha);
    for (const std::vector<std::size_t>& piece : PiecesOf(row)) {
        std::vector<Spot> upper, lower;
        for (const std::size_t i : piece) {
            const ChartReach& reach = plot.reaches[r][i];
            const double across = plot.Across(row.marks[i], i);
            upper.push_back(plot.At(across, Held(plot.ValueShare(row.valueAxis, reach.to)), row.valueAxis));
            lower.push_back(plot.At(across, Held(plot.ValueShare(row.valueAxis, reach.from)), row.valueAxis));
        }
        std::reverse(lower.begin(), lower.end());
        const Course course = CourseOf(row);
        std::vector<PathOp::Segment> segments;
        AppendCurve(upper, course, PathOp::Segment::Move, segments);
        AppendCurve(lower, IsStacked(row) ? course : Course::Straight, PathOp::Segment::LineTo, segments);
        segments.push_back({PathOp::Segment::Close, {}, {}});
        plot.canvas.Path(std::move(segments), fill, row.border);
        plot.canvas.Curve(upper, course, {LineStyle::Solid, row.color, 1});
    }
}

void DrawLine(const ChartPlot& plot, std::size_t r) {
    const ChartRow& row = plot.area.rows[r];
    for (const std::vector<std::size_t>& piece : PiecesOf(row)) {
        std::vector<Spot> spots;
        for (const std::size_t i : piece) {
            const Spot spot = SpotOf(plot, r, i);
            if (row.definition->curve == ChartCurve::Stepped && !spots.empty()) {
                spots.push_back({spot.x, spots.back().y});
            }
            spots.push_back(spot);
        }
        if (spots.size() == 1 && row.marks[piece.front()].shape == ChartShape::None) {
            // A point between two gaps would not be seen as a line.
            DrawShape(ChartShape::Circle, spots.front(), 2 * static_cast<double>(row.border.width), row.color,
                      plot.canvas);
        }
        plot.canvas.Curve(spots, CourseOf(row), row.border);
    }
}

void DrawPoints(const ChartPlot& plot, std::size_t r) {
    const ChartRow& row = plot.area.rows[r];
    for (std::size_t i = 0; i < row.marks.size(); ++i) {
        if (row.marks[i].hasY) {
            DrawShape(row.marks[i].shape, SpotOf(plot, r, i), row.marks[i].shapeSize, row.marks[i].shapeColor,
                      plot.canvas);
        }
    }
}

// Areas of bubbles are as their sizes.
void DrawBubbles(const ChartPlot& plot, std::size_t r) {
    double largest = 0;
    for (const ChartRow& row : plot.area.rows) {
        for (const ChartMark& mark : row.marks) {
            largest = std::max(largest, mark.size);
        }
    }
    const double most = LargestBubble * std::min(plot.inside.width, plot.inside.height);
    for (std::size_t i = 0; i < plot.area.rows[r].marks.size(); ++i) {
        const ChartMark& mark = plot.area.rows[r].marks[i];
        if (mark.hasY && mark.size > 0) {
            plot.canvas.Circle(SpotOf(plot, r, i), most * std::sqrt(mark.size / largest),
                               (mark.color & 0x00FFFFFF) | std::min(mark.color & 0xFF000000, AreaAlpha),
                               mark.border);
        }
    }
}

Anchor AnchorOf(const std::string& position) {
    const auto has = [&](std::string_view word) {
        return EqualNoCase(position.substr(0, word.size()), word) ||
               (position.size() > word.size() &&
                EqualNoCase(position.substr(position.size() - word.size()), word));
    };
    // A label at the top has the point below it.
    return {has("Left")    ? 1.0
            : has("Right") ? 0.0
                           : 0.5,
            has("Top") || has("Outside") ? 1.0
            : has("Bottom")              ? 0.0
                                         : 0.5};
}

class LabelDrawer {
 public:
    explicit LabelDrawer(const ChartPlot& plot) : m_plot(plot) {}

    void Draw(std::size_t r, std::size_t i) {
        const ChartRow& row = m_plot.area.rows[r];
        const ChartMark& mark = row.marks[i];
        if (mark.label.empty()) {
            return;
        }
        const bool automatic = mark.labelPosition.empty() || EqualNoCase(mark.labelPosition, "Auto");
        Spot spot = SpotOf(m_plot, r, i);
        Anchor anchor = AnchorOf(automatic ? "Top" : mark.labelPosition);
        const bool negative = (mark.y < 0) != m_plot.area.valueAxes[row.valueAxis].reverse;
        const bool inside =
            IsColumn(row) && ((automatic && IsStacked(row)) || EqualNoCase(mark.labelPosition, "Center"));
        if (inside) {
            const Rect column = ColumnOf(m_plot, r, i);
            spot = {column.x + column.width / 2, column.y + column.height / 2};
            anchor = {0.5, 0.5};
        } else if (IsColumn(row)) {
            // The end of its own column: columns of several series stand beside each other.
            const Rect column = ColumnOf(m_plot, r, i);
            spot = m_plot.swapped ? Spot{negative ? column.x : column.Right(), column.y + column.height / 2}
                                  : Spot{column.x + column.width / 2, negative ? column.Bottom() : column.y};
            if (automatic) {
                anchor =
                    m_plot.swapped ? Anchor{negative ? 1.0 : 0.0, 0.5} : Anchor{0.5, negative ? 0.0 : 1.0};
            }
        }
        Place(mark, inside ? InsideLetters(mark) : *mark.labelStyle, spot, anchor, automatic && !inside);
    }

 private:
    // A label that would cover another one is moved when its place is this system's own choice.
    void Place(const ChartMark& mark, const CharStyle& letters, Spot spot, Anchor anchor, bool mayMove) {
        spot.x += (0.5 - anchor.across) * 2 * LabelGap;
        spot.y += (0.5 - anchor.down) * 2 * LabelGap;
        Extents size = Turned(Canvas::Measure(mark.label, *mark.labelStyle), mark.labelTurn);
        const Spot first = spot;
        for (const double shift : {0.0, -1.0, 1.0, -2.0}) {
            spot.y = first.y + shift * size.height;
            if (!mayMove || !Covers(BoxOf(spot, anchor, size))) {
                break;
            }
            spot = first;
        }
        const Rect box = BoxOf(spot, anchor, size);
        m_drawn.push_back(box);
        m_plot.canvas.Box(box, mark.labelBox.get());
        m_plot.canvas.Text(mark.label, letters, {box.x + box.width / 2, box.y + box.height / 2}, {0.5, 0.5},
                           mark.labelTurn);
    }

    static Rect BoxOf(Spot spot, Anchor anchor, Extents size) {
        return {spot.x - size.width * anchor.across, spot.y - size.height * anchor.down, size.width,
                size.height};
    }

    bool Covers(const Rect& box) const {
        constexpr std::size_t Nearby = 400;  // enough to look back on: labels come from left to right
        const std::size_t begin = m_drawn.size() > Nearby ? m_drawn.size() - Nearby : 0;
        return std::any_of(m_drawn.begin() + static_cast<std::ptrdiff_t>(begin), m_drawn.end(),
                           [&](const Rect& other) {
                               return box.x < other.Right() && other.x < box.Right() &&
                                      box.y < other.Bottom() && other.y < box.Bottom();
                           });
    }

    const ChartPlot& m_plot;
    std::vector<Rect> m_drawn;
};

}  // namespace

Rect ColumnOf(const ChartPlot& plot, std::size_t r, std::size_t i) {
    const ChartRow& row = plot.area.rows[r];
    const Places places = PlacesOf(plot, r);
    const double group = plot.CategoryWidth() * row.pointWidth;
    const double width = group / static_cast<double>(std::max<std::size_t>(places.count, 1));
    const double begin = plot.Across(row.marks[i], i) - group / 2 + width * static_cast<double>(places.own);
    const ChartReach& reach = plot.reaches[r][i];
    const Spot a = plot.At(begin, Held(plot.ValueShare(row.valueAxis, reach.from)), row.valueAxis);
    const Spot b = plot.At(begin + width, Held(plot.ValueShare(row.valueAxis, reach.to)), row.valueAxis);
    return {std::min(a.x, b.x), std::min(a.y, b.y), std::abs(a.x - b.x), std::abs(a.y - b.y)};
}

void DrawColumns(const ChartPlot& plot) {
    for (std::size_t r = 0; r < plot.area.rows.size(); ++r) {
        if (plot.area.rows[r].definition->kind == ChartKind::Area) {
            DrawArea(plot, r);
        }
    }
    for (std::size_t r = 0; r < plot.area.rows.size(); ++r) {
        const ChartRow& row = plot.area.rows[r];
        for (std::size_t i = 0; i < row.marks.size() && IsColumn(row); ++i) {
            if (row.marks[i].hasY) {
                plot.canvas.Rectangle(ColumnOf(plot, r, i), row.marks[i].color, row.marks[i].border);
            }
        }
    }
}

void DrawLines(const ChartPlot& plot) {
    for (std::size_t r = 0; r < plot.area.rows.size(); ++r) {
        const ChartSeries& series = *plot.area.rows[r].definition;
        if (series.kind == ChartKind::Line || series.joined) {
            DrawLine(plot, r);
        }
        if (series.kind == ChartKind::Bubble) {
            DrawBubbles(plot, r);
        } else if (!IsColumn(plot.area.rows[r])) {
            DrawPoints(plot, r);
        }
    }
}

void DrawLabels(const ChartPlot& plot) {
    LabelDrawer drawer(plot);
    for (std::size_t i = 0; i < plot.CategoryCount(); ++i) {
        for (std::size_t r = 0; r < plot.area.rows.size(); ++r) {
            if (plot.area.rows[r].marks[i].hasY) {
                drawer.Draw(r, i);
            }
        }
    }
}

}  // namespace rdl::layout
