// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/viewer/icons.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmap>
#include <array>

namespace viewer {
namespace {

constexpr double Grid = 16;  // every symbol is drawn in a square of this many units

using Points = QList<QPointF>;

void AddLine(QPainterPath& path, const Points& points, bool closed = false) {
    QPolygonF line(points);
    path.addPolygon(line);
    if (closed) {
        path.closeSubpath();
    }
}

// Adds a triangle that points right, or left, with its tip at x.
void AddArrow(QPainterPath& path, double tip, bool right) {
    const double back = right ? tip - 6 : tip + 6;
    AddLine(path, {{back, 3}, {tip, 8}, {back, 13}}, true);
}

void AddGlass(QPainterPath& path) {
    path.addEllipse(QPointF(6.5, 6.5), 4.5, 4.5);
    AddLine(path, {{10, 10}, {14, 14}});
}

void AddSheet(QPainterPath& path) {
    path.addRect(3.5, 1.5, 9, 13);
}

QPainterPath Filled(Symbol symbol) {
    QPainterPath path;
    switch (symbol) {
        case Symbol::First:
            AddArrow(path, 6, false);
            path.addRect(3, 3, 2, 10);
            break;
        case Symbol::Previous:
            AddArrow(path, 5, false);
            break;
        case Symbol::Next:
            AddArrow(path, 11, true);
            break;
        case Symbol::Last:
            AddArrow(path, 10, true);
            path.addRect(11, 3, 2, 10);
            break;
        case Symbol::Print:
            path.addRect(2, 6, 12, 5);
            break;
        case Symbol::Save:
            AddLine(path, {{4, 6}, {12, 6}, {8, 11}}, true);
            path.addRect(7, 1, 2, 5);
            break;
        case Symbol::FitWidth:
            AddLine(path, {{1, 8}, {4, 5}, {4, 11}}, true);
            AddLine(path, {{15, 8}, {12, 5}, {12, 11}}, true);
            break;
        default:
            break;
    }
    return path;
}

QPainterPath Stroked(Symbol symbol) {
    QPainterPath path;
    switch (symbol) {
        case Symbol::ZoomIn:
            AddGlass(path);
            AddLine(path, {{6.5, 4.5}, {6.5, 8.5}});
            AddLine(path, {{4.5, 6.5}, {8.5, 6.5}});
            break;
        case Symbol::ZoomOut:
            AddGlass(path);
            AddLine(path, {{4.5, 6.5}, {8.5, 6.5}});
            break;
        case Symbol::Find:
            AddGlass(path);
            break;
        case Symbol::FitWidth:
            AddLine(path, {{2, 8}, {14, 8}});
            AddLine(path, {{0.5, 2}, {0.5, 14}});
            AddLine(path, {{15.5, 2}, {15.5, 14}});
            break;
        case Symbol::FitPage:
            AddSheet(path);
            AddLine(path, {{6, 6}, {8, 4}, {10, 6}});
            AddLine(path, {{6, 10}, {8, 12}, {10, 10}});
            AddLine(path, {{8, 4}, {8, 12}});
            break;
        case Symbol::Print:
            path.addRect(4.5, 1.5, 7, 4);
            path.addRect(4.5, 9.5, 7, 5);
            break;
        case Symbol::Save:
            AddLine(path, {{2, 11}, {2, 14}, {14, 14}, {14, 11}});
            break;
        case Symbol::Map:
            AddLine(path, {{2, 3}, {14, 3}});
            AddLine(path, {{5, 7}, {14, 7}});
            AddLine(path, {{5, 10}, {14, 10}});
            AddLine(path, {{2, 14}, {14, 14}});
            break;
        case Symbol::Close:
            AddLine(path, {{4, 4}, {12, 12}});
            AddLine(path, {{12, 4}, {4, 12}});
            break;
        default:
            break;
    }
    return path;
}

QPixmap Draw(Symbol symbol, int size, const QColor& color) {
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(size / Grid, size / Grid);
    painter.fillPath(Filled(symbol), color);
    painter.strokePath(Stroked(symbol), QPen(color, 1.4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    return pixmap;
}

}  // namespace

QIcon IconOf(Symbol symbol, const QPalette& palette) {
    QIcon icon;
    for (const int size : {16, 20, 24, 32, 48, 64}) {
        icon.addPixmap(Draw(symbol, size, palette.color(QPalette::Active, QPalette::ButtonText)));
        icon.addPixmap(Draw(symbol, size, palette.color(QPalette::Disabled, QPalette::ButtonText)),
                       QIcon::Disabled);
    }
    return icon;
}

}  // namespace viewer
