// Where the pixels of a painter's device are, so that thin lines and the edges of areas fall on whole ones.
#pragma once

#include <QPainter>
#include <QRectF>
#include <QTransform>

namespace rdl::screen {

class PixelGrid {
 public:
    explicit PixelGrid(const QPainter& painter);

    // False when the painter turns or slants: nothing falls on whole pixels then.
    bool IsStraight() const { return m_straight; }
    // The area with its edges moved to the nearest pixels; at least one pixel where there was something.
    QRectF Area(const QRectF& area) const;
    // The area of a stroke along an axis: whole pixels thick, one at least.
    QRectF Stroke(QPointF from, QPointF to, double width) const;
    // Device pixels that one unit of the painter takes.
    double Scale() const;

 private:
    QTransform m_toDevice, m_fromDevice;
    bool m_straight;
};

}  // namespace rdl::screen
