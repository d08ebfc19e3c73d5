// SPDX-License-Identifier: GPL-3.0-or-later
// The bars of a selected table: a handle above each column and before each row, with the brackets of the
// rows' groups. All areas are pixels of the canvas.
#pragma once

#include <QPainter>
#include <QRectF>
#include <optional>
#include <vector>

#include "designer/model/table_selection.h"

namespace designer {

// A column or row of the body, or a level of headings: of rows for Axis::Columns.
struct TrackHandle {
    Axis axis = Axis::Columns;
    std::size_t track = 0;
    bool isHeader = false;
};

// Returns where the track is in the region.
GridTrack TrackOf(const TablixGrid& grid, const TrackHandle& handle);

class TableBars {
 public:
    static constexpr double Thickness = 11;  // pixels

    // `area` is that of the region on the canvas, `scale` pixels in a point.
    TableBars(const DesignModel& model, const TableSelection& table, const QRectF& area, double scale);

    void Paint(QPainter& painter, const QPalette& palette) const;
    // Returns the handle under a point.
    std::optional<TrackHandle> HandleAt(QPointF point) const;
    // Returns the track, or level of headings, whose right or lower border is at the point, in the bars or on
    // the table itself.
    std::optional<TrackHandle> BorderAt(QPointF point) const;
    // Returns the number that a column added at the point has: the point is on a border or beside the last
    // column.
    std::optional<std::size_t> NewColumnAt(QPointF point) const;
    // Returns the x of the border that a column begins at, its right one if the table goes from right to
    // left, or of the end for a number past the last one.
    double ColumnBegin(std::size_t column) const;
    // Whether the point is on the bar of the rows.
    bool IsOnRowBar(QPointF point) const;

    const TablixGrid& Grid() const { return m_grid; }
    const QRectF& Area() const { return m_area; }

 private:
    std::optional<TrackHandle> HeaderBorderAt(QPointF point) const;
    QRectF HandleArea(Axis axis, std::size_t track) const;
    double EndOf(Axis axis, std::size_t track) const;
    const std::vector<GridTrack>& Tracks(Axis axis) const {
        return axis == Axis::Columns ? m_grid.columns : m_grid.rows;
    }
    void PaintBrackets(QPainter& painter, const QColor& colour) const;

    TablixGrid m_grid;
    std::vector<RegionGroup> m_groups;  // of rows
    std::optional<TrackRange> m_columns, m_rows;
    QRectF m_area;
    double m_scale;
    bool m_isMirrored;
};

}  // namespace designer
