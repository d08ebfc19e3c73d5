// SPDX-License-Identifier: GPL-3.0-or-later
// The series of polar and radar charts.
#include <algorithm>

#include "rdl/layout/drawing/chart/circle.h"
#include "rdl/layout/drawing/chart/draw.h"
#include "rdl/layout/drawing/chart/labels.h"
#include "rdl/layout/drawing/chart/plot.h"

namespace rdl::layout {
namespace {

// Pieces of a line that goes around: the last one continues with the first one.
std::vector<std::vector<std::size_t>> PiecesAround(const ChartRow& row) {
    std::vector<std::vector<std::size_t>> pieces = PiecesOf(row);
    if (pieces.size() > 1 && row.marks.front().hasY && row.marks.back().hasY) {
        std::vector<std::size_t>& last = pieces.back();
        last.insert(last.end(), pieces.front().begin(), pieces.front().end());
        pieces.erase(pieces.begin());
    }
    return pieces;
}

// Radar lines are closed; polar ones end at their last point.
void DrawSeries(const CirclePlot& plot, std::size_t r) {
    const ChartRow& row = plot.area.rows[r];
    const bool radar = row.definition->kind == ChartKind::Radar;
    const bool area = row.look.circle == ChartLook::Circle::Area;
    for (const std::vector<std::size_t>& piece : radar ? PiecesAround(row) : PiecesOf(row)) {
        std::vector<Spot> spots;
        for (const std::size_t i : piece) {
            spots.push_back(plot.SpotOf(r, i));
        }
        const bool whole = piece.size() == row.marks.size();
        if (area) {
            std::vector<Spot> corners = spots;
            if (!whole) {
                corners.push_back(plot.center);
            }
            plot.canvas.Polygon(
                corners, (row.color & 0x00FFFFFF) | std::min(row.color & 0xFF000000, AreaAlpha), Border());
        }
        if (spots.size() == 1 && row.marks[piece.front()].shape == ChartShape::None) {
            // A point between two gaps would not be seen as a line.
            DrawShape(ChartShape::Circle, spots.front(), 2 * static_cast<double>(row.border.width), row.color,
                      plot.canvas);
        }
        if (radar && whole && spots.size() > 1) {
            plot.canvas.Polygon(spots, Transparent, row.border);
        } else {
            plot.canvas.Curve(spots, Course::Straight, row.border);
        }
    }
}

}  // namespace

void DrawPolar(const ChartData& data, const ChartAreaData& area, const Rect& available, Canvas& canvas) {
    CirclePlot plot{data, area, canvas};
    PlaceCircle(plot, available);
    DrawCircleGrid(plot);
    for (std::size_t r = 0; r < area.rows.size(); ++r) {
        const ChartRow& row = area.rows[r];
        if (row.look.circle != ChartLook::Circle::Marker) {
            DrawSeries(plot, r);
        }
        for (std::size_t i = 0; i < row.marks.size(); ++i) {
            if (row.marks[i].hasY) {
                DrawShape(row.marks[i].shape, plot.SpotOf(r, i), row.marks[i].shapeSize,
                          row.marks[i].shapeColor, canvas);
            }
        }
    }
    DrawCircleAxes(plot);
    LabelPlacer placer(canvas);
    for (std::size_t r = 0; r < area.rows.size(); ++r) {
        for (std::size_t i = 0; i < area.rows[r].marks.size(); ++i) {
            const ChartMark& mark = area.rows[r].marks[i];
            if (mark.hasY && !mark.label.empty()) {
                const bool automatic = IsAutomatic(mark.labelPosition);
                placer.Place(mark, *mark.labelStyle, plot.SpotOf(r, i),
                             LabelAnchor(automatic ? "Top" : mark.labelPosition), automatic);
            }
        }
    }
}

}  // namespace rdl::layout
