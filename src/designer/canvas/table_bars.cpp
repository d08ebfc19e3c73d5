// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/canvas/table_bars.h"

#include <QPalette>
#include <cmath>

#include "designer/tables/header_levels.h"

namespace designer {
namespace {

constexpr double BorderReach = 3, NewColumnReach = 7, BesideReach = 24;  // pixels
constexpr std::size_t MostPainted = 500;                                 // tracks of a side

bool Holds(const std::optional<TrackRange>& range, std::size_t track) {
    return range && track >= range->first && track < range->first + range->count;
}

}  // namespace

GridTrack TrackOf(const TablixGrid& grid, const TrackHandle& handle) {
    if (handle.isHeader) {
        return HeaderTracksOf(grid, handle.axis).at(handle.track);
    }
    return (handle.axis == Axis::Columns ? grid.columns : grid.rows).at(handle.track);
}

TableBars::TableBars(const DesignModel& model, const TableSelection& table, const QRectF& area, double scale)
    : m_grid(GridOf(model.Source(), table.region)),
      m_columns(table.columns),
      m_rows(table.rows),
      m_area(area),
      m_scale(scale),
      m_isMirrored(IsMirrored(model.Source(), table.region)) {
    try {
        m_groups = GroupsOf(model.Source(), table.region, Axis::Rows);
    } catch (const EditError&) {
        m_groups.clear();  // a damaged table shows no groups
    }
}

double TableBars::EndOf(Axis axis, std::size_t track) const {
    const GridTrack& one = Tracks(axis)[track];
    return (axis == Axis::Columns ? m_area.left() : m_area.top()) + (one.begin + one.size) * m_scale;
}

QRectF TableBars::HandleArea(Axis axis, std::size_t track) const {
    const GridTrack& one = Tracks(axis)[track];
    return axis == Axis::Columns ? QRectF(m_area.left() + one.begin * m_scale, m_area.top() - Thickness,
                                          one.size * m_scale, Thickness)
                                 : QRectF(m_area.left() - Thickness, m_area.top() + one.begin * m_scale,
                                          Thickness, one.size * m_scale);
}

void TableBars::Paint(QPainter& painter, const QPalette& palette) const {
    const QColor fill = palette.color(QPalette::Button), line = palette.color(QPalette::Dark);
    const QColor chosen = palette.color(QPalette::Highlight);
    for (const Axis axis : {Axis::Columns, Axis::Rows}) {
        const auto& range = axis == Axis::Columns ? m_columns : m_rows;
        for (std::size_t track = 0; track < std::min(Tracks(axis).size(), MostPainted); ++track) {
            const QRectF area = HandleArea(axis, track);
            painter.setPen(line);
            painter.setBrush(Holds(range, track) ? chosen : fill);
            painter.drawRect(QRectF(std::floor(area.left()) + 0.5, std::floor(area.top()) + 0.5,
                                    std::round(area.width()), std::round(area.height())));
        }
    }
    painter.setPen(line);
    painter.setBrush(fill);
    painter.drawRect(QRectF(std::floor(m_area.left() - Thickness) + 0.5,
                            std::floor(m_area.top() - Thickness) + 0.5, Thickness, Thickness));
    PaintBrackets(painter, palette.color(QPalette::ButtonText));
}

// Details have three short lines, other groups a bracket; an inner one stands further to the right.
void TableBars::PaintBrackets(QPainter& painter, const QColor& colour) const {
    for (const RegionGroup& group : m_groups) {
        if (group.count == 0 || group.first + group.count > std::min(m_grid.rows.size(), MostPainted)) {
            continue;
        }
        const QRectF first = HandleArea(Axis::Rows, group.first);
        const double top = first.top() + 3, bottom = EndOf(Axis::Rows, group.first + group.count - 1) - 3;
        const bool isDetails = group.expression.empty();
        const double left = first.left() + 2 + std::min(group.depth, 2) * 2.5;
        const bool isChosen = Holds(m_rows, group.first);
        painter.setPen(QPen(isChosen ? QColor(Qt::white) : colour, 1));
        if (isDetails) {
            const double middle = (top + bottom) / 2;
            for (const double shift : {-2.5, 0.0, 2.5}) {
                painter.drawLine(QPointF(first.left() + 3, middle + shift),
                                 QPointF(first.right() - 2, middle + shift));
            }
        } else if (bottom > top) {
            painter.drawPolyline(QPolygonF(
                {{first.right() - 1.5, top}, {left, top}, {left, bottom}, {first.right() - 1.5, bottom}}));
        }
    }
}

std::optional<TrackHandle> TableBars::HandleAt(QPointF point) const {
    for (const Axis axis : {Axis::Columns, Axis::Rows}) {
        for (std::size_t track = 0; track < Tracks(axis).size(); ++track) {
            if (HandleArea(axis, track).contains(point)) {
                return TrackHandle{axis, track};
            }
        }
    }
    return std::nullopt;
}

std::optional<TrackHandle> TableBars::BorderAt(QPointF point) const {
    if (!m_area.adjusted(-Thickness, -Thickness, BorderReach, BorderReach).contains(point)) {
        return std::nullopt;
    }
    // Takes the last of several at one place, so that a track without a size can be pulled open.
    std::optional<TrackHandle> found = HeaderBorderAt(point);
    for (std::size_t row = 0; row < m_grid.rows.size(); ++row) {
        if (std::abs(point.y() - EndOf(Axis::Rows, row)) <= BorderReach) {
            found = TrackHandle{Axis::Rows, row};
        }
    }
    // Also of a table from right to left: the place of its left side is written, so that a wider column
    // moves its right border.
    for (std::size_t column = 0; column < m_grid.columns.size(); ++column) {
        if (std::abs(point.x() - EndOf(Axis::Columns, column)) <= BorderReach) {
            found = TrackHandle{Axis::Columns, column};
        }
    }
    return found;
}

std::optional<TrackHandle> TableBars::HeaderBorderAt(QPointF point) const {
    for (const Axis axis : {Axis::Rows, Axis::Columns}) {
        const bool isColumn = axis == Axis::Columns;
        const double at = isColumn ? point.x() - m_area.left() : point.y() - m_area.top();
        const std::vector<GridTrack> levels = HeaderTracksOf(m_grid, axis);
        for (std::size_t level = 0; level < levels.size(); ++level) {
            if (std::abs(at - (levels[level].begin + levels[level].size) * m_scale) <= BorderReach) {
                return TrackHandle{axis, level, true};
            }
        }
    }
    return std::nullopt;
}

double TableBars::ColumnBegin(std::size_t column) const {
    if (m_grid.columns.empty()) {
        return m_area.left();
    }
    const bool isPast = column >= m_grid.columns.size();
    const std::size_t beside = isPast ? m_grid.columns.size() - 1 : column;
    return isPast != m_isMirrored ? EndOf(Axis::Columns, beside)
                                  : m_area.left() + m_grid.columns[beside].begin * m_scale;
}

// Beside a table from right to left the bar of the rows comes first.
std::optional<std::size_t> TableBars::NewColumnAt(QPointF point) const {
    const QRectF reach = m_isMirrored
                             ? m_area.adjusted(-Thickness - BesideReach, -Thickness, NewColumnReach, 0)
                             : m_area.adjusted(0, -Thickness, BesideReach, 0);
    if (m_grid.columns.empty() || !reach.contains(point)) {
        return std::nullopt;
    }
    if (m_isMirrored ? point.x() < m_area.left() - Thickness : point.x() > m_area.right()) {
        return m_grid.columns.size();
    }
    for (std::size_t column = 0; column <= m_grid.columns.size(); ++column) {
        if (std::abs(point.x() - ColumnBegin(column)) <= NewColumnReach) {
            return column;
        }
    }
    return std::nullopt;
}

bool TableBars::IsOnRowBar(QPointF point) const {
    return QRectF(m_area.left() - Thickness, m_area.top(), Thickness, m_area.height()).contains(point);
}

}  // namespace designer
