// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/item_dialogs/style_sample.h"

#include <QPainter>

namespace designer {

StyleSample::StyleSample(QWidget* parent) : QWidget(parent) {
    setObjectName("sample");
    setAccessibleName(tr("Sample"));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void StyleSample::Show(const SampleLook& look) {
    m_look = look;
    setAccessibleDescription(look.text);
    update();
}

QSize StyleSample::sizeHint() const {
    return {fontMetrics().averageCharWidth() * 40, fontMetrics().height() * 4};
}

// On white, as a page is, in every palette.
void StyleSample::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), Qt::white);
    const double scale = logicalDpiX() / 72.0;
    const QRectF box = QRectF(rect()).adjusted(10, 8, -10, -8);
    if (m_look.fill.isValid()) {
        painter.fillRect(box, m_look.fill);
    }
    const QLineF sides[] = {{box.topLeft(), box.bottomLeft()},
                            {box.topRight(), box.bottomRight()},
                            {box.topLeft(), box.topRight()},
                            {box.bottomLeft(), box.bottomRight()}};
    for (std::size_t side = 0; side < m_look.borders.size(); ++side) {
        const SampleBorder& border = m_look.borders[side];
        if (border.style != Qt::NoPen) {
            painter.setPen(QPen(border.colour, border.width * scale, border.style, Qt::FlatCap));
            painter.drawLine(sides[side]);
        }
    }
    painter.setFont(m_look.font);
    painter.setPen(m_look.colour);
    painter.setClipRect(box);
    painter.drawText(box.adjusted(4, 2, -4, -2), static_cast<int>(m_look.alignment), m_look.text);
}

}  // namespace designer
