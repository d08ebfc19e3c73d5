// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/canvas/ruler.h"

#include <QFontDatabase>
#include <QPainter>
#include <cmath>
#include <utility>

namespace designer {
namespace {

constexpr double LeastStep = 5;  // pixels between two marks

QFont RulerFont() {
    return QFontDatabase::systemFont(QFontDatabase::SmallestReadableFont);
}

bool EndsWith(const std::string& text, const char* end) {
    const std::string tail(end);
    return text.size() >= tail.size() && text.compare(text.size() - tail.size(), tail.size(), tail) == 0;
}

}  // namespace

RulerUnit UnitOf(const std::string& size) {
    if (EndsWith(size, "cm") || EndsWith(size, "mm")) {
        return {72 / 2.54, 4, "cm"};
    }
    return {};
}

Ruler::Ruler(Qt::Orientation orientation, QWidget* parent) : QWidget(parent), m_orientation(orientation) {
    setFont(RulerFont());
}

int Ruler::Thickness(const QWidget&) {
    return QFontMetrics(RulerFont()).height() + 6;
}

void Ruler::Show(std::vector<Stretch> stretches, double scale, const RulerUnit& unit) {
    m_stretches = std::move(stretches);
    m_scale = scale;
    m_unit = unit;
    update();
}

void Ruler::ShowPointer(int at) {
    if (at != m_pointer) {
        m_pointer = at;
        update();
    }
}

void Ruler::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Window));
    for (const Stretch& stretch : m_stretches) {
        PaintStretch(painter, stretch);
    }
    painter.setPen(palette().color(QPalette::Mid));
    const bool lies = m_orientation == Qt::Horizontal;
    painter.drawLine(lies ? rect().bottomLeft() : rect().topRight(), rect().bottomRight());
    if (m_pointer >= 0) {
        painter.setPen(palette().color(QPalette::Highlight));
        painter.drawLine(lies ? QPoint(m_pointer, 0) : QPoint(0, m_pointer),
                         lies ? QPoint(m_pointer, height()) : QPoint(width(), m_pointer));
    }
}

void Ruler::PaintStretch(QPainter& painter, const Stretch& stretch) const {
    const bool lies = m_orientation == Qt::Horizontal;
    const int thick = lies ? height() : width();
    const QRectF area = lies ? QRectF(stretch.begin, 1, stretch.length, thick - 3)
                             : QRectF(1, stretch.begin, thick - 3, stretch.length);
    painter.fillRect(area, palette().color(QPalette::Base));
    painter.setPen(palette().color(QPalette::Text));
    const double unit = m_unit.points * m_scale;
    int parts = m_unit.parts;
    while (parts > 1 && unit / parts < LeastStep) {
        parts /= 2;
    }
    const int labels =
        std::max(1, static_cast<int>(std::ceil(fontMetrics().horizontalAdvance("00") * 1.5 / unit)));
    const int count = static_cast<int>(std::min(stretch.length / unit * parts, 20000.0));
    for (int mark = 0; mark <= count; ++mark) {
        const double at = stretch.begin + mark * unit / parts;
        const bool whole = mark % parts == 0;
        const double length = whole ? 6 : mark * 2 % parts == 0 ? 4 : 2;
        painter.drawLine(lies ? QLineF(at, thick - 2 - length, at, thick - 2)
                              : QLineF(thick - 2 - length, at, thick - 2, at));
        const int number = mark / parts;
        if (!whole || number == 0 || number % labels != 0) {
            continue;
        }
        const QString text = QString::number(number);
        if (lies) {
            painter.drawText(QPointF(at + 2, fontMetrics().ascent() + 1), text);
        } else {
            painter.save();
            painter.translate(fontMetrics().ascent() + 1, at - 2);
            painter.rotate(-90);
            painter.drawText(QPointF(0, 0), text);
            painter.restore();
        }
    }
}

}  // namespace designer
