// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/screen/pixel_grid.h"

#include <algorithm>
#include <cmath>

namespace rdl::screen {
namespace {

struct Span {
    double from, to;
};

Span Edges(double from, double to) {
    const double first = std::round(from), last = std::round(to);
    return {first, last > first || to <= from ? last : first + 1};
}

Span Thickness(double centre, double width) {
    const double pixels = std::max(1.0, std::round(width));
    const double first = std::round(centre - pixels / 2);
    return {first, first + pixels};
}

// Hair lines reach over the pixel that a line across them takes, so that corners are whole.
Span Length(double from, double to, double pixels) {
    if (pixels > 1) {
        return Edges(from, to);
    }
    return {std::round(from - 0.5), std::round(to - 0.5) + 1};
}

// Without a move by whole pixels: a page that is drawn in parts has the same edges in each.
QTransform FromWholePixels(const QTransform& toDevice) {
    const bool isWhole =
        toDevice.dx() == std::round(toDevice.dx()) && toDevice.dy() == std::round(toDevice.dy());
    return isWhole ? toDevice * QTransform::fromTranslate(-toDevice.dx(), -toDevice.dy()) : toDevice;
}

}  // namespace

PixelGrid::PixelGrid(const QPainter& painter)
    : m_toDevice(FromWholePixels(painter.deviceTransform())),
      m_fromDevice(m_toDevice.inverted()),
      m_straight(m_toDevice.type() <= QTransform::TxScale && m_toDevice.m11() > 0 && m_toDevice.m22() > 0) {}

QRectF PixelGrid::Area(const QRectF& area) const {
    const QRectF device = m_toDevice.mapRect(area);
    const Span x = Edges(device.left(), device.right());
    const Span y = Edges(device.top(), device.bottom());
    return m_fromDevice.mapRect(QRectF(x.from, y.from, x.to - x.from, y.to - y.from));
}

QRectF PixelGrid::Stroke(QPointF from, QPointF to, double width) const {
    const QPointF a = m_toDevice.map(from), b = m_toDevice.map(to);
    const bool level = from.y() == to.y();
    const Span across =
        level ? Thickness(a.y(), width * m_toDevice.m22()) : Thickness(a.x(), width * m_toDevice.m11());
    const double pixels = across.to - across.from;
    const Span along = level ? Length(std::min(a.x(), b.x()), std::max(a.x(), b.x()), pixels)
                             : Length(std::min(a.y(), b.y()), std::max(a.y(), b.y()), pixels);
    const QRectF device = level ? QRectF(along.from, across.from, along.to - along.from, pixels)
                                : QRectF(across.from, along.from, pixels, along.to - along.from);
    return m_fromDevice.mapRect(device);
}

double PixelGrid::Scale() const {
    return std::sqrt(std::abs(m_toDevice.determinant()));
}

}  // namespace rdl::screen
