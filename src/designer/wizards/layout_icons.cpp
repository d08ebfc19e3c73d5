// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/wizards/layout_icons.h"

#include <QPainter>

namespace designer {
namespace {

struct Pens {
    QColor line, fill, strong;
};

void Rows(QPainter& painter, const Pens& pens, double left, double top, double right, int count) {
    for (int row = 0; row < count; ++row) {
        painter.fillRect(QRectF(left, top + row * 5, right - left, 2), pens.line);
    }
}

void DrawTable(QPainter& painter, const Pens& pens) {
    painter.fillRect(QRectF(6, 5, 44, 4), pens.strong);
    painter.fillRect(QRectF(6, 11, 44, 4), pens.fill);
    Rows(painter, pens, 10, 17, 50, 2);
    painter.fillRect(QRectF(6, 26, 44, 4), pens.fill);
    Rows(painter, pens, 10, 32, 50, 1);
}

void DrawBlocked(QPainter& painter, const Pens& pens) {
    painter.fillRect(QRectF(6, 5, 44, 4), pens.strong);
    painter.fillRect(QRectF(6, 11, 12, 13), pens.fill);
    painter.fillRect(QRectF(6, 26, 12, 10), pens.fill);
    Rows(painter, pens, 21, 12, 50, 5);
}

void DrawMatrix(QPainter& painter, const Pens& pens) {
    painter.fillRect(QRectF(20, 5, 30, 5), pens.strong);
    painter.fillRect(QRectF(6, 12, 12, 24), pens.fill);
    for (int row = 0; row < 4; ++row) {
        for (int column = 0; column < 3; ++column) {
            painter.fillRect(QRectF(21 + column * 10, 13 + row * 6, 8, 3), pens.line);
        }
    }
}

void DrawLabels(QPainter& painter, const Pens& pens) {
    painter.setPen(pens.line);
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column) {
            painter.drawRoundedRect(QRectF(6.5 + column * 15, 4.5 + row * 11, 13, 9), 2, 2);
            painter.fillRect(QRectF(9 + column * 15, 7 + row * 11, 7, 1.5), pens.strong);
            painter.fillRect(QRectF(9 + column * 15, 10 + row * 11, 5, 1.5), pens.fill);
        }
    }
}

void DrawLetter(QPainter& painter, const Pens& pens) {
    painter.setPen(pens.line);
    painter.drawRect(QRectF(14.5, 2.5, 27, 36));
    painter.fillRect(QRectF(18, 6, 10, 2), pens.strong);
    painter.fillRect(QRectF(18, 9.5, 8, 1.5), pens.fill);
    Rows(painter, pens, 18, 16, 38, 4);
}

}  // namespace

QIcon LayoutIcon(ReportLayout layout, const QPalette& palette) {
    QColor fill = palette.color(QPalette::Highlight), line = palette.color(QPalette::WindowText);
    fill.setAlphaF(0.45F);
    line.setAlphaF(0.55F);
    const Pens pens{line, fill, palette.color(QPalette::Highlight)};
    QIcon icon;
    for (const int scale : {1, 2}) {
        QPixmap picture(LayoutIconWidth * scale, LayoutIconHeight * scale);
        picture.setDevicePixelRatio(scale);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        painter.setRenderHint(QPainter::Antialiasing);
        switch (layout) {
            case ReportLayout::Table:
                DrawTable(painter, pens);
                break;
            case ReportLayout::Blocked:
                DrawBlocked(painter, pens);
                break;
            case ReportLayout::Matrix:
                DrawMatrix(painter, pens);
                break;
            case ReportLayout::Labels:
                DrawLabels(painter, pens);
                break;
            case ReportLayout::Letter:
                DrawLetter(painter, pens);
                break;
        }
        painter.end();
        icon.addPixmap(picture);
    }
    return icon;
}

}  // namespace designer
