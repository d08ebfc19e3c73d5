// SPDX-License-Identifier: GPL-3.0-or-later
// Columns, areas, lines and points of a plot, and the labels of its points.
#include <algorithm>
#include <cmath>

#include "rdl/layout/drawing/chart/draw.h"
#include "rdl/layout/drawing/chart/labels.h"
#include "rdl/layout/drawing/chart/plot.h"
#include "rdl/values/ascii.h"

namespace rdl::layout {
namespace {

constexpr double LargestBubble = 0.12;  // radius, of the plot's shorter side

bool IsColumn(const ChartRow& row) {
    return row.definition->kind == ChartKind::Column || row.definition->kind == ChartKind::Bar;
}

bool IsStacked(const ChartRow& row) {
    return row.definition->stack != ChartStack::None;
}

// Series that stand beside each other in a category: columns, boxes, prices, errors. Errors of columns have
// the same places as their columns.
int FamilyOf(const ChartSeries& series) {
    switch (series.kind) {
        case ChartKind::Column:
        case ChartKind::Bar:
            return 1;
        case ChartKind::BoxPlot:
            return 2;
        case ChartKind::Stock:
        case ChartKind::Candlestick:
            return 3;
        case ChartKind::ErrorBar:
            return 4;
        default:
            return 0;
    }
}

// Columns that are stacked share one place.
struct Places {
    std::size_t count = 0, own = 0;
};

Places PlacesOf(const ChartPlot& plot, std::size_t wanted) {
    Places places;
    std::size_t stack = 0;
    bool hasStack = false;
    const int family = FamilyOf(*plot.area.rows[wanted].definition);
    for (std::size_t i = 0; i < plot.area.rows.size(); ++i) {
        const ChartRow& row = plot.area.rows[i];
        if (FamilyOf(*row.definition) != family) {
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

Spot SpotOf(const ChartPlot& plot, std::size_t r, std::size_t i) {
    const ChartRow& row = plot.area.rows[r];
    return plot.At(plot.Across(row.marks[i], i), plot.ValueShare(row.valueAxis, plot.reaches[r][i].to),
                   row.valueAxis);
}

Course CourseOf(const ChartRow& row) {
    return row.definition->curve == ChartCurve::Smooth ? Course::Smooth : Course::Straight;
}

void DrawStackedArea(const ChartPlot& plot, std::size_t r) {
    const ChartRow& row = plot.area.rows[r];
    const Color fill =
        IsStacked(row) ? row.color : (row.color & 0x00FFFFFF) | std::min(row.color & 0xFF000000, AreaAlpha);
    for (const std::vector<std::size_t>& piece : PiecesOf(row)) {
        std::vector<Spot> upper, lower;
        for (const std::size_t i : piece) {
            const ChartReach& reach = plot.reaches[r][i];
            const double across = plot.Across(row.marks[i], i);
            upper.push_back(plot.At(across, plot.HeldShare(row.valueAxis, reach.to), row.valueAxis));
            lower.push_back(plot.At(across, plot.HeldShare(row.valueAxis, reach.from), row.valueAxis));
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

class LabelDrawer {
 public:
    explicit LabelDrawer(const ChartPlot& plot) : m_plot(plot), m_placer(plot.canvas) {}

    void Draw(std::size_t r, std::size_t i) {
        const ChartRow& row = m_plot.area.rows[r];
        const ChartMark& mark = row.marks[i];
        if (mark.label.empty()) {
            return;
        }
        const bool automatic = IsAutomatic(mark.labelPosition);
        Spot spot = SpotOf(m_plot, r, i);
        Anchor anchor = LabelAnchor(automatic ? "Top" : mark.labelPosition);
        const bool negative = (mark.y < 0) != m_plot.area.valueAxes[row.valueAxis].reverse;
        const bool upright = IsColumn(row) || IsSpan(*row.definition);
        const bool inside =
            upright && ((automatic && IsStacked(row)) || EqualNoCase(mark.labelPosition, "Center"));
        if (inside) {
            const Rect column = ColumnOf(m_plot, r, i);
            spot = {column.x + column.width / 2, column.y + column.height / 2};
            anchor = {0.5, 0.5};
        } else if (upright) {
            // The end of its own column: columns of several series stand beside each other.
            const Rect column = ColumnOf(m_plot, r, i);
            spot = m_plot.swapped ? Spot{negative ? column.x : column.Right(), column.y + column.height / 2}
                                  : Spot{column.x + column.width / 2, negative ? column.Bottom() : column.y};
            if (automatic) {
                anchor =
                    m_plot.swapped ? Anchor{negative ? 1.0 : 0.0, 0.5} : Anchor{0.5, negative ? 0.0 : 1.0};
            }
        }
        m_placer.Place(mark, inside ? InsideTextStyle(mark) : *mark.labelStyle, spot, anchor,
                       automatic && !inside);
    }

 private:
    const ChartPlot& m_plot;
    LabelPlacer m_placer;
};

}  // namespace

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

Rect ColumnOf(const ChartPlot& plot, std::size_t r, std::size_t i) {
    const ChartRow& row = plot.area.rows[r];
    const Places places = PlacesOf(plot, r);
    const double group = plot.CategoryWidth() * row.look.pointWidth;
    const double width = group / static_cast<double>(std::max<std::size_t>(places.count, 1));
    const double begin = plot.Across(row.marks[i], i) - group / 2 + width * static_cast<double>(places.own);
    const ChartReach& reach = plot.reaches[r][i];
    const Spot a = plot.At(begin, plot.HeldShare(row.valueAxis, reach.from), row.valueAxis);
    const Spot b = plot.At(begin + width, plot.HeldShare(row.valueAxis, reach.to), row.valueAxis);
    return {std::min(a.x, b.x), std::min(a.y, b.y), std::abs(a.x - b.x), std::abs(a.y - b.y)};
}

void DrawColumns(const ChartPlot& plot) {
    for (std::size_t r = 0; r < plot.area.rows.size(); ++r) {
        if (plot.area.rows[r].definition->kind == ChartKind::Area) {
            DrawStackedArea(plot, r);
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
    DrawSpans(plot);
    for (std::size_t r = 0; r < plot.area.rows.size(); ++r) {
        const ChartSeries& series = *plot.area.rows[r].definition;
        if (series.kind == ChartKind::Line || series.joined) {
            DrawLine(plot, r);
        }
        if (series.kind == ChartKind::Bubble) {
            DrawBubbles(plot, r);
        } else if (!IsColumn(plot.area.rows[r]) && !IsSpan(series)) {
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
