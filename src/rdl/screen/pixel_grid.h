// SPDX-License-Identifier: GPL-3.0-or-later
// The pixel grid of a painter's device, for aligning thin lines and edges of areas.
#pragma once

#include <QPainter>
#include <QRectF>
#include <QTransform>

namespace rdl::screen {

class PixelGrid {
 public:
    explicit PixelGrid(const QPainter& painter);

    // Returns false if the painter rotates or shears: alignment is not possible then.
    bool IsStraight() const { return m_straight; }
    // Returns the area with its edges aligned to pixels; a non-empty area keeps at least one pixel.
    QRectF Area(const QRectF& area) const;
    // Returns the area of a horizontal or vertical stroke, an integral number of pixels thick, at least one.
    QRectF Stroke(QPointF from, QPointF to, double width) const;
    // Returns the device pixels per unit of the painter.
    double Scale() const;

 private:
    QTransform m_toDevice, m_fromDevice;
    bool m_straight;
};

}  // namespace rdl::screen
